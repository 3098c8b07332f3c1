import QtQuick

/// Background of the window and of the onboarding sheet: a vertical gradient with two radial glows.
Item {
    id: root

    property real radius: 0
    property color topColor: GCColor.bgTop
    property color bottomColor: GCColor.bgBottom

    // Centers are fractions of width and height; radii are in pixels.
    property point tealCenter: Qt.point(0.15, 0.08)
    property point violetCenter: Qt.point(0.92, 0.95)
    property real tealEnd: 420
    property real violetEnd: 460

    // Fallback for the software renderer, which draws no ShaderEffect.
    Rectangle {
        anchors.fill: parent
        radius: root.radius
        visible: root.GraphicsInfo.api === GraphicsInfo.Software
        gradient: Gradient {
            GradientStop {
                position: 0
                color: root.topColor
            }
            GradientStop {
                position: 1
                color: root.bottomColor
            }
        }
    }

    ShaderEffect {
        readonly property color topColor: root.topColor
        readonly property color bottomColor: root.bottomColor
        readonly property color firstLight: GCColor.alpha(GCColor.glowTeal, 0.14)
        readonly property color secondLight: GCColor.alpha(GCColor.glowViolet, 0.12)
        readonly property point firstCenter: root.tealCenter
        readonly property point secondCenter: root.violetCenter
        readonly property size area: Qt.size(width, height)
        readonly property real startRadius: 10
        readonly property real firstEnd: root.tealEnd
        readonly property real secondEnd: root.violetEnd
        readonly property real cornerRadius: root.radius

        anchors.fill: parent
        fragmentShader: Qt.resolvedUrl("shaders/backdrop.frag.qsb")
        // Cached in a layer: animations above it repaint the window in every frame.
        layer.enabled: true
    }
}
