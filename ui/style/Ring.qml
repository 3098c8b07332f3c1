import QtQuick

/// A ring as track, and on it an arc with a glow that starts at the top and runs clockwise. `share` is the arc's part
/// of the ring, from 0 to 1.
Item {
    id: root

    property real share: 1
    property real lineWidth: 3
    property color from: GCColor.glowTeal
    property color to: from
    property color glow: "transparent"
    property real blur: 8

    Rectangle {
        anchors.fill: parent
        anchors.margins: -root.lineWidth / 2
        radius: width / 2
        color: "transparent"
        border.color: GCColor.track
        border.width: root.lineWidth
    }

    ShaderEffect {
        readonly property color fromColor: root.from
        readonly property color toColor: root.to
        readonly property color glowColor: root.glow
        readonly property real side: width
        readonly property real radius: root.width / 2
        readonly property real lineWidth: root.lineWidth
        readonly property real blur: root.blur
        readonly property real share: root.share

        anchors.fill: parent
        anchors.margins: -root.lineWidth / 2 - 2 * root.blur
        // Cached, also while it rotates.
        layer.enabled: true
        layer.smooth: true
        fragmentShader: Qt.resolvedUrl("shaders/ring.frag.qsb")
    }

    SoftwareArc {
        anchors.fill: parent
        anchors.margins: -root.lineWidth / 2
        visible: GraphicsInfo.api === GraphicsInfo.Software
        share: root.share
        lineWidth: root.lineWidth
        color: root.from
    }
}
