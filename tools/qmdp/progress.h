// Shows the progress of long work on a terminal.
#ifndef QUILLMARSH_TOOLS_QMDP_PROGRESS_H
#define QUILLMARSH_TOOLS_QMDP_PROGRESS_H

#include <quillmarsh/platform/types.h>

#include <chrono>
#include <cstdint>

namespace quillmarsh::tools
{

/// Shows a line on a terminal and removes it at the end. Shows nothing if the output is redirected.
class Progress : NoCopy
{
public:
    Progress();
    ~Progress();

    /// Begins a step of the work.
    void Begin(string const &step);
    /// Reports how much of the step is done. The line changes a few times per second.
    void Update(std::uint64_t done, std::uint64_t total);

private:
    void Show(string const &text);

    bool shows_;
    string step_;
    std::chrono::steady_clock::time_point nextTime_;
};

} // namespace quillmarsh::tools

#endif
