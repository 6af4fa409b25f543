// The application's own subsystems.
#ifndef QUILLMARSH_HOST_SUBSYSTEMGROUP_H
#define QUILLMARSH_HOST_SUBSYSTEMGROUP_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh::host
{

class HostKernel;

/// The application's own subsystems: calls the hooks that connect them to the window and initialise them, and the hooks
/// that undo this, each once. All operations throw what the hook throws. Frame thread only.
class SubsystemGroup : NoCopy
{
public:
    /// Borrows `kernel`, which must outlive this object.
    explicit SubsystemGroup(HostKernel &kernel) : kernel_(kernel) {}

    /// Calls ConnectSubsystemsToAppWindow() with the window of HostKernel::GetAppWindow().
    void ConnectToWindow();
    /// Calls DisconnectSubsystemsFromAppWindow() if ConnectToWindow() has returned since the last call.
    void DisconnectFromWindow();
    /// Returns the window that the subsystems are connected to; null for none.
    HWND GetWindow() const { return isConnected_ ? window_ : nullptr; }

    /// Calls InitializeSubsystems(), and passes the codes to it.
    void Initialize(unsigned int code, unsigned int subcode);
    /// Calls CleanupSubsystems() if Initialize() has returned since the last call, and passes the codes to it.
    void CleanUp(unsigned int code, unsigned int subcode);
    /// True between Initialize() and CleanUp().
    bool IsInitialized() const { return isInitialized_; }

private:
    HostKernel &kernel_;
    bool isConnected_ = false;
    HWND window_ = nullptr;
    bool isInitialized_ = false;
};

} // namespace quillmarsh::host

#endif
