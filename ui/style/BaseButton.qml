import QtQuick
import QtQuick.Templates as T

/// Base of all buttons: size, keyboard activation and accessibility.
T.Button {
    id: root

    /// Name of the shortcut, shown as a tip; empty if there is none.
    property string shortcut

    // Rounded up: in rows that are laid out from the right, a fractional width would blur the items to its left.
    implicitWidth: Math.ceil(implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.description: shortcut
    Accessible.onPressAction: {
        // Screen readers may still refer to buttons of closed dialogs.
        if (enabled && visible)
            clicked();
    }
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    Tip {
        text: root.shortcut
        isFocused: root.visualFocus
        isPressed: root.pressed
    }
}
