import QtQuick

/// A glow round a rounded rectangle of its parent's size.
ShaderEffect {
    property color glow: GCColor.glowTeal
    property real radius: 0
    property real blur: 12

    /// The widest that the blur gets: room is kept for it, so that the texture has one size.
    property real maxBlur: blur

    /// Whether it glows beneath the rectangle, too: the rectangle itself then need not be there.
    property bool isFilled: false

    readonly property size box: Qt.size(parent.width, parent.height)
    readonly property size area: Qt.size(width, height)
    readonly property real filled: isFilled ? 1 : 0

    anchors.fill: parent
    anchors.margins: -2 * maxBlur
    // Kept once drawn, since what breathes beside it has the whole window drawn anew.
    layer.enabled: true
    fragmentShader: Qt.resolvedUrl("shaders/rectangular_glow.frag.qsb")
}
