#version 440

// An arc with round caps and a color gradient along it, and a glow that approximates its Gaussian blur.

layout(location = 0) in vec2 qt_TexCoord0;
layout(location = 0) out vec4 fragColor;

layout(std140, binding = 0) uniform buf {
    mat4 qt_Matrix;
    float qt_Opacity;
    vec4 fromColor;
    vec4 toColor;
    vec4 glowColor;
    float side;
    float radius;
    float lineWidth;
    float blur;
    float share;
};

const float turn = 6.28318530718;

vec2 onCircle(float part) {
    return radius * vec2(sin(part * turn), -cos(part * turn));
}

void main() {
    vec2 p = (qt_TexCoord0 - 0.5) * side;
    float along = fract(atan(p.x, -p.y) / turn);

    float fromMiddle = abs(length(p) - radius);
    if (along > share) {
        float toStart = distance(p, onCircle(0.0));
        float toEnd = distance(p, onCircle(share));
        fromMiddle = min(toStart, toEnd);
        along = toStart < toEnd ? 0.0 : share;
    }

    float pixel = length(vec2(dFdx(p.x), dFdy(p.x)));
    float edge = fromMiddle - lineWidth / 2.0;
    float stroke = clamp(0.5 - edge / pixel, 0.0, 1.0);

    // Integral of a Gaussian over the stroke's width; tanh approximates the error function.
    float reach = 1.2 / (blur * 0.7071);
    float glow = 0.5 * (tanh((fromMiddle + lineWidth / 2.0) * reach) - tanh(edge * reach));

    float present = step(0.0001, share);
    vec4 line = mix(fromColor, toColor, along) * stroke;
    fragColor = (line + glowColor * glow * (1.0 - stroke)) * present * qt_Opacity;
}
