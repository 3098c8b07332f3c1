import QtQuick
import Lumvale
import Lumvale.Style

/// The cleanup screen: scans the disk, lists the entries that can be deleted with the reason, and moves the selected
/// ones to the Trash.
TabScreen {
    id: root

    // Owned by the screen; the result of a running scan is discarded with both.
    readonly property ScanViewModel model: ScreenModels.cleanup(root)

    /// Space is short: everything above the list takes less of it, so that the list keeps some rows.
    readonly property bool isShort: height < Metrics.shortScreen
    readonly property int padding: isShort ? 14 : Metrics.screenPadding

    onRefreshRequested: header.scan()
    onDeletionRequested: footer.request()

    StatusText {
        objectName: "scanStatus"
        text: root.model.isScanning ? Texts.tr("scanning_progress")
              : root.model.wasScanStopped ? Texts.tr("scan_stopped")
              : root.model.hasResult ? Texts.tr("status_finished") : ""
    }

    CleanupHeader {
        id: header
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.topMargin: root.padding
        anchors.leftMargin: Metrics.screenPadding
        anchors.rightMargin: Metrics.screenPadding
        isScanning: root.model.isScanning
        onScanRequested: root.model.runScan()
    }

    Column {
        id: status
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: header.bottom
        anchors.topMargin: root.isShort ? 12 : 20
        anchors.leftMargin: Metrics.screenPadding
        anchors.rightMargin: Metrics.screenPadding
        spacing: root.isShort ? 10 : 16

        Item {
            id: overview
            width: parent.width
            height: root.model.hasHealth ? card.height : trash.button.height
            visible: root.model.hasHealth || root.isShort

            HealthCard {
                id: card
                anchors.left: parent.left
                anchors.right: storageButton.left
                anchors.rightMargin: 16
                visible: root.model.hasHealth
                isCompact: root.isShort
                score: root.model.healthScore
                labelKey: root.model.healthKey
                freeSpaceText: root.model.freeSpaceText
            }

            QuietButton {
                id: storageButton
                objectName: "storageButton"
                anchors.right: parent.right
                anchors.rightMargin: root.isShort ? trash.button.width + 16 : 0
                anchors.verticalCenter: parent.verticalCenter
                visible: root.model.hasHealth
                horizontalPadding: 14
                verticalPadding: 9
                symbol: "chart.pie.fill"
                symbolSize: 11
                text: Texts.tr("btn_storage_breakdown")
                onClicked: root.model.loadStorageBreakdown()
            }
        }

        TrashRow {
            id: trash
            width: parent.width
            model: root.model
            buttonPlace: root.isShort ? overview : null
        }
    }

    Item {
        id: body
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: status.bottom
        anchors.bottom: parent.bottom
        anchors.topMargin: 10
        anchors.leftMargin: Metrics.screenPadding
        anchors.rightMargin: Metrics.screenPadding
        anchors.bottomMargin: root.padding

        GlowLoadingIndicator {
            objectName: "loadingIndicator"
            anchors.centerIn: parent
            visible: root.model.isScanning
            label: Texts.tr("scanning_progress")
            subtitle: Texts.tr("scanning_reassurance")
            progressText: root.model.scanTask.text

            QuietButton {
                objectName: "stopButton"
                anchors.horizontalCenter: parent.horizontalCenter
                text: Texts.tr("btn_stop")
                onClicked: root.model.stopScan()
            }
        }

        EmptyPrompt {
            anchors.centerIn: parent
            visible: !root.model.isScanning && !root.model.hasResult
            text: Texts.tr(root.model.wasScanStopped ? "scan_stopped" : "cleanup_empty")
        }

        ResultsList {
            id: results
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: parent.top
            anchors.bottom: footer.top
            visible: footer.visible
            items: root.model.items
            padding: root.isShort ? 8 : Metrics.listPadding
        }

        SelectionFooter {
            id: footer
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.bottom: parent.bottom
            visible: !root.model.isScanning && root.model.hasResult
            count: root.model.checkedCount
            size: root.model.selectedSize
            action: Texts.tr("btn_trash_selection")
            outcome: root.model.putBack.doneText || root.model.deletedText
            canPutBack: root.model.putBack.isOffered
            failure: (root.model.unreadText + "\n" + root.model.stayedText + "\n" + root.model.putBack.failedText).trim().replace(/\n+/g, "\n")
            onRequested: root.model.requestDelete()
            onPutBackRequested: root.model.putBack.start()
        }
    }

    RemovalDialog {
        objectName: "deleteDialog"
        task: root.model.removalTask
        visible: root.model.showDeleteConfirm
        title: Texts.tr("alert_confirm_delete_title")
        message: root.model.deleteMessage || Texts.tr("alert_confirm_delete_message")
        confirmText: Texts.tr(root.model.deletesOnlyForGood ? "btn_delete_for_good" : "btn_trash")
        onConfirmed: root.model.confirmDelete()
        onFocusLost: reason => results.takeFocus(reason)
        onClosed: root.model.showDeleteConfirm = false
    }

    PutBackDialog {
        task: root.model.removalTask
        visible: root.model.putBack.isRunning
        onFocusLost: reason => results.takeFocus(reason)
    }

    RemovalDialog {
        objectName: "emptyTrashDialog"
        task: root.model.removalTask
        visible: root.model.showEmptyTrashConfirm
        title: Texts.tr("alert_empty_trash_title")
        message: Texts.tr("alert_empty_trash_message")
        confirmText: Texts.tr("btn_empty_trash")
        onConfirmed: root.model.confirmEmptyTrash()
        onClosed: root.model.showEmptyTrashConfirm = false
    }

    StorageBreakdownView {
        visible: root.model.showStorageBreakdown
        entries: root.model.storageEntries
        isLoading: root.model.isLoadingStorageBreakdown
        progressText: root.model.storageTask.text
        onClosed: root.model.showStorageBreakdown = false
    }
}
