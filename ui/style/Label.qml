import QtQuick
import Lumvale.Style

/// A text that wraps instead of being elided, also within words that are too long.
PlainText {
    /// Returns a width of at most `maxWidth` that wraps the text to lines of similar length.
    function evenWidth(maxWidth: real): real {
        return TextBalance.width(drawn, font, maxWidth);
    }

    // Rounded up: with a fractional height the items below would be off the pixel grid and blurred.
    height: Math.ceil(implicitHeight)
    wrapMode: Text.Wrap
    font: Type.body
    Accessible.role: Accessible.StaticText
    Accessible.name: visible ? text : ""
    // Qt 6.4 leaves hidden items in the tree. Alerts have to stay, since only items in it are announced when shown.
    Accessible.ignored: !visible && Accessible.role !== Accessible.AlertMessage
}
