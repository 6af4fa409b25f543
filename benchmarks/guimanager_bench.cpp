#include "benchmarks/support/allocation_counter.h"
#include "tests/support/gui_desk.h"

#include <benchmark/benchmark.h>

namespace quillmarsh::benchmarks
{
namespace
{

using namespace gui;

/// Desk with two top-level components, one behind the other, that have `numEach` components each: themselves, rows, and
/// nine cells in each row. The pointer rests on the front one, beside its rows.
class CrowdedDesk : public tests::GuiDesk
{
public:
    explicit CrowdedDesk(std::int64_t numEach)
    {
        for (int i = 0; i < 2; ++i)
        {
            Component &top = Add({0, 0}, {600, 400}, nullptr);
            Component *row = nullptr;
            for (std::int64_t rest = numEach - 1; rest > 0; --rest)
            {
                if (row == nullptr || row->GetNumChildren() == 9)
                    row = &Add({0, 100}, {200, 5}, &top);
                else
                    Add({0, 0}, {5, 5}, row);
            }
        }
        MoveTo(300, 50);
        Frame();
    }

private:
    static Component &Add(vec2 const &position, vec2 const &size, Component *parent)
    {
        auto *const component = new Component;
        component->SetPosition(position);
        component->SetSize(size);
        if (parent != nullptr)
            component->AttachTo(*parent);
        return *component;
    }
};

/// Restacks the two top-level components, and rebuilds all queues.
void RebuildQueues(benchmark::State &state)
{
    CrowdedDesk desk(state.range(0) / 2);
    RunCounted(state,
               [&]
               {
                   desk.manager.BringToFront(*desk.manager.GetTopLevelComponent(0));
                   desk.manager.SyncObjectStates();
               });
}
BENCHMARK(RebuildQueues)->Name("guimanager/rebuild_queues")->Arg(10000);

/// Moves the pointer to and fro: in each frame, the components of the front top-level component are walked, and only
/// that one is hit.
void HitTestCrowd(benchmark::State &state)
{
    CrowdedDesk desk(state.range(0));
    int step = 0;
    RunCounted(state, [&] { desk.MoveTo(300 + (++step & 1), 50); });
}
BENCHMARK(HitTestCrowd)->Name("guimanager/hit_test")->Arg(1000)->Arg(10000);

/// Runs a frame in which nothing has changed and the pointer rests.
void IdleFrame(benchmark::State &state)
{
    CrowdedDesk desk(state.range(0));
    RunCounted(state, [&] { desk.Frame(); });
}
BENCHMARK(IdleFrame)->Name("guimanager/idle_frame")->Arg(10)->Arg(10000);

/// Makes a top-level component with 10,000 children, synchronises, and deletes it.
void MakeAndDelete(benchmark::State &state)
{
    tests::GuiDesk desk;
    RunCounted(state,
               [&]
               {
                   auto *const top = new Component;
                   for (std::int64_t i = 0; i < state.range(0); ++i)
                       (new Component)->AttachTo(*top);
                   desk.manager.SyncObjectStates();
                   delete top;
               });
}
BENCHMARK(MakeAndDelete)->Name("guimanager/make_and_delete")->Arg(1000)->Arg(10000);

} // namespace
} // namespace quillmarsh::benchmarks
