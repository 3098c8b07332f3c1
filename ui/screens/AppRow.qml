import QtQuick
import Lumvale.Style

/// Row of an installed application. Clicking it shows the application's files.
EntryRow {
    id: root

    required property string name
    required path
    required property string size

    implicitHeight: Math.max(icon.height, label.height, sizeText.height) + 2 * 8
    Accessible.name: name + ", " + size
    Accessible.description: pathText

    AppIcon {
        id: icon
        anchors.left: parent.left
        anchors.verticalCenter: parent.verticalCenter
        bundle: root.path
    }

    Label {
        id: label
        anchors.left: icon.right
        anchors.leftMargin: 12
        anchors.right: sizeText.left
        anchors.rightMargin: 20
        anchors.verticalCenter: parent.verticalCenter
        text: root.name
        font: Type.row
        Accessible.ignored: true
    }

    TabularText {
        id: sizeText
        anchors.right: chevron.left
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        text: root.size
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
