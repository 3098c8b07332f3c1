import QtQuick

/// A text that is never cut: it wraps, also inside a word that is too long.
PlainText {
    /// As wide as gives lines of much the same length: a last line of one word looks like a mistake.
    function evenWidth(maximum: real): real {
        return Math.min(implicitWidth / Math.ceil(implicitWidth / maximum) + 30, maximum);
    }

    // Whole, whatever the line height: a fraction would smear the drawings and buttons beneath.
    height: Math.ceil(implicitHeight)
    wrapMode: Text.Wrap
    font: Type.body
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
