// Long work on a thread, with progress and a way to stop it.
#ifndef QUILLMARSH_PLUGINS_VIEWER_MODEL_FILES_JOBS_H
#define QUILLMARSH_PLUGINS_VIEWER_MODEL_FILES_JOBS_H

#include <quillmarsh/platform/types.h>

#include <functional>
#include <vector>

namespace viewer
{

using quillmarsh::string;

/// Runs one job after the other on a thread. Frame thread only, but for the work itself.
class Jobs : quillmarsh::NoCopy
{
public:
    /// Takes the part that is done, 0 to 1, or a negative number where that is not known. False when the job shall stop.
    using Progress = std::function<bool(double)>;
    /// Called on the frame thread, by Poll(), after the work.
    using Finish = std::function<void()>;
    /// Does the work on the job's thread. Returns what to do afterwards on the frame thread; empty if nothing, and when it
    /// obeyed a stop. Work that was finished in spite of a stop counts as finished. An exception is the job's failure.
    using Work = std::function<Finish(Progress const &progress)>;
    /// Called on the frame thread, by Poll(): with the reason if the job has failed, s_szStopped if it was stopped.
    using Failed = std::function<void(string const &reason)>;
    static constexpr char s_szStopped[] = "stopped";

    /// State of a job.
    struct Job
    {
        unsigned int number;
        string title;
        /// Part that is done, 0 to 1; negative if it is not known.
        double part;
        bool isRunning;
    };

    /// `wake` is called on the thread when there is something for Poll(), and a few times each second while a job
    /// progresses.
    explicit Jobs(std::function<void()> wake);
    /// Stops all jobs, and waits for the one that runs to obey.
    ~Jobs();

    /// Returns the number of the job, from 1 on.
    unsigned int Start(string const &title, Work work, Failed failed);
    /// Stops a job; false if there is none of this number. A job that has not begun never begins.
    bool Stop(unsigned int number);
    void StopAll();
    /// Calls what finished jobs left to do. Never waits.
    void Poll();
    /// Returns the jobs that run or wait, the oldest first.
    std::vector<Job> List() const;

private:
    struct State;
    quillmarsh::AutoPtr<State> state_;
};

} // namespace viewer

#endif
