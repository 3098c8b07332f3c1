import QtQuick
import Lumvale.Style

/// Row of a home on a disk. Clicking it opens the disk.
KeyboardRow {
    id: root

    required property string name
    required property string place

    implicitHeight: texts.height + 2 * 10
    Accessible.name: name + ", " + place

    Column {
        id: texts
        anchors.left: parent.left
        anchors.right: chevron.left
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2

        Label {
            width: parent.width
            text: root.name
            font: Type.rowName
            Accessible.ignored: true
        }

        Label {
            width: parent.width
            text: root.place
            font: Type.caption
            color: GCColor.textSecondary
            Accessible.ignored: true
        }
    }

    Symbol {
        id: chevron
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        width: 11
        height: 11
        name: "chevron.right"
        color: GCColor.textSecondary
    }
}
