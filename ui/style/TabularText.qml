pragma ComponentBehavior: Bound
import QtQuick

/// A number with its unit, every digit as wide as the others, so that figures stand in columns and don't dance
/// while they change.
///
/// For that it sets the characters one by one, from left to right. Scripts whose letters join, or that run the other
/// way, would be torn apart by it: those are set as the one text that they are.
Row {
    id: root

    required property string text
    property font font: Type.body
    property color color: GCColor.textPrimary

    readonly property FontMetrics metrics: FontMetrics {
        font: root.font
    }
    readonly property real digitWidth: metrics.advanceWidth("0")
    // Latin, Greek and Cyrillic letters, digits, spaces, punctuation; neither marks that stand on a letter nor what
    // turns the direction. By code points, since Qt's regular expressions know no scripts.
    readonly property bool isSplit: /^[ -~\u00a0-\u02ff\u0370-\u0482\u048a-\u052f\u1e00-\u200a\u2010-\u2027\u202f-\u205e]*$/.test(text)

    Accessible.ignored: true

    Repeater {
        model: root.isSplit ? root.text.length : 1

        PlainText {
            required property int index

            readonly property string character: root.isSplit ? root.text.charAt(index) : root.text

            // Undefined is a text's own width.
            width: root.isSplit && character >= "0" && character <= "9" ? root.digitWidth : undefined
            text: character
            font: root.font
            color: root.color
            horizontalAlignment: Text.AlignHCenter
        }
    }
}
