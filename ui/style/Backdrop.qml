import QtQuick

/// What lies behind everything in the window.
Item {
    id: root

    // All that is left where the machine draws no shaders; beneath them it would be drawn for nothing.
    Rectangle {
        anchors.fill: parent
        visible: root.GraphicsInfo.api === GraphicsInfo.Software
        gradient: Gradient {
            GradientStop {
                position: 0
                color: GCColor.bgTop
            }
            GradientStop {
                position: 1
                color: GCColor.bgBottom
            }
        }
    }

    ShaderEffect {
        readonly property color topColor: GCColor.bgTop
        readonly property color bottomColor: GCColor.bgBottom
        readonly property color firstLight: GCColor.alpha(GCColor.glowTeal, 0.14)
        readonly property color secondLight: GCColor.alpha(GCColor.glowViolet, 0.12)
        readonly property point firstCentre: Qt.point(0.15, 0.08)
        readonly property point secondCentre: Qt.point(0.92, 0.95)
        readonly property size area: Qt.size(width, height)
        readonly property real startRadius: 10
        readonly property real firstEnd: 420
        readonly property real secondEnd: 460

        anchors.fill: parent
        fragmentShader: Qt.resolvedUrl("shaders/backdrop.frag.qsb")
        // Drawn once and kept: the window above it moves all the time.
        layer.enabled: true
    }
}
