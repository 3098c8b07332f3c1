import QtQuick

/// A label that can draw one part of its text stronger.
Label {
    /// The text before that part, the part, and the text after it; empty if no part is stronger.
    property var parts: []

    /// Returns a text with the characters replaced that have a meaning in styled text, which joins spaces as well.
    function escaped(part: string): string {
        return part.replace(/&/g, "&amp;").replace(/</g, "&lt;").replace(/>/g, "&gt;").replace(/ (?= |$)|^ /g, "\u00a0");
    }

    textFormat: parts.length === 3 ? Text.StyledText : Text.PlainText
    drawn: parts.length === 3
           ? escaped(parts[0]) + "<b><font color=\"" + GCColor.glowTeal + "\">" + escaped(parts[1]) + "</font></b>"
             + escaped(parts[2])
           : text
}
