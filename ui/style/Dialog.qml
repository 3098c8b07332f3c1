import QtQuick

/// A modal dialog with a title, a message and buttons. The first button declared is the rightmost.
Sheet {
    id: root

    required property string title
    required property string message

    property string heading: title // the title that is shown
    property bool hidesMessage: false
    property alias body: body.data // shown in place of the message
    property real bodyHeight: 0

    default property alias buttons: row.data

    readonly property string accessibleDescription: hidesMessage ? "" : root.message

    accessibleName: heading
    implicitWidth: Metrics.dialogWidth
    implicitHeight: content.implicitHeight + 2 * padding

    Column {
        id: content
        objectName: "dialogContent"
        width: parent.width
        spacing: 10

        Label {
            objectName: "dialogTitle"
            width: parent.width
            text: root.heading
            font: Type.heading
        }

        Item {
            id: body
            width: parent.width
            height: root.hidesMessage ? Math.max(message.height, root.bodyHeight) : message.height

            Label {
                id: message
                objectName: "dialogMessage"
                width: parent.width
                visible: !root.hidesMessage
                text: root.message
                color: GCColor.textSecondary
                lineHeight: 1.25
            }
        }

        // Wraps the buttons where a translation is too long for one line.
        Flow {
            id: row
            width: parent.width
            topPadding: 12
            spacing: 10
            layoutDirection: Qt.RightToLeft
        }
    }
}
