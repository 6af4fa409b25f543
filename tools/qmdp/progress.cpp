#include "progress.h"

#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/platform/program.h>

#include <iostream>

namespace quillmarsh::tools
{

using platform::eStandardStream;

// Redirected output most likely means that a script started this run.
Progress::Progress()
    : shows_(platform::IsTerminal(eStandardStream::e_output) &&
             platform::TakesEscapeSequences(eStandardStream::e_error))
{
}

Progress::~Progress()
{
    Show("");
}

void Progress::Begin(string const &step)
{
    step_ = step;
    Show(step);
}

void Progress::Update(std::uint64_t done, std::uint64_t total)
{
    auto const now = std::chrono::steady_clock::now();
    if (!shows_ || now < nextTime_)
        return;
    nextTime_ = now + std::chrono::milliseconds(200);
    Show(step_ + ' ' + MakeString(done * 100 / total) + " %");
}

void Progress::Show(string const &text)
{
    if (shows_)
        std::cerr << '\r' + text + "\x1B[K" << std::flush;
}

} // namespace quillmarsh::tools
