// The order of a frame.
#ifndef QUILLMARSH_HOST_FRAMEORDER_H
#define QUILLMARSH_HOST_FRAMEORDER_H

#include <quillmarsh/framework/application.h>

namespace quillmarsh::host
{

class HostKernel;

/// One step of a frame. HostKernel::GetFrameOrder() returns all steps in their order.
struct FrameStep
{
    /// Name of the hook, or of the kernel's own work. A block of the profiler has the same name.
    char const *name;
    /// One sentence for the reader.
    char const *description;
    /// Does the step's work; gets the name of the step.
    void (*run)(HostKernel &kernel, char const *name);
    /// False in a frame that leaves the step out. Null for a step of every frame.
    bool (*isDue)(HostKernel &kernel) = nullptr;
    /// Switch that makes the step a block of the profiler. Null for a step that is never one.
    bool Application::AutoInitInfo::*profiled = &Application::AutoInitInfo::ProfileHooks;
};

} // namespace quillmarsh::host

#endif
