#version 440

// A blurred rounded rectangle, or only the part of it outside the rectangle.

layout(location = 0) in vec2 qt_TexCoord0;
layout(location = 0) out vec4 fragColor;

layout(std140, binding = 0) uniform buf {
    mat4 qt_Matrix;
    float qt_Opacity;
    vec4 glow;
    vec2 box;
    vec2 area;
    float radius;
    float blur;
    float filled;
};

void main() {
    vec2 p = abs(qt_TexCoord0 - 0.5) * area;
    vec2 q = p - box / 2.0 + radius;
    float outside = length(max(q, 0.0)) + min(max(q.x, q.y), 0.0) - radius;

    float blurred = 0.5 - 0.5 * tanh(outside * 1.2 / (blur * 0.7071));
    // Excludes the inside unless filled, since the rectangle on top may be translucent.
    float shown = max(filled, clamp(outside + 0.5, 0.0, 1.0));
    fragColor = glow * blurred * shown * qt_Opacity;
}
