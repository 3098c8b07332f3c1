import QtQuick
import Lumvale
import Lumvale.Style

/// What the screen is for, the button that searches, and what the last deletion came to.
Column {
    id: root

    required property DuplicatePhotosViewModel model

    readonly property bool isAllowed: !model.isUndecided && !model.isDenied

    property alias startReason: button.startReason

    /// The button has the keyboard, once that is in the screen and the button enabled.
    function takeFocus(reason: int): void {
        startReason = reason;
        button.focus = true;
        button.focusReason = reason;
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
            enabled: !isScanning && !root.model.isDeleting // another search follows a deletion by itself
            focus: root.isAllowed
            onClicked: root.model.scan()
        }
    }

    Label {
        objectName: "deletedLabel"
        width: parent.width
        visible: root.model.deletedCount > 0
        text: root.model.deletedCount + " " + Texts.tr("duplicates_deleted_suffix")
        font: Type.message
        color: GCColor.glowTeal
        Accessible.role: Accessible.AlertMessage
    }
}
