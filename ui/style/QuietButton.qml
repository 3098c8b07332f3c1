import QtQuick
import QtQuick.Templates as T

/// A button that doesn't invite.
T.Button {
    id: root

    property string symbol
    property real symbolSize: 11

    horizontalPadding: 16
    verticalPadding: 10
    spacing: 7
    font: Type.smallButton
    opacity: enabled ? 1 : 0.6
    // Whole, since buttons stand in rows from the right: a fraction would smear whatever is left of it.
    implicitWidth: Math.ceil(implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

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
