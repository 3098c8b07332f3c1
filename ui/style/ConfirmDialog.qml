import QtQuick
import QtQuick.Templates as T
import Lumvale.Style

/// Asks for confirmation of a destructive action and stays open until the action has finished. Escape cancels. The
/// cancel button has the initial focus, so that an accidental Return destroys nothing.
Dialog {
    id: root

    required property string cancelText
    required property string confirmText

    readonly property bool busy: action.running

    /// Emitted when the busy state is on the screen; make the blocking call in its handler.
    signal confirmed

    closePolicy: busy ? T.Popup.NoAutoClose : T.Popup.CloseOnEscape
    // Resets the focus before the enter transition, since keys are handled during it.
    onAboutToShow: cancel.focus = true
    // Shows the focus ring only if the dialog was opened by keyboard.
    onOpened: cancel.focusReason = returnReason

    BlockingAction {
        id: action
        onReady: root.confirmed()
        onFinished: root.close()
    }

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
        onClicked: action.start(confirm)
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
