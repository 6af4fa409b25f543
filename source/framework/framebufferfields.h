// The parts of a frame-buffer configuration that texts name, with their labels.
#ifndef QUILLMARSH_SOURCE_FRAMEWORK_FRAMEBUFFERFIELDS_H
#define QUILLMARSH_SOURCE_FRAMEWORK_FRAMEBUFFERFIELDS_H

#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/framework/framebufferconfig.h>

namespace quillmarsh
{

struct FrameBufferField
{
    char const *label;
    string (*makeText)(FrameBufferConfig const &config);
};

constexpr FrameBufferField s_frameBufferFields[] = {
    {"Fullscreen", [](FrameBufferConfig const &config) { return MakeString(config.Fullscreen); }},
    {"HardwareRasterizer", [](FrameBufferConfig const &config) { return MakeString(config.HardwareRasterizer); }},
    {"BackBufferCount", [](FrameBufferConfig const &config) { return MakeString(config.BackBufferCount); }},
    {"BackBufferLayout", [](FrameBufferConfig const &config) { return config.MakeBackBufferDesc("."); }},
    {"DepthStencilBufferLayout", [](FrameBufferConfig const &config) { return config.MakeDepthStencilDesc("."); }},
    {"AccumulationBufferLayout", [](FrameBufferConfig const &config) { return config.MakeAccumulationDesc("."); }},
};

} // namespace quillmarsh

#endif
