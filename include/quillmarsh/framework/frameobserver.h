// Observer that hears of each finished frame.
#ifndef QUILLMARSH_FRAMEWORK_FRAMEOBSERVER_H
#define QUILLMARSH_FRAMEWORK_FRAMEOBSERVER_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh
{

/// Is told of each finished frame, after Kernel::AddFrameObserver(). Frame thread only.
///
/// The kernel must outlive it.
class QUILLMARSH_API FrameObserver
{
public:
    /// Removes the observer from the kernel; harmless if it was never added.
    virtual ~FrameObserver();

    /// A frame has ended. `frameTime` is its duration in seconds. If the observer sets `removeObserver`, the kernel
    /// removes it after the call.
    virtual void OnFrame(bool &removeObserver, unsigned int frameNumber, double frameTime) = 0;

protected:
    FrameObserver() = default;
    FrameObserver(FrameObserver const &) = default;
    FrameObserver &operator=(FrameObserver const &) = default;
};

} // namespace quillmarsh

#endif
