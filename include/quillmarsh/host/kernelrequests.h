// Requests to the kernel, which it carries out between two frames.
#ifndef QUILLMARSH_HOST_KERNELREQUESTS_H
#define QUILLMARSH_HOST_KERNELREQUESTS_H

#include <quillmarsh/framework/directinputconfig.h>
#include <quillmarsh/framework/videoconfig.h>

#include <variant>

namespace quillmarsh::host
{

/// Creates the devices anew with a configuration: see Kernel::ApplyHIDReconfig.
struct DeviceRequest
{
    static constexpr char const *s_szName = "devices";

    unsigned int code = 0;
    DirectInputConfig config;
};

/// Creates the video stack anew with a renderer: see Kernel::ApplyVideoReconfig.
struct VideoRequest
{
    static constexpr char const *s_szName = "video";

    unsigned int code = 0;
    /// Name of the renderer's plug-in; empty for any.
    string pluginName;
    VideoConfig config;
};

/// Calls Application::GenericReconfig: see Kernel::RequestGenericReconfig.
struct GenericRequest
{
    static constexpr char const *s_szName = "generic";

    unsigned int code = 0;
    unsigned int subcode = 0;
};

/// Reports a changed vertical synchronisation: see Kernel::NotifyVSyncUpdate.
struct VSyncRequest
{
    static constexpr char const *s_szName = "vertical synchronisation";

    unsigned int code = 0;
};

/// One request. Each alternative has a name for the log, a code, and its data.
using KernelRequest = std::variant<DeviceRequest, VideoRequest, GenericRequest, VSyncRequest>;

} // namespace quillmarsh::host

#endif
