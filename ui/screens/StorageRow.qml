import QtQuick
import Lumvale.Style

/// Row of a storage entry: name, size, and a bar with its size relative to the largest entry.
KeyboardRow {
    id: root

    required property string name
    required property string size
    required property real share

    property color color

    implicitHeight: bar.y + bar.height + 9
    Accessible.role: Accessible.Button
    Accessible.name: name + ", " + size
    Accessible.selectable: true
    Accessible.selected: isSelected

    Rectangle {
        id: swatch
        objectName: "swatch"
        y: nameLabel.y + Math.round((metrics.height - height) / 2)
        width: 12
        height: 12
        radius: 4
        color: root.color
    }

    // Aligns swatch and size with the first line of a wrapped name.
    FontMetrics {
        id: metrics
        font: nameLabel.font
    }

    Label {
        id: nameLabel
        anchors.left: swatch.right
        anchors.leftMargin: 10
        anchors.right: sizeText.left
        anchors.rightMargin: 16
        y: 9
        text: root.name
        font: Type.rowName
        Accessible.ignored: true
    }

    TabularText {
        id: sizeText
        anchors.right: parent.right
        y: nameLabel.y + Math.round((metrics.height - height) / 2)
        text: root.size
    }

    Rectangle {
        id: bar
        anchors.left: nameLabel.left
        anchors.right: sizeText.right
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
