#include "benchmarks/support/allocation_counter.h"

#include <quillmarsh/gui/gui_component.h>
#include <quillmarsh/gui/gui_layouters.h>
#include <quillmarsh/gui/gui_manager.h>

#include <benchmark/benchmark.h>

namespace quillmarsh::benchmarks
{
namespace
{

/// Updates a top-level panel whose layouter places its children in one line: sizes, layouts, absolute positions, caches.
void UpdateGeometry(benchmark::State &state)
{
    gui::Manager manager;
    auto &panel = *new gui::Component;
    auto &layouter = *new gui::layouters::ArrayLayouter(&panel);
    // The panel and the layouter are two of the components.
    for (int i = 2; i < state.range(0); ++i)
    {
        auto &child = *new gui::Component;
        child.SetSize(80, 20);
        child.AttachTo(layouter);
    }
    RunCounted(state, [&] { panel.UpdateGeometry(true); });
}
BENCHMARK(UpdateGeometry)->Name("gui/update_geometry")->Arg(100);

} // namespace
} // namespace quillmarsh::benchmarks
