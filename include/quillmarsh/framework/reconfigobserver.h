// Observer that hears of reconfigurations.
#ifndef QUILLMARSH_FRAMEWORK_RECONFIGOBSERVER_H
#define QUILLMARSH_FRAMEWORK_RECONFIGOBSERVER_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh
{

/// Hears of reconfigurations once it was added by Kernel::AddReconfigObserver. Frame thread only.
///
/// The kernel must outlive it.
class QUILLMARSH_API ReconfigObserver
{
public:
    /// Takes the observer from the kernel, whether it was added or not.
    virtual ~ReconfigObserver();

    /// The video stack was torn down and built again.
    virtual void OnVideoReconfig();
    /// Waiting for the vertical synchronisation went on or off without a reconfiguration.
    virtual void OnVSyncReconfig(bool vsync);
    /// The devices were torn down and built again.
    virtual void OnHIDReconfig();

protected:
    ReconfigObserver() = default;
    ReconfigObserver(ReconfigObserver const &) = default;
    ReconfigObserver &operator=(ReconfigObserver const &) = default;
};

} // namespace quillmarsh

#endif
