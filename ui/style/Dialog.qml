import QtQuick

/// Says something in the middle of the window and waits for one of its buttons, which are given from the right.
Sheet {
    id: root

    required property string title
    required property string message

    default property alias buttons: row.data

    implicitWidth: Metrics.dialogWidth
    implicitHeight: content.implicitHeight + 2 * padding

    Column {
        id: content
        objectName: "dialogContent"
        width: parent.width
        spacing: 10
        Accessible.role: Accessible.AlertMessage
        Accessible.name: root.title
        Accessible.description: root.message

        Label {
            objectName: "dialogTitle"
            width: parent.width
            text: root.title
            font: Type.heading
        }

        Label {
            objectName: "dialogMessage"
            width: parent.width
            text: root.message
            color: GCColor.textSecondary
            lineHeight: 1.25
        }

        // One above the other where a language needs more room than there is.
        Flow {
            id: row
            width: parent.width
            topPadding: 12
            spacing: 10
            layoutDirection: Qt.RightToLeft
        }
    }
}
