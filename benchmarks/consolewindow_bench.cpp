#include <quillmarsh/gui/consoleoutputwindow.h>
#include <quillmarsh/platform/desktopevents.h>
#include <quillmarsh/platform/displaymodes.h>

#include "benchmarks/support/allocation_counter.h"

#include <benchmark/benchmark.h>

namespace quillmarsh::benchmarks
{
namespace
{

/// Size of a window with room for 50 lines.
constexpr unsigned int s_width = 900;
constexpr unsigned int s_height = 1080;

/// Paints a window with 50 visible lines and shows it on a headless desktop.
void Repaint(benchmark::State &state, ConsoleOutputBuffer &buffer, int column)
{
    string reason;
    if (!platform::UseHeadlessDesktop(1600, 1200, reason))
        return state.SkipWithError(reason.c_str());
    {
        ConsoleOutputWindow window;
        window.SetTitleText("Benchmark");
        window.SetStatusText("50 lines");
        window.SetTextSource(&buffer);
        window.SetSize(s_width, s_height);
        window.Show();
        window.OnMouseWheel(-120 * column, {}, 8);
        platform::PumpDesktop();
        RunCounted(state, [&] { window.OnPaint(); });
        state.counters["lines"] = static_cast<double>(buffer.GetNumLines() - window.GetFirstVisibleLine());
    }
    platform::LeaveHeadlessDesktop();
}

void RepaintShortLines(benchmark::State &state)
{
    auto const numLines = static_cast<unsigned int>(state.range(0));
    ConsoleOutputBuffer buffer(numLines);
    for (unsigned int i = 0; i < numLines; ++i)
        buffer.Append("frame " + std::to_string(i) + ": " + string(i % 60, '.') + " as expected\n", i / 3 % 7);
    Repaint(state, buffer, 0);
}
BENCHMARK(RepaintShortLines)->Name("consolewindow/repaint")->Arg(300)->Arg(100000)->Unit(benchmark::kMicrosecond);

/// Lines of 200000 characters, some of them not ASCII, in the middle of which the window stands.
void RepaintLongLines(benchmark::State &state)
{
    ConsoleOutputBuffer buffer(60);
    for (unsigned int i = 0; i < 60; ++i)
    {
        string line;
        while (line.size() < 200000)
            line += "value \u00b1 0.25 \u00b5m of " + std::to_string(line.size()) + "; ";
        buffer.Append(line + "\n", i % 7);
    }
    Repaint(state, buffer, 40000);
}
BENCHMARK(RepaintLongLines)->Name("consolewindow/repaint_long_lines")->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace quillmarsh::benchmarks
