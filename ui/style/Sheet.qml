import QtQuick
import QtQuick.Templates as T

/// What stands in front of the window until it is closed; nothing behind it answers meanwhile. Escape closes it.
T.Popup {
    id: root

    /// Where the keyboard was before.
    property Item returnTo
    /// And how it had come there, which the item itself may be gone to tell.
    property int returnReason: Qt.PopupFocusReason

    /// It has closed and what had the keyboard before can't take it back: it is for the screen to say where it goes.
    signal focusLost(reason: int)

    parent: T.Overlay.overlay
    // In the middle, but on whole pixels.
    x: parent ? Math.round((parent.width - width) / 2) : 0
    y: parent ? Math.round((parent.height - height) / 2) : 0
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
        if (returnTo && returnTo.enabled)
            returnTo.forceActiveFocus(returnReason);
        else
            focusLost(returnReason);
    }

    T.Overlay.modal: Rectangle {
        color: GCColor.scrim
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
}
