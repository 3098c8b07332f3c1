import QtQuick
import QtQuick.Templates as T

/// What buttons have in common, however they look.
T.Button {
    id: root

    /// A key that is held presses once, and nothing of what the press has brought.
    function press(event: KeyEvent): void {
        if (!event.isAutoRepeat)
            clicked();
    }

    // Whole, since buttons stand in rows from the right: a fraction would smear whatever is left of it.
    implicitWidth: Math.ceil(implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: clicked()
    Keys.onReturnPressed: event => press(event)
    Keys.onEnterPressed: event => press(event)
}
