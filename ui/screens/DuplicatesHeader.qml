import QtQuick
import Lumvale
import Lumvale.Style

/// Header of the duplicates screen: title, scan button, and the outcome of the last deletion.
Column {
    id: root

    required property DuplicatePhotosViewModel model

    readonly property bool isAllowed: !model.isUndecided && !model.isDenied

    property alias startReason: button.startReason

    /// Makes the scan button the focus item of its focus scope. It gets the active focus as soon as it is enabled and
    /// the scope has the active focus.
    function takeFocus(reason: int): void {
        startReason = reason;
        button.focus = true;
        button.focusReason = reason;
    }

    function scan(): void {
        button.activate();
    }

    spacing: 10

    Item {
        width: parent.width
        height: Math.max(titles.height, button.visible ? button.height : 0)

        ScreenHeader {
            id: titles
            anchors.left: parent.left
            anchors.right: button.visible ? button.left : parent.right
            anchors.rightMargin: button.visible ? 24 : 0
            anchors.verticalCenter: parent.verticalCenter
            title: Texts.tr("duplicates_title")
            subtitle: Texts.tr("duplicates_subtitle")
        }

        ScanButton {
            id: button
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            visible: root.isAllowed
            isScanning: root.model.isLoading
            focus: root.isAllowed
            onClicked: root.model.scan()
        }
    }

    Label {
        objectName: "photosReadOnlyNote"
        width: parent.width
        visible: root.model.isReadOnly && root.model.groupCount > 0 && !root.model.isLoading
        text: Texts.tr("photos_read_only")
        font: Type.message
        color: GCColor.amber
        Accessible.role: Accessible.AlertMessage
    }

    Label {
        objectName: "deletedLabel"
        width: parent.width
        visible: root.model.deletedCount > 0 || root.model.hasDeletionFailed || root.model.wasDeletionStopped
        text: root.model.hasDeletionFailed ? Texts.tr("duplicates_delete_failed")
              : root.model.wasDeletionStopped ? Texts.tr("duplicates_delete_stopped")
              : root.model.deletedCount + " " + Texts.tr("duplicates_deleted_suffix")
        font: Type.message
        color: root.model.hasDeletionFailed ? GCColor.danger
               : root.model.wasDeletionStopped ? GCColor.textSecondary : GCColor.glowTeal
        Accessible.role: Accessible.AlertMessage
    }
}
