import QtQuick

/// The program's name, breathing light.
GlowText {
    id: root

    required property string title
    property real phase: 0

    text: title
    font: Type.title
    color: GCColor.mix(GCColor.textPrimary, GCColor.glowTeal, 0.35 * phase)
    glow: GCColor.alpha(GCColor.glowTeal, 0.18 + 0.32 * phase)
    radius: 6 + 10 * phase
    maximumRadius: 16

    FrameAnimation {
        running: root.visible
        onTriggered: root.phase = Motion.phase(Motion.breathing, Motion.now())
    }
}
