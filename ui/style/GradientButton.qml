import QtQuick

/// Primary button: dark text on a gradient.
BaseButton {
    id: root

    property color from: GCColor.deepTeal
    property color to: GCColor.glowTeal
    property color glow: "transparent"
    property real radius: Metrics.buttonRadius
    property string symbol
    property real symbolSize: 13
    /// Shows a spinner.
    property bool busy: false

    readonly property bool isLit: enabled || busy
    readonly property color textColor: isLit ? GCColor.ink : GCColor.faded

    horizontalPadding: 18
    verticalPadding: 11
    spacing: 7
    font: Type.button

    contentItem: ButtonContent {
        button: root
        color: root.textColor
        symbol: root.symbol
        symbolSize: root.symbolSize
        busy: root.busy
    }

    background: Item {
        RectangularGlow {
            visible: root.isLit && root.glow.a > 0
            glow: root.glow
            radius: root.radius
        }

        Rectangle {
            anchors.fill: parent
            radius: root.radius
            opacity: root.isLit ? 1 : 0.22
            gradient: Gradient {
                orientation: Gradient.Horizontal
                GradientStop {
                    position: 0
                    color: root.from
                }
                GradientStop {
                    position: 1
                    color: root.to
                }
            }
        }

        Rectangle {
            anchors.fill: parent
            radius: root.radius
            color: root.down ? GCColor.pressedOverlay : GCColor.hoverOverlay
            visible: root.enabled && (root.down || root.hovered)
        }

        FocusRing {
            visible: root.visualFocus
            parentRadius: root.radius
        }
    }
}
