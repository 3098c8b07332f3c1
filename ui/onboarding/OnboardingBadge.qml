import QtQuick
import Lumvale.Style

/// Symbol of an onboarding page, with a pulsating glow.
Item {
    id: root

    required property string symbol
    readonly property real phase: clock.phase(Motion.slowPulseSpeed)

    implicitWidth: 92
    implicitHeight: 92

    Clock {
        id: clock
        target: root
    }

    RectangularGlow {
        glow: GCColor.glowTeal
        opacity: 0.22 + 0.1 * root.phase
        radius: root.width / 2
        blur: 14
        isFilled: true
    }

    Rectangle {
        anchors.centerIn: parent
        width: 72
        height: 72
        radius: 20
        gradient: Gradient {
            GradientStop {
                position: 0
                color: GCColor.glowTeal
            }
            GradientStop {
                position: 1
                color: GCColor.glowViolet
            }
        }

        RectangularGlow {
            glow: GCColor.glowTeal
            opacity: 0.4 + 0.2 * root.phase
            radius: parent.radius
            blur: 12 + 6 * root.phase
            maxBlur: 18
        }

        Symbol {
            anchors.centerIn: parent
            size: 30
            name: root.symbol
            color: GCColor.ink
        }
    }
}
