#version 440

// A vertical gradient with two radial glows, clipped to a rectangle with round corners.

layout(location = 0) in vec2 qt_TexCoord0;
layout(location = 0) out vec4 fragColor;

layout(std140, binding = 0) uniform buf {
    mat4 qt_Matrix;
    float qt_Opacity;
    vec4 topColor;
    vec4 bottomColor;
    vec4 firstLight;
    vec4 secondLight;
    vec2 firstCenter;
    vec2 secondCenter;
    vec2 area;
    float startRadius;
    float firstEnd;
    float secondEnd;
    float cornerRadius;
};

vec3 lit(vec3 ground, vec4 light, vec2 center, float end) {
    float reach = (distance(qt_TexCoord0 * area, center * area) - startRadius) / (end - startRadius);
    vec4 shine = light * (1.0 - clamp(reach, 0.0, 1.0));
    return shine.rgb + ground * (1.0 - shine.a);
}

void main() {
    vec3 color = mix(topColor.rgb, bottomColor.rgb, qt_TexCoord0.y);
    color = lit(color, firstLight, firstCenter, firstEnd);
    color = lit(color, secondLight, secondCenter, secondEnd);

    // Dithers by half a color level to avoid banding in the dark gradients.
    float noise = fract(sin(dot(gl_FragCoord.xy, vec2(12.9898, 78.233))) * 43758.5453);
    // Signed distance to the edge of the round rectangle, negative inside: also with radius 0, all pixels but
    // those on the edge are fully covered.
    vec2 corner = abs(qt_TexCoord0 - 0.5) * area - area / 2.0 + cornerRadius;
    float outside = length(max(corner, 0.0)) + min(max(corner.x, corner.y), 0.0) - cornerRadius;
    float inside = clamp(0.5 - outside, 0.0, 1.0);
    fragColor = vec4(color + (noise - 0.5) / 255.0, 1.0) * inside * qt_Opacity;
}
