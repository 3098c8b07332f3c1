import QtQuick

/// Base of all texts. Never rich text, since file names may contain markup. Native rendering takes a third of the time
/// of Qt's distance field rendering and is sharper at small sizes.
DrawnText {
    /// Hides Text's property, so that tests and assistive technology read the text without the spaces replaced below.
    property string text

    // No-break spaces: no line ends with an opening guillemet or begins with a dash or with punctuation that French
    // and German set off by a space, and no short word is alone in the last line of a sentence.
    drawn: text.replace(/(«) | (?=[»:;!?–—…])/g, "$1\u00a0").replace(/^(.{30,}) (?=\S{1,12}$)/gm, "$1\u00a0")
    textFormat: Text.PlainText
    renderType: Text.NativeRendering
    color: GCColor.textPrimary
    // Right-to-left text is left-aligned as well; by default Qt aligns it to the right.
    horizontalAlignment: Text.AlignLeft
}
