// Reasons for the lack of an OpenGL context, for both sides of the seam.
#ifndef QUILLMARSH_SOURCE_PLATFORM_OPENGLVERSION_H
#define QUILLMARSH_SOURCE_PLATFORM_OPENGLVERSION_H

#include <quillmarsh/platform/openglcontext.h>

namespace quillmarsh::platform
{

/// What the driver's own context says of itself, without any wish.
struct OpenGLOffer
{
    string renderer;
    /// Empty when there is no context at all.
    string version;
};

/// Reads the offer from the current context.
inline OpenGLOffer ReadOpenGLOffer(OpenGLFunction getString)
{
    constexpr unsigned int rendererName = 0x1F01;
    constexpr unsigned int versionName = 0x1F02;
    using GetString = unsigned char const *(QUILLMARSH_OPENGL_CALL *)(unsigned int);
    auto const read = [=](unsigned int name) -> string
    {
        auto const *const text = getString ? reinterpret_cast<GetString>(getString)(name) : nullptr;
        return text ? reinterpret_cast<char const *>(text) : "";
    };
    return {read(rendererName), read(versionName)};
}

/// Returns why there is no context of the wished version.
inline string DescribeMissingVersion(OpenGLContextDesc const &desc, OpenGLOffer const &offer, string const &error)
{
    string const wish =
        "OpenGL " + std::to_string(desc.majorVersion) + "." + std::to_string(desc.minorVersion) + " is needed, ";
    if (offer.version.empty())
        return wish + "and the driver makes no context: " + error + ".";
    return wish + "and the driver (" + offer.renderer + ") offers OpenGL " + offer.version + ": " + error + ".";
}

} // namespace quillmarsh::platform

#endif
