import QtQuick
import Lumvale.Style

/// One installed application: the whole row is the button that shows what belongs to it.
KeyboardRow {
    id: root

    required property string name
    required property string size

    implicitHeight: Math.max(label.height, figure.height) + 2 * 12
    Accessible.name: name + ", " + size

    Label {
        id: label
        anchors.left: parent.left
        anchors.right: figure.left
        anchors.rightMargin: 20
        anchors.verticalCenter: parent.verticalCenter
        text: root.name
        font: Type.row
        Accessible.ignored: true
    }

    TabularText {
        id: figure
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
