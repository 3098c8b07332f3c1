import QtQuick
import QtQuick.Templates as T
import Lumvale.Style

/// One entry with its size, and how much that is beside the largest: the whole row is the button that selects it.
T.AbstractButton {
    id: root

    required property string name
    required property string size
    required property real share

    property color color
    property bool isSelected: false
    property bool isCurrent: false

    /// The pointer was pressed on it; a click may also come from a key or a screen reader.
    signal touched

    objectName: "row"
    implicitHeight: bar.y + bar.height + 9
    hoverEnabled: true
    focusPolicy: Qt.NoFocus

    Accessible.role: Accessible.Button
    Accessible.name: name + ", " + size
    Accessible.selectable: true
    Accessible.selected: isSelected
    Accessible.onPressAction: clicked()

    PointHandler {
        onActiveChanged: if (active)
            root.touched()
    }

    background: Rectangle {
        radius: Metrics.rowRadius
        color: root.isSelected ? GCColor.selection : root.hovered ? GCColor.hover : "transparent"
        border.color: root.isCurrent ? GCColor.focus : GCColor.panelStroke
        border.width: root.isCurrent ? 2 : root.hovered ? 1 : 0
    }

    Rectangle {
        id: swatch
        objectName: "swatch"
        x: Metrics.rowPadding
        y: nameLabel.y + Math.round((metrics.height - height) / 2)
        width: 12
        height: 12
        radius: 4
        color: root.color
    }

    // What stands beside a name that has more lines stands beside the first.
    FontMetrics {
        id: metrics
        font: nameLabel.font
    }

    Label {
        id: nameLabel
        anchors.left: swatch.right
        anchors.leftMargin: 10
        anchors.right: figure.left
        anchors.rightMargin: 16
        y: 9
        text: root.name
        font: Type.rowName
        Accessible.ignored: true
    }

    Figure {
        id: figure
        anchors.right: parent.right
        anchors.rightMargin: Metrics.rowPadding
        y: nameLabel.y + Math.round((metrics.height - height) / 2)
        text: root.size
    }

    Rectangle {
        id: bar
        anchors.left: nameLabel.left
        anchors.right: figure.right
        y: nameLabel.y + nameLabel.height + 7
        height: 5
        radius: 2.5
        color: GCColor.barTrack

        Rectangle {
            objectName: "bar"
            width: parent.width * root.share
            height: parent.height
            radius: parent.radius
            color: root.color
        }
    }
}
