import QtQuick

/// Heading of a group of rows.
Item {
    id: root

    required property string text

    implicitWidth: bar.width + 9 + label.implicitWidth
    implicitHeight: label.height + 18

    Rectangle {
        id: bar
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
        y: 8
        text: root.text
        font: Type.section
        Accessible.role: Accessible.Heading
    }
}
