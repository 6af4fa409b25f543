// Observer that hears of reconfigurations.
#ifndef QUILLMARSH_FRAMEWORK_RECONFIGOBSERVER_H
#define QUILLMARSH_FRAMEWORK_RECONFIGOBSERVER_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh
{

/// Is told of reconfigurations, after Kernel::AddReconfigObserver(). Frame thread only.
///
/// The kernel must outlive it.
class QUILLMARSH_API ReconfigObserver
{
public:
    /// Removes the observer from the kernel; harmless if it was never added.
    virtual ~ReconfigObserver();

    /// The video stack was taken down and built again.
    virtual void OnVideoReconfig();
    /// Waiting for the vertical synchronisation was switched on or off without a reconfiguration.
    virtual void OnVSyncReconfig(bool vsync);
    /// The devices were deleted and built again.
    virtual void OnHIDReconfig();

protected:
    ReconfigObserver() = default;
    ReconfigObserver(ReconfigObserver const &) = default;
    ReconfigObserver &operator=(ReconfigObserver const &) = default;
};

} // namespace quillmarsh

#endif
