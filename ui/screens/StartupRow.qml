import QtQuick
import Lumvale
import Lumvale.Style

/// One thing that starts with the session, and its button. The list speaks to the keyboard for it.
Item {
    id: root

    required property string displayName
    required property string explanation
    required property bool isSystemWide

    property bool isCurrent: false

    /// The pointer was pressed on the button; a click may also come from a screen reader.
    signal touched
    signal disableRequested

    objectName: "row"
    implicitHeight: Math.max(texts.height, button.height) + 2 * 12
    Accessible.role: Accessible.ListItem
    Accessible.name: displayName + (isSystemWide ? ", " + badge.text : "")
    Accessible.description: Texts.tr(explanation)
    Accessible.onPressAction: disableRequested()

    Rectangle {
        anchors.fill: parent
        anchors.leftMargin: -10
        anchors.rightMargin: -10
        radius: 9
        color: "transparent"
        border.color: GCColor.focus
        border.width: root.isCurrent ? 2 : 0
    }

    Column {
        id: texts
        anchors.left: parent.left
        anchors.right: button.left
        anchors.rightMargin: 24
        anchors.verticalCenter: parent.verticalCenter
        spacing: 5

        Item {
            width: parent.width
            height: name.height

            Label {
                id: name
                width: parent.width - (root.isSystemWide ? badge.width + 10 : 0)
                text: root.displayName
                font: Type.row
                Accessible.ignored: true
            }

            Badge {
                id: badge
                x: name.contentWidth + 10
                anchors.baseline: name.baseline
                visible: root.isSystemWide
                text: Texts.tr("startup_system_badge")
            }
        }

        Label {
            width: parent.width
            text: Texts.tr(root.explanation)
            font: Type.caption
            color: GCColor.textSecondary
            opacity: 0.9
            lineHeight: 1.2
            Accessible.ignored: true
        }
    }

    QuietButton {
        id: button
        objectName: "disableButton"
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        focusPolicy: Qt.NoFocus
        text: Texts.tr("btn_disable")
        Accessible.name: text + ", " + root.displayName
        onClicked: root.disableRequested()

        PointHandler {
            onActiveChanged: if (active)
                root.touched()
        }
    }
}
