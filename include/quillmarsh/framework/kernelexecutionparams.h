// Switches of the kernel's automatic work, which commands and applications read and change.
#ifndef QUILLMARSH_FRAMEWORK_KERNELEXECUTIONPARAMS_H
#define QUILLMARSH_FRAMEWORK_KERNELEXECUTIONPARAMS_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh
{

/// Devices that the kernel samples by itself, once in each frame.
struct HIDAutoSamplingConfig
{
    bool AutoSampleSystemKeyboard = true;
    bool AutoSampleSystemMouse = true;
    /// All devices that are neither the system's keyboard nor its mouse.
    bool AutoSampleNonSystemDevices = true;
};

/// Switches of the kernel's automatic work. A plain record; the kernel holds the present one.
///
/// To change a switch, read the record, change it and write it back, on the frame thread:
/// \code
/// KernelExecutionParams params(true);
/// params.AutoDrawGUI = false;
/// params.SetKernelCurrent();
/// \endcode
struct QUILLMARSH_API KernelExecutionParams : HIDAutoSamplingConfig
{
    /// gui::Manager::DispatchInputEvents is called in each frame ...
    bool AutoDispatchGUIEvents;
    /// ... before Application::FrameUpdateStates instead of after it.
    bool GUIEventsPreFrameUpdateStates;
    /// The GUI renderer's statistics are cleared in each frame.
    bool AutoClearGUIStats;
    /// gui::Manager::Draw is called in each frame.
    bool AutoDrawGUI;
    /// The kernel ends the GUI renderer's frame.
    bool AutoEndGUIRenderer;
    /// The kernel presents the back buffer.
    bool AutoPresentBackBuffer;
    /// The kernel's configuration loop does a hard clean-up.
    bool EnableHardCleanupConfigLoop;
    /// A failure that ended the run is thrown again at exit, after everything was cleaned up.
    bool EnableHardRethrowExit;
    /// Messages of the window system are logged while the main window is cleaned up.
    bool LogWinMsgOnMainWindowCleanup;
    /// The host waits for a confirmation before it closes at exit.
    bool WaitCloseConfirmationOnExit;
    /// Commands and variables for developers are allowed.
    bool DeveloperMode;

    /// Takes the kernel's present values with `current`, and otherwise the defaults. Without a kernel it asserts
    /// "Kernel singleton is not created.", whatever the argument is, and takes the defaults.
    KernelExecutionParams(bool current = true);

    /// Fills the record from the kernel. Asserts without a kernel, and does nothing then.
    void GetKernelCurrent();
    /// Gives the record to the kernel. Asserts without a kernel, and does nothing then.
    void SetKernelCurrent() const;

    /// Prints one line for each switch behind `tabs` tabs.
    void Dump(ostream &out, unsigned int tabs) const;
};

} // namespace quillmarsh

#endif
