import QtQuick

/// A title whose color and glow pulsate.
GlowText {
    id: root

    required property string title
    readonly property real phase: clock.phase(Motion.pulseSpeed)

    text: title
    font: Type.title
    color: GCColor.mix(GCColor.textPrimary, GCColor.glowTeal, 0.35 * phase)
    glow: GCColor.alpha(GCColor.glowTeal, 0.18 + 0.32 * phase)
    radius: 6 + 10 * phase
    maxRadius: 16

    Clock {
        id: clock
        target: root
    }
}
