import QtQuick

/// Arc of a ring for the software renderer, which draws no shaders: in one color, without a glow.
Canvas {
    id: root

    required property real share
    required property real lineWidth
    required property color color

    onShareChanged: requestPaint()
    onColorChanged: requestPaint()
    onPaint: {
        const context = getContext("2d");
        context.reset();
        context.lineWidth = lineWidth;
        context.lineCap = "round";
        context.strokeStyle = color;
        const top = -Math.PI / 2;
        context.arc(width / 2, height / 2, (width - lineWidth) / 2, top, top + share * 2 * Math.PI);
        if (share > 0)
            context.stroke();
    }
}
