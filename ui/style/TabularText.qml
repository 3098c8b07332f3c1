pragma ComponentBehavior: Bound
import QtQuick

/// A number with its unit in tabular figures: all digits have the same width, so that numbers line up in columns and
/// don't shift while they change.
///
/// Draws each character as an item of its own, from left to right. Text that may need shaping or bidirectional layout
/// is drawn as one item.
Row {
    id: root

    required property string text
    property font font: Type.body
    property color color: GCColor.textPrimary

    readonly property FontMetrics metrics: FontMetrics {
        font: root.font
    }
    readonly property real digitWidth: metrics.advanceWidth("0")
    // Latin, Greek and Cyrillic letters, digits, spaces and punctuation, without combining marks and bidi controls.
    // Listed by code point, since regular expressions in QML have no Unicode script properties.
    readonly property bool isSplit: /^[ -~\u00a0-\u02ff\u0370-\u0482\u048a-\u052f\u1e00-\u200a\u2010-\u2027\u202f-\u205e]*$/.test(text)

    Accessible.ignored: true

    Repeater {
        model: root.isSplit ? root.text.length : 1

        PlainText {
            required property int index

            readonly property string character: root.isSplit ? root.text.charAt(index) : root.text

            // Undefined resets to the implicit width.
            width: root.isSplit && character >= "0" && character <= "9" ? root.digitWidth : undefined
            text: character
            font: root.font
            color: root.color
            horizontalAlignment: Text.AlignHCenter
        }
    }
}
