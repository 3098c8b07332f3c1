import QtQuick

/// A glow around a rounded rectangle of its parent's size.
ShaderEffect {
    property color glow: GCColor.glowTeal
    property real radius: 0
    property real blur: 12

    /// Upper limit of `blur`; determines the texture size, which then stays constant during animations.
    property real maxBlur: blur

    /// Also fills the rectangle itself.
    property bool isFilled: false

    readonly property size box: Qt.size(parent.width, parent.height)
    readonly property size area: Qt.size(width, height)
    readonly property real filled: isFilled ? 1 : 0

    anchors.fill: parent
    anchors.margins: -2 * maxBlur
    // Cached: animations next to it repaint the whole window.
    layer.enabled: true
    fragmentShader: Qt.resolvedUrl("shaders/rectangular_glow.frag.qsb")
}
