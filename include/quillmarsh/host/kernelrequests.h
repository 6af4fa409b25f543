// Requests to the kernel, which it carries out between two frames.
#ifndef QUILLMARSH_HOST_KERNELREQUESTS_H
#define QUILLMARSH_HOST_KERNELREQUESTS_H

#include <quillmarsh/framework/directinputconfig.h>

#include <variant>

namespace quillmarsh::host
{

/// Builds the devices anew with a configuration: see Kernel::ApplyHIDReconfig.
struct DeviceRequest
{
    static constexpr char const *s_szName = "devices";

    unsigned int code = 0;
    DirectInputConfig config;
};

/// Builds the video stack anew with a renderer: see Kernel::ApplyVideoReconfig.
struct VideoRequest
{
    static constexpr char const *s_szName = "video";

    unsigned int code = 0;
    /// Plug-in of the renderer; empty for none.
    string pluginName;
};

/// Reaches Application::GenericReconfig: see Kernel::RequestGenericReconfig.
struct GenericRequest
{
    static constexpr char const *s_szName = "generic";

    unsigned int code = 0;
    unsigned int subcode = 0;
};

/// Tells of a changed vertical synchronisation: see Kernel::NotifyVSyncUpdate.
struct VSyncRequest
{
    static constexpr char const *s_szName = "vertical synchronisation";

    unsigned int code = 0;
};

/// One request. Each alternative has its name for the log, its code, and what it carries.
using KernelRequest = std::variant<DeviceRequest, VideoRequest, GenericRequest, VSyncRequest>;

} // namespace quillmarsh::host

#endif
