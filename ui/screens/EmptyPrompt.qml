import QtQuick
import Lumvale.Style

/// What a screen says while it has nothing to show yet.
Column {
    id: root

    required property string text
    property string symbol: "sparkles"

    spacing: 18

    Symbol {
        anchors.horizontalCenter: parent.horizontalCenter
        size: 44
        name: root.symbol
        color: GCColor.alpha(GCColor.glowTeal, 0.55)
    }

    Label {
        objectName: "emptyPrompt"
        // As wide as gives lines of much the same length: a last line of one word looks like a mistake.
        width: Math.min(implicitWidth / Math.ceil(implicitWidth / Metrics.promptWidth) + 30, Metrics.promptWidth)
        text: root.text
        color: GCColor.textSecondary
        horizontalAlignment: Text.AlignHCenter
        lineHeight: 1.35
    }
}
