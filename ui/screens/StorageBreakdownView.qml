import QtQuick
import Lumvale
import Lumvale.Style

/// Sheet with the storage breakdown, read-only.
Sheet {
    id: root

    required property StorageEntriesModel entries
    required property bool isLoading
    required property string progressText

    accessibleName: Texts.tr("storage_breakdown_title")
    implicitWidth: Metrics.breakdownWidth
    implicitHeight: Metrics.breakdownHeight
    // Keeps a focus that the user has set during the transition; otherwise shows the focus ring only if the sheet was
    // opened by keyboard.
    onOpened: if (!content.activeFocus)
        closeButton.forceActiveFocus(returnReason)
    onClosed: content.focus = false

    FocusScope {
        id: content
        anchors.fill: parent

        Column {
            id: header
            anchors.left: parent.left
            anchors.right: closeButton.left
            anchors.rightMargin: 20
            spacing: 5

            Label {
                objectName: "storageTitle"
                width: parent.width
                text: Texts.tr("storage_breakdown_title")
                font: Type.sheetTitle
                Accessible.role: Accessible.Heading
            }

            Label {
                objectName: "storageSubtitle"
                width: parent.width
                text: Texts.tr("storage_breakdown_subtitle")
                font: Type.note
                color: GCColor.textSecondary
                lineHeight: 1.2
            }
        }

        QuietButton {
            id: closeButton
            objectName: "closeButton"
            anchors.right: parent.right
            horizontalPadding: 8
            verticalPadding: 8
            symbol: "xmark"
            symbolSize: 11
            Accessible.name: Texts.tr("menu_close")
            onClicked: root.close()
        }

        StatusText {
            text: root.isLoading ? Texts.tr("storage_breakdown_loading") : root.opened ? Texts.tr("status_finished") : ""
        }

        Item {
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: header.bottom
            anchors.topMargin: 18
            anchors.bottom: parent.bottom

            GlowLoadingIndicator {
                objectName: "storageLoading"
                anchors.centerIn: parent
                visible: root.isLoading
                label: Texts.tr("storage_breakdown_loading")
                progressText: root.progressText
            }

            EmptyPrompt {
                objectName: "storageEmpty"
                anchors.centerIn: parent
                visible: !root.isLoading && root.entries.count === 0
                text: Texts.tr("storage_breakdown_empty")
            }

            StorageBreakdown {
                anchors.fill: parent
                visible: !root.isLoading && root.entries.count > 0
                entries: root.entries
            }
        }
    }
}
