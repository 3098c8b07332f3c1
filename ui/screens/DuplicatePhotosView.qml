import QtQuick
import Lumvale
import Lumvale.Style

/// The duplicates screen: lists photos and videos that are more than once in the library. The oldest of each group is
/// kept; of the others the selected ones are deleted.
TabScreen {
    id: root

    // Owned by the screen; the result of a running search is discarded with both.
    readonly property DuplicatePhotosViewModel model: ScreenModels.duplicates(root)

    // Each search and leaving the screen clear the thumbnail cache: its pictures are outdated or no longer needed.
    readonly property bool isLoading: model.isLoading
    onIsLoadingChanged: {
        if (isLoading)
            ThumbnailLoader.clear();
        else if (model.groupCount === 0 && list.focus)
            header.takeFocus(list.hasVisualFocus ? Qt.TabFocusReason : Qt.MouseFocusReason);
    }
    Component.onDestruction: ThumbnailLoader.clear()
    onRefreshRequested: header.scan()
    onDeletionRequested: footer.request()

    readonly property bool hasGroups: !model.isLoading && model.groupCount > 0

    StatusText {
        text: root.model.isLoading ? Texts.tr("loading_duplicates")
              : !root.model.hasScanned && !root.model.wasScanStopped ? ""
              : root.hasGroups ? Texts.tr("status_finished") + " " + summary.text : prompt.text
    }

    DuplicatesHeader {
        id: header
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: Metrics.screenPadding
        model: root.model
    }

    Panel {
        id: panel
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: header.bottom
        anchors.bottom: root.hasGroups ? footer.top : parent.bottom
        anchors.margins: Metrics.screenPadding
        anchors.topMargin: 20
        anchors.bottomMargin: root.hasGroups ? 0 : Metrics.screenPadding

        EmptyPrompt {
            id: prompt
            anchors.centerIn: parent
            visible: !root.model.isLoading && !root.hasGroups
            symbol: header.isAllowed && root.model.hasScanned && !root.model.hasScanFailed && !root.model.wasScanStopped
                    ? "checkmark.seal.fill" : "photo.on.rectangle.angled"
            text: Texts.tr(root.model.isUndecided ? "duplicates_permission_text"
                           : root.model.isDenied ? "duplicates_denied_text"
                           : root.model.wasScanStopped ? "duplicates_stopped"
                           : root.model.hasScanFailed ? "photos_unreadable"
                           : root.model.hasScanned ? "duplicates_none_found" : "duplicates_empty_prompt")

            GradientButton {
                objectName: "allowButton"
                anchors.horizontalCenter: parent.horizontalCenter
                visible: root.model.isUndecided
                text: Texts.tr("btn_allow_photos")
                glow: GCColor.alpha(GCColor.glowTeal, 0.35)
                focus: root.model.isUndecided
                onClicked: {
                    header.startReason = focusReason;
                    root.model.requestAccess();
                }
            }
        }

        GlowLoadingIndicator {
            objectName: "loadingIndicator"
            anchors.centerIn: parent
            visible: root.model.isLoading
            label: Texts.tr("loading_duplicates")
            progressText: root.model.searchTask.text

            QuietButton {
                objectName: "stopButton"
                anchors.horizontalCenter: parent.horizontalCenter
                text: Texts.tr("btn_stop")
                onClicked: {
                    header.takeFocus(focusReason);
                    root.model.stopScan();
                }
            }
        }

        SectionLabel {
            id: summary
            objectName: "summary"
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: parent.top
            anchors.leftMargin: Metrics.listPadding
            anchors.rightMargin: Metrics.listPadding
            anchors.topMargin: 8
            visible: root.hasGroups
            text: root.model.groupCount + " " + Texts.tr("duplicates_groups_suffix") + " · "
                  + root.model.totalWasted + " " + Texts.tr("duplicates_wasted_suffix")
        }

        // Separator while the list is scrolled.
        Rectangle {
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: list.top
            anchors.margins: 1
            height: 1
            visible: list.visible && !list.atYBeginning
            color: GCColor.divider
        }

        DuplicateGroupsList {
            id: list
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: summary.bottom
            anchors.bottom: parent.bottom
            visible: root.hasGroups
            groups: root.model.groups
            onPreviewRequested: (group, item, reason) => preview.show(group, item, reason)
        }
    }

    SelectionFooter {
        id: footer
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.margins: Metrics.screenPadding
        anchors.topMargin: 0
        visible: root.hasGroups
        isBusy: root.model.isReadOnly
        count: root.model.checkedCount
        size: root.model.selectedSize
        action: Texts.tr("btn_trash_selection")
        onRequested: root.model.requestDelete()
    }

    PhotoPreviewView {
        id: preview
        groups: root.model.groups
        onStepped: item => list.column = item
        onFocusLost: reason => list.takeFocus(reason)
    }

    RemovalDialog {
        objectName: "deleteDialog"
        task: root.model.removalTask
        canStop: root.model.canStopDeletion
        visible: root.model.showDeleteConfirm
        title: Texts.tr("alert_confirm_delete_title")
        message: Texts.tr("alert_confirm_delete_photo_message")
        confirmText: Texts.tr("btn_trash")
        onConfirmed: root.model.confirmDelete()
        onFocusLost: reason => list.takeFocus(reason)
        onClosed: root.model.showDeleteConfirm = false
    }
}
