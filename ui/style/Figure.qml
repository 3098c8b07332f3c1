pragma ComponentBehavior: Bound
import QtQuick

/// A number with its unit, every digit as wide as the others, so that figures stand in columns and don't dance
/// while they change.
Row {
    id: root

    required property string text
    property font font: Type.body
    property color color: GCColor.textPrimary

    readonly property FontMetrics metrics: FontMetrics {
        font: root.font
    }
    readonly property real digitWidth: metrics.advanceWidth("0")

    Accessible.ignored: true

    Repeater {
        model: root.text.length

        Text {
            required property int index

            readonly property string character: root.text.charAt(index)

            width: character >= "0" && character <= "9" ? root.digitWidth : implicitWidth
            text: character
            textFormat: Text.PlainText
            font: root.font
            color: root.color
            horizontalAlignment: Text.AlignHCenter
        }
    }
}
