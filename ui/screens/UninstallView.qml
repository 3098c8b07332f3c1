import QtQuick
import Lumvale
import Lumvale.Style

/// The uninstall screen: lists the installed applications, or the files of the selected one.
TabScreen {
    id: root

    // Owned by the screen; the result of a running search is discarded with both.
    readonly property UninstallViewModel model: ScreenModels.uninstall(root)

    /// Focus reason for the next view, which cannot determine it itself.
    property int reason: Qt.MouseFocusReason

    /// Message of the confirmation dialog; empty if no application is selected.
    readonly property string question: model.hasSelectedApp
                                       ? "« " + model.selectedAppName + " » : " + model.checkedCount + " "
                                         + Texts.tr("selected_count_suffix") + " · " + model.selectedSize + "\n"
                                         + Texts.tr("alert_confirm_delete_message")
                                         + (model.isSelectedAppRunning
                                            ? "\n" + Texts.tr("app_running").arg(model.selectedAppName) : "")
                                       : ""

    function open(row: int): void {
        reason = apps.hasVisualFocus ? Qt.TabFocusReason : Qt.MouseFocusReason;
        model.select(row);
        waiting.forceActiveFocus(reason);
    }

    function refresh(): void {
        if (waiting.visible)
            return;
        reason = Qt.ShortcutFocusReason;
        if (model.hasSelectedApp)
            model.searchAgain();
        else
            model.loadApps();
        if (activeFocus)
            waiting.forceActiveFocus(reason);
        else
            waiting.focus = true;
    }

    function close(reason: int): void {
        model.clearSelection();
        apps.takeFocus(reason);
    }

    /// Moves the focus from the loading indicator to `view`, unless the user has moved it elsewhere.
    function moveFocusTo(view: var): void {
        if (!waiting.focus)
            return;
        if (activeFocus)
            view.takeFocus(reason);
        else
            view.focus = true;
    }

    onQuestionChanged: {
        // Keeps the message while the dialog is closing.
        if (question.length > 0)
            dialog.message = question;
    }
    Window.onActiveChanged: {
        // The user may have quit the application in between.
        if (Window.active && model.showDeleteConfirm)
            model.requestUninstall();
    }
    Component.onCompleted: {
        if (!model.hasApps)
            model.loadApps();
    }
    Component.onDestruction: ThumbnailLoader.clear()
    onRefreshRequested: refresh()
    onDeletionRequested: {
        if (files.status === Loader.Ready)
            (files.item as AppFiles).requestDeletion();
    }
    Keys.onEscapePressed: event => {
        event.accepted = model.hasSelectedApp;
        if (model.hasSelectedApp)
            close(Qt.TabFocusReason);
    }

    StatusText {
        text: waiting.visible ? waiting.label : Texts.tr("status_finished")
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

        Item {
            width: parent.width
            height: Math.max(appIcon.height, appTitle.height)
            visible: root.model.hasSelectedApp

            AppIcon {
                id: appIcon
                x: -3 // the margin around the shape in most icons
                anchors.verticalCenter: parent.verticalCenter
                bundle: root.model.selectedBundle
            }

            Label {
                id: appTitle
                objectName: "appTitle"
                anchors.left: appIcon.right
                anchors.leftMargin: 12
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                text: root.model.selectedAppName
                font: Type.heading
                Accessible.role: Accessible.Heading
            }
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
                    root.moveFocusTo(apps);
            }
        }

        Loader {
            id: files
            anchors.fill: parent
            active: root.model.hasSelectedApp && !root.model.isSearchingLeftovers
            onLoaded: root.moveFocusTo(files)

            function takeFocus(reason: int): void {
                (item as AppFiles).takeFocus(reason);
            }

            // Loader cannot use a bound component in Qt 6.4, so qmllint cannot resolve this id.
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
            progressText: (root.model.hasSelectedApp ? root.model.leftoversTask : root.model.appsTask).text
        }
    }

    RemovalDialog {
        id: dialog
        objectName: "uninstallDialog"
        task: root.model.removalTask
        visible: root.model.showDeleteConfirm
        title: Texts.tr("btn_uninstall")
        message: ""
        confirmText: Texts.tr("btn_trash")
        onConfirmed: root.model.confirmUninstall()
        onFocusLost: reason => apps.takeFocus(reason)
        onClosed: root.model.showDeleteConfirm = false
    }

    PutBackDialog {
        task: root.model.removalTask
        visible: root.model.putBack.isRunning
        onFocusLost: reason => apps.takeFocus(reason)
    }
}
