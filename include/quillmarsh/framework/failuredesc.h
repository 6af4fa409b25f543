// What went wrong and when, for the application's clean-up.
#ifndef QUILLMARSH_FRAMEWORK_FAILUREDESC_H
#define QUILLMARSH_FRAMEWORK_FAILUREDESC_H

#include <quillmarsh/framework/kernellevel.h>
#include <quillmarsh/platform/types.h>

namespace quillmarsh
{

class Exception;

/// Description of a failure that the kernel gives to Application::Cleanup(): the kernel's level when it happened, and
/// its kinds. A plain record.
struct QUILLMARSH_API FailureDesc
{
    eKernelLevel KernelLevel;
    /// An exception of the standard library.
    bool StandardException = false;
    /// An Exception, of any class.
    bool LibraryException = false;
    bool KernelFailure = false;
    bool GUIFailure = false;
    bool GenericExtensionFailure = false;
    bool ApplicationFailure = false;
    /// VideoSubsystemException or VideoSubsystemRecoverableException.
    bool VideoSubsystemFailure = false;
    bool VideoRendererFailure = false;
    /// DirectInputProxyException, HIDDriverException or HIDException.
    bool DeviceFailure = false;
    bool GenericSubsystemFailure = false;

    /// Sets the kinds by the run-time types of the exceptions that were caught; null sets no kind.
    FailureDesc(eKernelLevel level = e_kernel_none, Exception const *libraryException = nullptr,
                exception const *standardException = nullptr);
};

} // namespace quillmarsh

#endif
