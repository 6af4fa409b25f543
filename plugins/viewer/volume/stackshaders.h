// Shaders of the turned volume.
#ifndef QUILLMARSH_PLUGINS_VIEWER_VOLUME_STACKSHADERS_H
#define QUILLMARSH_PLUGINS_VIEWER_VOLUME_STACKSHADERS_H

namespace viewer::volumes
{

/// Places one slice of the stack for each instance, the farthest first. Places of the volume are 0 to 1.
inline constexpr char s_sliceVertexShader[] = R"(#version 330 core
uniform mat3 rotation;
uniform vec3 halfExtent;
uniform vec3 end;
uniform vec3 lens;
uniform int axis;
uniform float count;
uniform float isForward;
out vec3 place;
void main()
{
    float part = (float(gl_InstanceID) + 0.5) / count;
    part = isForward > 0.5 ? part : 1.0 - part;
    vec2 corner = vec2(gl_VertexID & 1, gl_VertexID >> 1);
    vec3 box = axis == 0 ? vec3(part, corner) : axis == 1 ? vec3(corner.x, part, corner.y) : vec3(corner, part);
    vec3 seen = rotation * ((box * 2.0 - 1.0) * halfExtent);
    gl_Position = vec4(seen.x * lens.x, -seen.y * lens.y, 0.0, lens.z + seen.z);
    place = box * end;
}
)";

/// Looks the colour up in the table of tones. The light comes from the eye and stands at the left above it.
inline constexpr char s_sliceFragmentShader[] = R"(#version 330 core
uniform sampler3D samples;
uniform sampler2D tones;
uniform vec2 window;
uniform bool isColour;
uniform float opacity;
uniform vec3 sampleStep;
uniform vec3 light;
in vec3 place;
out vec4 result;
float read(vec3 at)
{
    vec4 texel = texture(samples, at);
    return clamp((isColour ? max(texel.r, max(texel.g, texel.b)) : texel.r) * window.x + window.y, 0.0, 1.0);
}
void main()
{
    float value = read(place);
    float alpha = 1.0 - exp(-opacity * value * value);
    if (alpha < 0.002)
        discard;
    vec3 colour = texture(tones, vec2(value * (255.0 / 256.0) + 0.5 / 256.0, 0.5)).rgb;
    if (isColour)
    {
        vec3 each = clamp(texture(samples, place).rgb * window.x + window.y, 0.0, 1.0) * (255.0 / 256.0) + 0.5 / 256.0;
        colour = vec3(texture(tones, vec2(each.r, 0.5)).r, texture(tones, vec2(each.g, 0.5)).g,
                      texture(tones, vec2(each.b, 0.5)).b);
    }
    vec3 slope = vec3(read(place + vec3(sampleStep.x, 0.0, 0.0)), read(place + vec3(0.0, sampleStep.y, 0.0)),
                      read(place + vec3(0.0, 0.0, sampleStep.z))) - value;
    float steepness = length(slope);
    float shine = steepness > 1e-4 ? max(dot(slope, light) / steepness, 0.0) : 1.0;
    float lit = mix(1.0, 0.35 + 0.75 * shine, min(steepness * 12.0, 1.0));
    result = vec4(min(colour * lit, 1.0) * alpha, alpha);
}
)";

/// Covers the viewport with a picture.
inline constexpr char s_pictureVertexShader[] = R"(#version 330 core
out vec2 place;
void main()
{
    place = vec2(gl_VertexID & 1, gl_VertexID >> 1);
    gl_Position = vec4(place * 2.0 - 1.0, 0.0, 1.0);
}
)";

inline constexpr char s_pictureFragmentShader[] = R"(#version 330 core
uniform sampler2D picture;
in vec2 place;
out vec4 result;
void main()
{
    result = vec4(texture(picture, place).rgb, 1.0);
}
)";

} // namespace viewer::volumes

#endif
