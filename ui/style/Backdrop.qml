import QtQuick

/// What lies behind everything in the window, or in a sheet: a vertical gradient under two lights.
Item {
    id: root

    property real radius: 0
    property color topColor: GCColor.bgTop
    property color bottomColor: GCColor.bgBottom

    // Where the lights are, as parts of width and height, and how far they reach.
    property point tealCentre: Qt.point(0.15, 0.08)
    property point violetCentre: Qt.point(0.92, 0.95)
    property real tealEnd: 420
    property real violetEnd: 460

    // All that is left where the machine draws no shaders; beneath them it would be drawn for nothing.
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
        readonly property point firstCentre: root.tealCentre
        readonly property point secondCentre: root.violetCentre
        readonly property size area: Qt.size(width, height)
        readonly property real startRadius: 10
        readonly property real firstEnd: root.tealEnd
        readonly property real secondEnd: root.violetEnd
        readonly property real cornerRadius: root.radius

        anchors.fill: parent
        fragmentShader: Qt.resolvedUrl("shaders/backdrop.frag.qsb")
        // Drawn once and kept: the window above it moves all the time.
        layer.enabled: true
    }
}
