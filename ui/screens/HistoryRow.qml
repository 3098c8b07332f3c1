import QtQuick
import Lumvale.Style

/// Row of one deletion.
Item {
    id: root

    required property string name
    required property string size
    required property string date

    property bool isCurrent: false

    objectName: "row"
    implicitHeight: Math.max(label.height, details.height) + 2 * 10
    Accessible.role: Accessible.ListItem
    Accessible.name: name + ", " + size
    Accessible.description: date

    Rectangle {
        anchors.fill: parent
        anchors.leftMargin: -Metrics.rowPadding
        anchors.rightMargin: -Metrics.rowPadding
        radius: Metrics.rowRadius
        color: "transparent"
        border.color: GCColor.focus
        border.width: root.isCurrent ? 2 : 0
    }

    Label {
        id: label
        anchors.left: parent.left
        anchors.right: details.left
        anchors.rightMargin: 20
        anchors.verticalCenter: parent.verticalCenter
        text: root.name
        font: Type.row
        Accessible.ignored: true
    }

    Column {
        id: details
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: 3

        TabularText {
            anchors.right: parent.right
            text: root.size
        }

        Label {
            anchors.right: parent.right
            text: root.date
            font: Type.fine
            color: GCColor.textSecondary
            wrapMode: Text.NoWrap
            Accessible.ignored: true
        }
    }
}
