import QtQuick

/// Secondary button: plain text on a faint background.
BaseButton {
    id: root

    property string symbol
    property real symbolSize: 11

    horizontalPadding: 16
    verticalPadding: 10
    spacing: 7
    font: Type.smallButton
    opacity: enabled ? 1 : 0.6

    contentItem: ButtonContent {
        button: root
        color: GCColor.textPrimary
        symbol: root.symbol
        symbolSize: root.symbolSize
    }

    background: Rectangle {
        radius: Metrics.smallButtonRadius
        color: root.down || root.hovered ? GCColor.quietButtonHover : GCColor.quietButton

        FocusRing {
            visible: root.visualFocus
            parentRadius: Metrics.smallButtonRadius
        }
    }
}
