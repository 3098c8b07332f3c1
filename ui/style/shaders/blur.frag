#version 440

// One pass of a separable Gaussian blur of the alpha channel, colored by `tint`. `axis` is one pixel along the
// direction of the pass, in texture coordinates.

layout(location = 0) in vec2 qt_TexCoord0;
layout(location = 0) out vec4 fragColor;

layout(std140, binding = 0) uniform buf {
    mat4 qt_Matrix;
    float qt_Opacity;
    vec4 tint;
    vec2 axis;
    float radius;
};

layout(binding = 1) uniform sampler2D source;

void main() {
    float sigma = max(radius / 2.0, 0.5);
    float sum = 0.0;
    float weights = 0.0;
    for (int i = -12; i <= 12; ++i) {
        float offset = float(i) * radius / 12.0;
        float weight = exp(-offset * offset / (2.0 * sigma * sigma));
        sum += texture(source, qt_TexCoord0 + axis * offset).a * weight;
        weights += weight;
    }
    fragColor = tint * (sum / weights) * qt_Opacity;
}
