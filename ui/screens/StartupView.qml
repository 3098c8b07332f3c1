import QtQuick
import Lumvale
import Lumvale.Style

/// The startup screen: lists the items that start at login and lets the user disable them.
TabScreen {
    id: root

    // Owned by the screen; the result of a running search is discarded with both.
    readonly property StartupViewModel model: ScreenModels.startup(root)

    Component.onCompleted: {
        if (!model.hasItems)
            model.load();
    }
    Component.onDestruction: ThumbnailLoader.clear()

    onRefreshRequested: {
        if (!model.isLoading)
            model.load();
    }

    StatusText {
        text: Texts.tr(root.model.isLoading ? "loading_startup" : root.model.hasItems ? "status_finished" : "startup_empty")
    }

    Column {
        id: header
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: Metrics.screenPadding
        spacing: 10

        ScreenHeader {
            width: parent.width
            title: Texts.tr("startup_title")
            subtitle: Texts.tr("startup_subtitle")
        }

        OutcomeLine {
            labelName: "disabledLabel"
            width: parent.width
            text: root.model.hasDisabled ? "✓ « " + root.model.lastDisabledName + " » " + Texts.tr("disabled_confirmation")
                                         : root.model.putBackText
            font: Type.message
            isOffered: root.model.canPutBack
            onRequested: root.model.enableAgain()
        }

        Label {
            objectName: "disableFailedLabel"
            width: parent.width
            visible: text.length > 0
            text: root.model.failedText
            font: Type.message
            color: GCColor.danger
            Accessible.role: Accessible.AlertMessage
        }
    }

    Panel {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: header.bottom
        anchors.bottom: parent.bottom
        anchors.margins: Metrics.screenPadding
        anchors.topMargin: 20

        GlowLoadingIndicator {
            objectName: "loadingIndicator"
            anchors.centerIn: parent
            visible: root.model.isLoading
            label: Texts.tr("loading_startup")
        }

        EmptyPrompt {
            anchors.centerIn: parent
            visible: !root.model.isLoading && !root.model.hasItems
            symbol: "bolt.fill"
            text: Texts.tr("startup_empty")
        }

        StartupList {
            id: list
            anchors.fill: parent
            visible: !root.model.isLoading && root.model.hasItems
            model: root.model.items
            onDisableRequested: row => root.model.requestDisable(row)
        }
    }

    RemovalDialog {
        id: dialog
        objectName: "disableDialog"
        task: root.model.removalTask
        visible: root.model.showDisableConfirm
        title: Texts.tr("btn_disable")
        message: "« " + root.model.itemToDisableName + " »\n" + Texts.tr("alert_confirm_disable_message")
        confirmText: Texts.tr("btn_disable")
        // When the dialog closes, the list gets the focus: the row that had it may have been removed.
        onAboutToShow: {
            returnTo = null;
            returnReason = list.hasVisualFocus ? Qt.TabFocusReason : Qt.MouseFocusReason;
        }
        onConfirmed: root.model.confirmDisable()
        onFocusLost: reason => list.takeFocus(reason)
        onClosed: root.model.showDisableConfirm = false
    }

    PutBackDialog {
        task: root.model.removalTask
        visible: root.model.isPuttingBack
        onFocusLost: reason => list.takeFocus(reason)
    }
}
