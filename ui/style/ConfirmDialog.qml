import QtQuick
import QtQuick.Templates as T
import Lumvale.Style

/// Asks before something is destroyed, then stays in front until it is done. Escape cancels; the keyboard starts
/// on the harmless button, so that a hasty Return destroys nothing.
T.Popup {
    id: root

    required property string title
    required property string message
    required property string cancelText
    required property string confirmText

    readonly property bool busy: action.running

    /// Where the keyboard was before.
    property Item returnTo
    /// And how it had come there, which the item itself may be gone to tell.
    property int returnReason: Qt.PopupFocusReason

    /// The blocking call belongs in its handler: by then the dialog is seen to be busy.
    signal confirmed

    /// The dialog has closed and what had the keyboard before can't take it back: it is for the screen to say
    /// where it goes.
    signal focusLost(reason: int)

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    modal: true
    focus: true
    closePolicy: busy ? T.Popup.NoAutoClose : T.Popup.CloseOnEscape
    padding: Metrics.screenPadding
    implicitWidth: Metrics.dialogWidth
    implicitHeight: content.implicitHeight + 2 * padding
    onAboutToShow: {
        returnTo = parent.Window.activeFocusItem;
        const control = returnTo as T.Control;
        returnReason = control ? control.focusReason : Qt.PopupFocusReason;
    }
    onClosed: {
        if (returnTo && returnTo.enabled)
            returnTo.forceActiveFocus(returnReason);
        else
            focusLost(returnReason);
    }
    onOpened: cancel.forceActiveFocus(Qt.TabFocusReason)

    BlockingAction {
        id: action
        onReady: root.confirmed()
        onFinished: root.close()
    }

    T.Overlay.modal: Rectangle {
        color: GCColor.shade
    }

    enter: Transition {
        NumberAnimation {
            property: "opacity"
            from: 0
            to: 1
            duration: Motion.quick
        }
    }

    background: Rectangle {
        radius: Metrics.dialogRadius
        color: GCColor.dialog
        border.color: GCColor.panelStroke
    }

    Column {
        id: content
        width: parent.width
        spacing: 10
        Accessible.role: Accessible.AlertMessage
        Accessible.name: root.title
        Accessible.description: root.message

        Label {
            width: parent.width
            text: root.title
            font: Type.heading
        }

        Label {
            width: parent.width
            text: root.message
            color: GCColor.textSecondary
            lineHeight: 1.25
        }

        // Right-aligned, and one above the other where a language needs more room than there is.
        Flow {
            width: parent.width
            topPadding: 12
            spacing: 10
            layoutDirection: Qt.RightToLeft

            GradientButton {
                id: confirm
                objectName: "confirm"
                from: GCColor.dangerLight
                to: GCColor.danger
                radius: Metrics.smallButtonRadius
                horizontalPadding: 16
                verticalPadding: 10
                font: Type.smallButton
                text: root.confirmText
                busy: root.busy
                enabled: !root.busy
                KeyNavigation.left: cancel
                onClicked: action.start(content)
            }

            QuietButton {
                id: cancel
                objectName: "cancel"
                text: root.cancelText
                enabled: !root.busy
                KeyNavigation.right: confirm
                onClicked: root.close()
            }
        }
    }
}
