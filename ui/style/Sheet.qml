import QtQuick
import QtQuick.Templates as T
import Lumvale.Style

/// Base of modal popups, centered over a scrim. Escape closes it; the focus then returns to the previous item.
T.Popup {
    id: root

    /// Name for screen readers.
    required property string accessibleName

    /// The item that had the focus before the popup opened; null if it was destroyed since.
    property Item returnTo
    /// Focus reason to restore together with `returnTo`, which may have been destroyed.
    property int returnReason: Qt.PopupFocusReason

    /// Emitted on closing if `returnTo` can't take the focus; the screen has to choose another item.
    signal focusLost(reason: int)

    parent: T.Overlay.overlay
    // Rounded to whole pixels, so that the content isn't blurred.
    x: parent ? Math.round((parent.width - width) / 2) : 0
    y: parent ? Math.round((parent.height - height) / 2) : 0
    // On a screen smaller than the sheet.
    height: parent ? Math.min(implicitHeight, parent.height) : implicitHeight
    modal: true
    focus: true
    closePolicy: T.Popup.CloseOnEscape
    padding: Metrics.screenPadding
    onAboutToShow: {
        returnTo = parent.Window.activeFocusItem;
        const control = returnTo as T.Control;
        returnReason = control ? control.focusReason : Qt.PopupFocusReason;
    }
    onClosed: {
        if (returnTo && returnTo.visible && returnTo.enabled)
            returnTo.forceActiveFocus(returnReason);
        else
            focusLost(returnReason);
    }

    T.Overlay.modal: Rectangle {
        color: GCColor.scrim
    }

    enter: Transition {
        enabled: !ReducedMotion.isRequested

        NumberAnimation {
            property: "opacity"
            from: 0
            to: 1
            duration: Motion.quickDuration
        }
    }

    background: Rectangle {
        radius: Metrics.dialogRadius
        color: GCColor.dialog
        border.color: GCColor.panelStroke
    }
}
