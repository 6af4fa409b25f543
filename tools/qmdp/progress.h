// Shows the progress of long work on a terminal.
#ifndef QUILLMARSH_TOOLS_QMDP_PROGRESS_H
#define QUILLMARSH_TOOLS_QMDP_PROGRESS_H

#include <quillmarsh/platform/types.h>

#include <chrono>
#include <cstdint>
#include <mutex>

namespace quillmarsh::tools
{

/// Shows a line on a terminal and removes it at the end: the step of the work and, where that can be told, a bar, how
/// much is done and how long the rest will take. Shows nothing if the output is redirected. Any thread.
class Progress : NoCopy
{
public:
    Progress();
    ~Progress();

    /// Begins a step of the work.
    void Begin(string const &step);
    /// Reports how much of the step is done. The line changes a few times per second. `unit` is the name of what is
    /// counted, such as "files"; null for counts that nobody wants to read.
    void Update(std::uint64_t done, std::uint64_t total, char const *unit);
    /// Removes the line of the present object, if there is one, for other output. The next report shows it again.
    static void HideShown();

private:
    using Clock = std::chrono::steady_clock;

    void Show(string const &text);
    string Describe(std::uint64_t done, std::uint64_t total, char const *unit, Clock::time_point now) const;

    bool const shows_;
    std::mutex mutex_;
    string step_;
    Clock::time_point begin_;
    Clock::time_point nextTime_;
};

} // namespace quillmarsh::tools

#endif
