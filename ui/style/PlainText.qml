import QtQuick

/// What every text is made of. Plain always, since names of files may look like markup; and drawn as the system
/// draws text, which costs a third of what the toolkit's own way does and is sharper at small sizes.
Text {
    textFormat: Text.PlainText
    renderType: Text.NativeRendering
    color: GCColor.textPrimary
    // Names in scripts that run from the right stand where all others do.
    horizontalAlignment: Text.AlignLeft
}
