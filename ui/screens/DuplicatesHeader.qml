import QtQuick
import Lumvale
import Lumvale.Style

/// What the screen is for, the button that searches, and what the last deletion came to.
Column {
    id: root

    required property DuplicatePhotosViewModel model

    readonly property bool isAllowed: !model.isUndecided && !model.isDenied

    /// How the keyboard had come to what started the search, which is lost while the button is disabled.
    property int startedBy: Qt.OtherFocusReason

    /// The button has the keyboard, once that is in the screen and the button enabled.
    function takeFocus(reason: int): void {
        startedBy = reason;
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

        GradientButton {
            id: button
            objectName: "scanButton"
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            visible: root.isAllowed
            text: Texts.tr(root.model.isLoading ? "btn_scanning" : "btn_scan")
            glow: GCColor.alpha(GCColor.glowTeal, 0.35)
            enabled: !root.model.isLoading && !root.model.isDeleting
            focus: root.isAllowed
            onClicked: {
                root.startedBy = focusReason;
                root.model.scan();
            }
            onEnabledChanged: {
                if (enabled && focus)
                    focusReason = root.startedBy;
            }
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
