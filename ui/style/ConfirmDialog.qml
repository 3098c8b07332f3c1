import QtQuick
import QtQuick.Templates as T
import Lumvale.Style

/// Asks before something is destroyed, then stays in front until it is done. Escape cancels; the keyboard starts
/// on the harmless button, so that a hasty Return destroys nothing.
Dialog {
    id: root

    required property string cancelText
    required property string confirmText

    readonly property bool busy: action.running

    /// The blocking call belongs in its handler: by then the dialog is seen to be busy.
    signal confirmed

    closePolicy: busy ? T.Popup.NoAutoClose : T.Popup.CloseOnEscape
    // Also where it was left on the other button: keys may come before it has faded in. A ring is for those who came
    // by keys.
    onAboutToShow: cancel.focus = true
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
