// Stages of a program's life that the kernel tells about.
#ifndef QUILLMARSH_FRAMEWORK_KERNELLEVEL_H
#define QUILLMARSH_FRAMEWORK_KERNELLEVEL_H

namespace quillmarsh
{

/// Stage of a program's life. The kernel passes the stages of start-up one by one, stays at `e_kernel_running` while
/// frames run, and passes the same stages in reverse order at the end. It calls Application::OnKernelLevelChanged() for
/// each.
enum eKernelLevel : unsigned int
{
    /// Before start-up, and after everything was cleaned up.
    e_kernel_none = 0,
    /// The application starts: from Application::BeginStartup() to Application::EndStartup().
    e_kernel_startup,
    /// Generic extensions are created and connected.
    e_kernel_generic_extensions,
    /// Device drivers are opened, devices confirmed and connected.
    e_kernel_devices,
    /// The video renderer is chosen, the main window made.
    e_kernel_video,
    /// Subsystems of the application are connected to the window and initialised.
    e_kernel_subsystems,
    /// Frames run.
    e_kernel_running,
    /// Everything is cleaned up, until Application::Cleanup() has returned.
    e_kernel_cleanup
};

} // namespace quillmarsh

#endif
