import QtQuick

/// Indicator of a long operation: a rotating ring above a pulsating label.
Column {
    id: root

    required property string label
    property string subtitle
    /// The number and size of the entries processed so far; not shown if empty.
    property string progressText

    readonly property alias time: clock.time
    readonly property real phase: clock.phase(Motion.pulseSpeed)

    spacing: 16
    Accessible.role: Accessible.ProgressBar
    Accessible.name: label
    Accessible.ignored: !visible
    Accessible.description: progressText || subtitle

    Clock {
        id: clock
        target: root
        isEssential: true
    }

    Ring {
        anchors.horizontalCenter: parent.horizontalCenter
        width: 42
        height: 42
        share: 0.72
        to: GCColor.glowViolet
        glow: GCColor.alpha(GCColor.glowTeal, 0.6)
        rotation: (Motion.spinSpeed * root.time) % 360
    }

    GlowText {
        anchors.horizontalCenter: parent.horizontalCenter
        text: root.label
        font: Type.loading
        color: GCColor.mix(GCColor.textPrimary, GCColor.glowTeal, 0.3 * root.phase)
        glow: GCColor.alpha(GCColor.glowTeal, 0.15 + 0.25 * root.phase)
        radius: 4 + 6 * root.phase
        maxRadius: 10
        Accessible.ignored: true
    }

    Label {
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(implicitWidth, Metrics.subtitleWidth)
        visible: root.subtitle.length > 0
        text: root.subtitle
        color: GCColor.textSecondary
        horizontalAlignment: Text.AlignHCenter
        lineHeight: 1.25
        Accessible.ignored: true
    }

    Label {
        objectName: "progressText"
        anchors.horizontalCenter: parent.horizontalCenter
        visible: root.progressText.length > 0
        text: root.progressText
        font: Type.caption
        color: GCColor.textSecondary
        Accessible.ignored: true
    }
}
