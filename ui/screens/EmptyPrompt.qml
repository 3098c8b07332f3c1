import QtQuick
import Lumvale.Style

/// Symbol and message shown in an empty screen or list.
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
        width: evenWidth(Metrics.promptWidth)
        text: root.text
        color: GCColor.textSecondary
        horizontalAlignment: Text.AlignHCenter
        lineHeight: 1.35
    }
}
