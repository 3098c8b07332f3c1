import QtQuick

/// Heading of a group of rows.
Item {
    id: root

    required property string text
    /// Space at the left of the bar, and at the right of the text.
    property real indent: 0
    property real trailing: 0
    readonly property real textRight: label.x + Math.min(label.width, label.implicitWidth)

    implicitWidth: indent + bar.width + 9 + label.implicitWidth + trailing
    implicitHeight: label.height + 18
    Accessible.role: Accessible.Heading
    Accessible.name: visible ? text : ""
    Accessible.ignored: !visible

    Rectangle {
        id: bar
        x: root.indent
        anchors.verticalCenter: label.verticalCenter
        width: 3
        height: 12
        radius: 1.5
        gradient: Gradient {
            GradientStop {
                position: 0
                color: GCColor.glowTeal
            }
            GradientStop {
                position: 1
                color: GCColor.glowViolet
            }
        }
    }

    Label {
        id: label
        anchors.left: bar.right
        anchors.leftMargin: 9
        anchors.right: parent.right
        anchors.rightMargin: root.trailing
        y: 8
        text: root.text
        font: Type.section
        Accessible.ignored: true
    }
}
