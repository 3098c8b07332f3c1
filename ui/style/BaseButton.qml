import QtQuick
import QtQuick.Templates as T

/// Base of all buttons: size, keyboard activation and accessibility.
T.Button {
    // Rounded up: in rows that are laid out from the right, a fractional width would blur the items to its left.
    implicitWidth: Math.ceil(implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: {
        // Screen readers may still refer to buttons of closed dialogs.
        if (enabled && visible)
            clicked();
    }
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
}
