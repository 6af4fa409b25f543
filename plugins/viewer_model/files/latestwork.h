// Work on a thread where only the newest wish counts.
#ifndef QUILLMARSH_PLUGINS_VIEWER_MODEL_FILES_LATESTWORK_H
#define QUILLMARSH_PLUGINS_VIEWER_MODEL_FILES_LATESTWORK_H

#include "jobs.h"

namespace viewer
{

/// Computes pictures that follow the mouse. There is one wish for each purpose: a newer one takes the place of one that
/// waits. Work that runs is not disturbed by a newer wish, so that a movement shows results on its way. Frame thread
/// only, but for the work itself.
class LatestWork : quillmarsh::NoCopy
{
public:
    /// `wake` is called on the thread when there is something for Poll().
    explicit LatestWork(std::function<void()> wake);
    /// Drops all wishes, and waits for the work that runs to obey.
    ~LatestWork();

    /// Starts the work once those ahead of it are done. A failure is told by `failed`, as in Jobs.
    void Wish(unsigned int purpose, Jobs::Work work, Jobs::Failed failed);
    /// Forgets the wish for a purpose, and stops its work: neither finish nor failure follows.
    void Drop(unsigned int purpose);
    /// True from a wish until Poll() has finished it.
    bool IsBusy(unsigned int purpose) const;
    /// Finishes what is done. Never waits.
    void Poll();

private:
    struct State;
    quillmarsh::AutoPtr<State> state_;
};

} // namespace viewer

#endif
