#include "progress.h"

#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/platform/program.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <iostream>

namespace quillmarsh::tools
{
namespace
{

constexpr std::chrono::milliseconds s_interval(200);
/// Before this time, the rest cannot be estimated.
constexpr std::chrono::seconds s_firstEstimate(1);

/// A program shows one progress at a time. It outlives the threads that print meanwhile.
std::atomic<Progress *> s_shown = nullptr;

string MakeBar(std::uint64_t done, std::uint64_t total)
{
    constexpr unsigned int length = 20;
    string bar(static_cast<std::size_t>(static_cast<double>(done) / static_cast<double>(total) * length), '#');
    PadToLength(bar, length, '-');
    return '[' + bar + ']';
}

/// Returns minutes and seconds.
string DescribeTime(double seconds)
{
    auto const whole = std::lround(seconds);
    return MakeString(whole / 60) + (whole % 60 < 10 ? ":0" : ":") + MakeString(whole % 60);
}

} // namespace

using platform::eStandardStream;

// Redirected output most likely means that a script started this run.
Progress::Progress()
    : shows_(platform::IsTerminal(eStandardStream::e_output) &&
             platform::TakesEscapeSequences(eStandardStream::e_error))
{
    s_shown = this;
}

Progress::~Progress()
{
    s_shown = nullptr;
    Show("");
}

void Progress::Begin(string const &step)
{
    std::lock_guard const lock(mutex_);
    step_ = step;
    begin_ = Clock::now();
    nextTime_ = begin_ + s_interval;
    Show(step);
}

void Progress::Update(std::uint64_t done, std::uint64_t total, char const *unit)
{
    std::lock_guard const lock(mutex_);
    Clock::time_point const now = Clock::now();
    if (!shows_ || now < nextTime_ || total == 0)
        return;
    nextTime_ = now + s_interval;
    Show(Describe(std::min(done, total), total, unit, now));
}

void Progress::HideShown()
{
    if (Progress *const shown = s_shown)
    {
        std::lock_guard const lock(shown->mutex_);
        shown->Show("");
    }
}

string Progress::Describe(std::uint64_t done, std::uint64_t total, char const *unit, Clock::time_point now) const
{
    double const ratio = static_cast<double>(done) / static_cast<double>(total);
    string text = step_ + ' ' + MakeBar(done, total) + ' ' + MakeString(static_cast<unsigned int>(ratio * 100)) + " %";
    if (unit)
        text += ", " + MakeString(done) + " of " + MakeString(total) + ' ' + unit;
    if (done > 0 && now - begin_ >= s_firstEstimate)
    {
        double const passed = std::chrono::duration<double>(now - begin_).count();
        text += ", " + DescribeTime(passed / ratio - passed) + " left";
    }
    // A line that wraps could not be removed.
    unsigned int const width = platform::GetTerminalWidth(eStandardStream::e_error);
    return width > 1 && text.size() >= width ? text.substr(0, width - 1) : text;
}

void Progress::Show(string const &text)
{
    if (shows_)
        std::cerr << '\r' + text + "\x1B[K" << std::flush;
}

} // namespace quillmarsh::tools
