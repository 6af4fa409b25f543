// Observer that hears of each finished frame.
#ifndef QUILLMARSH_FRAMEWORK_FRAMEOBSERVER_H
#define QUILLMARSH_FRAMEWORK_FRAMEOBSERVER_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh
{

/// Hears of each finished frame once it was added by Kernel::AddFrameObserver. Frame thread only.
///
/// The kernel must outlive it.
class QUILLMARSH_API FrameObserver
{
public:
    /// Takes the observer from the kernel, whether it was added or not.
    virtual ~FrameObserver();

    /// A frame has ended. `frameTime` is its duration in seconds. Who sets `removeObserver` is dropped after the call.
    virtual void OnFrame(bool &removeObserver, unsigned int frameNumber, double frameTime) = 0;

protected:
    FrameObserver() = default;
    FrameObserver(FrameObserver const &) = default;
    FrameObserver &operator=(FrameObserver const &) = default;
};

} // namespace quillmarsh

#endif
