import QtQuick

/// A text that is never cut: it wraps, also inside a word that is too long.
PlainText {
    wrapMode: Text.Wrap
    font: Type.body
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
