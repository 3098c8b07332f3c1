import QtQuick

/// A glow round a rounded rectangle of its parent's size.
ShaderEffect {
    property color glow: GCColor.glowTeal
    property real radius: 0
    property real blur: 12

    readonly property size box: Qt.size(parent.width, parent.height)
    readonly property size area: Qt.size(width, height)

    anchors.fill: parent
    anchors.margins: -2 * blur
    // Kept once drawn, since what breathes beside it has the whole window drawn anew.
    layer.enabled: true
    fragmentShader: Qt.resolvedUrl("shaders/halo.frag.qsb")
}
