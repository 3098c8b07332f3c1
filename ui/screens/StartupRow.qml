import QtQuick
import Lumvale
import Lumvale.Style

/// Row of an item that starts at login, with the button that disables it. The keyboard and screen readers activate the
/// row; pointer events act on the button only.
EntryRow {
    id: root

    required property string name
    required path
    required property string source
    required property string explanation
    required property bool isSystemWide
    required property var bundle

    implicitHeight: Math.max(icon.height, texts.height, button.height) + 2 * 12
    // Excludes the row itself from pointer events.
    containmentMask: QtObject {
        function contains(point: point): bool {
            return false;
        }
    }
    hoverEnabled: false
    Accessible.name: isSystemWide ? name + ", " + badge.text : button.text + ", " + name
    Accessible.description: Texts.tr(explanation) + ", " + source + ", " + pathText

    AppIcon {
        id: icon
        anchors.left: parent.left
        anchors.verticalCenter: parent.verticalCenter
        bundle: root.bundle
        placeholder: "bolt.fill"
    }

    Column {
        id: texts
        anchors.left: icon.right
        anchors.leftMargin: 14
        anchors.right: button.left
        anchors.rightMargin: 24
        anchors.verticalCenter: parent.verticalCenter
        spacing: 5

        Item {
            width: parent.width
            height: label.height

            Label {
                id: label
                width: parent.width - (root.isSystemWide ? badge.width + 10 : 0)
                text: root.name
                font: Type.row
                Accessible.ignored: true
            }

            Badge {
                id: badge
                x: label.contentWidth + 10
                anchors.baseline: label.baseline
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

        // Tells items of the same name apart.
        Label {
            width: parent.width
            text: root.source
            font: Type.fine
            color: GCColor.textSecondary
            opacity: 0.7
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
        enabled: !root.isSystemWide
        Accessible.ignored: true
        onClicked: root.clicked()

        RowPointerHandler {
            list: root.list
        }
    }
}
