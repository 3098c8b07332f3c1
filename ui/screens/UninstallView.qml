import QtQuick
import Lumvale
import Lumvale.Style

/// The installed applications; of the one that is picked, what would go with it.
FocusScope {
    id: root

    // Made with the screen and gone with it: a search that is still under way then has nobody to report to.
    readonly property UninstallViewModel model: ScreenModels.uninstall(root)

    /// How what comes next on the screen is come to, which what comes can't tell by then.
    property int reason: Qt.MouseFocusReason

    /// What is asked before anything is moved; empty without an application.
    readonly property string question: model.hasSelectedApp
                                       ? "« " + model.selectedAppName + " » : " + model.checkedCount + " "
                                         + Texts.tr("selected_count_suffix") + " · " + model.selectedSize + "\n"
                                         + Texts.tr("alert_confirm_delete_message")
                                       : ""

    function open(row: int): void {
        reason = apps.hasVisualFocus ? Qt.TabFocusReason : Qt.MouseFocusReason;
        model.select(row);
        waiting.forceActiveFocus(reason);
    }

    function close(reason: int): void {
        model.clearSelection();
        apps.takeFocus(reason);
    }

    /// Gives the keyboard to what was waited for, unless it went elsewhere meanwhile.
    function handOver(part: var): void {
        if (!waiting.focus)
            return;
        if (activeFocus)
            part.takeFocus(reason);
        else
            part.focus = true;
    }

    onQuestionChanged: {
        // Once answered it stands until the dialog is gone.
        if (question.length > 0)
            dialog.message = question;
    }
    Component.onCompleted: {
        if (!model.hasApps)
            model.loadApps();
    }
    Keys.onEscapePressed: event => {
        event.accepted = model.hasSelectedApp;
        if (model.hasSelectedApp)
            close(Qt.TabFocusReason);
    }

    Column {
        id: header
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: Metrics.screenPadding
        spacing: 14

        QuietButton {
            id: backButton
            objectName: "backButton"
            visible: root.model.hasSelectedApp
            horizontalPadding: 14
            verticalPadding: 8
            symbol: "chevron.left"
            symbolSize: 11
            text: Texts.tr("btn_back_to_list")
            onClicked: root.close(visualFocus ? Qt.TabFocusReason : Qt.MouseFocusReason)
        }

        ScreenHeader {
            width: parent.width
            title: Texts.tr("uninstall_title")
            subtitle: root.model.freeSpaceText
        }
    }

    Item {
        id: body
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: header.bottom
        anchors.bottom: parent.bottom
        anchors.margins: Metrics.screenPadding
        anchors.topMargin: 20

        AppsList {
            id: apps
            anchors.fill: parent
            visible: !root.model.isLoadingApps && !root.model.hasSelectedApp
            model: root.model
            onPicked: row => root.open(row)
            onVisibleChanged: {
                if (visible)
                    root.handOver(apps);
            }
        }

        Loader {
            id: files
            anchors.fill: parent
            active: root.model.hasSelectedApp && !root.model.isSearchingLeftovers
            onLoaded: root.handOver(files)

            function takeFocus(reason: int): void {
                (item as AppFiles).takeFocus(reason);
            }

            // Bound components would let qmllint follow this, but in Qt 6.4 no Loader makes one.
            sourceComponent: AppFiles {
                focus: true
                model: root.model // qmllint disable unqualified
            }
        }

        GlowLoadingIndicator {
            id: waiting
            objectName: "loadingIndicator"
            anchors.centerIn: parent
            focus: true
            visible: root.model.isLoadingApps || root.model.hasSelectedApp && root.model.isSearchingLeftovers
            label: Texts.tr(root.model.hasSelectedApp ? "loading_leftovers" : "loading_apps")
            subtitle: root.model.selectedAppName
        }
    }

    ConfirmDialog {
        id: dialog
        objectName: "uninstallDialog"
        visible: root.model.showDeleteConfirm
        title: Texts.tr("btn_uninstall")
        message: ""
        cancelText: Texts.tr("btn_cancel")
        confirmText: Texts.tr("btn_trash")
        onConfirmed: root.model.confirmUninstall()
        onFocusLost: reason => apps.takeFocus(reason)
        onClosed: root.model.showDeleteConfirm = false
    }
}
