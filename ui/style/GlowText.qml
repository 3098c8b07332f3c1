import QtQuick

/// A text with a glow around its letters.
Item {
    id: root

    required property string text
    property font font: Type.body
    property color color: GCColor.textPrimary
    property color glow: GCColor.glowTeal
    property real radius: 8

    /// Upper limit of `radius`; determines the texture size, which then stays constant during animations.
    property real maxRadius: 16

    implicitWidth: label.implicitWidth
    implicitHeight: label.implicitHeight
    Accessible.role: Accessible.StaticText
    Accessible.name: text

    // Source of the glow; its color is constant, so its texture is rendered once.
    PlainText {
        id: letters
        text: root.text
        font: root.font
        color: "white"
        visible: false
    }

    ShaderEffectSource {
        id: letterTexture
        readonly property real margin: Math.ceil(root.maxRadius)
        x: -margin
        y: -margin
        width: Math.ceil(letters.implicitWidth) + 2 * margin
        height: Math.ceil(letters.implicitHeight) + 2 * margin
        sourceItem: letters
        sourceRect: Qt.rect(-margin, -margin, width, height)
        visible: false
    }

    ShaderEffect {
        id: horizontalBlur
        readonly property ShaderEffectSource source: letterTexture
        readonly property color tint: "white"
        readonly property size axis: Qt.size(1 / width, 0)
        readonly property real radius: root.radius

        width: letterTexture.width
        height: letterTexture.height
        visible: false
        layer.enabled: true
        fragmentShader: Qt.resolvedUrl("shaders/blur.frag.qsb")
    }

    ShaderEffect {
        readonly property ShaderEffect source: horizontalBlur
        readonly property color tint: root.glow
        readonly property size axis: Qt.size(0, 1 / height)
        readonly property real radius: root.radius

        x: letterTexture.x
        y: letterTexture.y
        width: letterTexture.width
        height: letterTexture.height
        fragmentShader: Qt.resolvedUrl("shaders/blur.frag.qsb")
    }

    Label {
        id: label
        text: root.text
        font: root.font
        color: root.color
        wrapMode: Text.NoWrap
        Accessible.ignored: true
    }
}
