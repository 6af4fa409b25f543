// What a long piece of work is doing, shown where somebody watches.
#ifndef QUILLMARSH_TOOLS_QMDP_PROGRESS_H
#define QUILLMARSH_TOOLS_QMDP_PROGRESS_H

#include <quillmarsh/platform/types.h>

#include <chrono>
#include <cstdint>

namespace quillmarsh::tools
{

/// Shows a line on a terminal, which goes when this object does; nothing anywhere else.
class Progress : NoCopy
{
public:
    Progress();
    ~Progress();

    /// Begins a step of the work.
    void Begin(string const &step);
    /// How much of the step is done; shown a few times a second.
    void Update(std::uint64_t done, std::uint64_t total);

private:
    void Show(string const &text);

    bool shows_;
    string step_;
    std::chrono::steady_clock::time_point nextTime_;
};

} // namespace quillmarsh::tools

#endif
