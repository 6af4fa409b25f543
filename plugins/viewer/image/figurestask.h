// Figures of images, computed beside everything else.
#ifndef QUILLMARSH_PLUGINS_VIEWER_IMAGE_FIGURESTASK_H
#define QUILLMARSH_PLUGINS_VIEWER_IMAGE_FIGURESTASK_H

#include <viewer_model/files/jobs.h>
#include <viewer_model/images/figures.h>

#include <memory>
#include <optional>

namespace viewer
{

/// Computes figures on a thread of its own, so that they do not wait for long work. The last request counts. Frame
/// thread only.
class FiguresTask : quillmarsh::NoCopy
{
public:
    /// Nothing when `progress` says stop. On the thread.
    using Compute = std::function<std::optional<Figures>(Jobs::Progress const &progress)>;

    /// `wake` is called on the thread when there is something for Poll().
    explicit FiguresTask(std::function<void()> wake) : jobs_(std::make_unique<Jobs>(std::move(wake))) {}

    /// Stops the last request, and begins another one. `done` is called by Poll().
    void Start(Compute compute, std::function<void(Figures const &)> done);
    /// Forgets the last request.
    void Stop();
    /// Stops the thread; nothing may be started any more.
    void Close();
    void Poll() { jobs_->Poll(); }
    bool IsBusy() const { return number_ != 0; }

private:
    std::unique_ptr<Jobs> jobs_;
    /// Of the job; 0 without one.
    unsigned int number_ = 0;
    unsigned int request_ = 0;
};

} // namespace viewer

#endif
