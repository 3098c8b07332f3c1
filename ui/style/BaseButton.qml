import QtQuick
import QtQuick.Templates as T

/// What buttons have in common, however they look.
T.Button {
    // Whole, since buttons stand in rows from the right: a fraction would smear whatever is left of it.
    implicitWidth: Math.ceil(implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: {
        if (enabled)
            clicked();
    }
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
}
