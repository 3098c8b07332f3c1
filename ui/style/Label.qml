import QtQuick

/// A text that is never cut: it wraps, also inside a word that is too long. Plain text always, since file names
/// may look like markup.
Text {
    textFormat: Text.PlainText
    wrapMode: Text.Wrap
    color: GCColor.textPrimary
    font: Type.body
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
