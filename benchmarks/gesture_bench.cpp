#include <quillmarsh/devices/staticgestures.h>

#include "benchmarks/support/allocation_counter.h"

#include <benchmark/benchmark.h>

namespace quillmarsh::benchmarks
{
namespace
{

using namespace static_gestures;

class BenchGlove : public Glove
{
public:
    void Show(eGloveSensor sensor, float flexure)
    {
        SetFlexure(sensor, flexure);
        PostSampleUpdate();
    }
};

/// Lists all active gestures of a hand whose fingers are half bent, stretched and bent in turn. The case measures the
/// walk through all 21 standard gestures.
void ListActiveGestures(benchmark::State &state)
{
    constexpr eGloveSensor joints[] = {ThumbJointInner, IndexJointInner, MiddleJointInner, RingJointInner,
                                       PinkyJointInner};
    constexpr unsigned int numHands = 27;
    static BenchGlove gloves[numHands];
    for (unsigned int hand = 0; hand < numHands; ++hand)
    {
        for (eGloveSensor const joint : joints)
        {
            gloves[hand].Show(joint, 0.0f);
            gloves[hand].Show(joint, 1.0f);
        }
        gloves[hand].Show(IndexJointInner, 0.5f * static_cast<float>(hand % 3));
        gloves[hand].Show(MiddleJointInner, 0.5f * static_cast<float>(hand / 3 % 3));
        gloves[hand].Show(PinkyJointInner, 0.5f * static_cast<float>(hand / 9));
    }
    GestureAnalyzer const analyzer;
    unsigned int hand = 0;
    RunCounted(state,
               [&]
               {
                   Glove const &glove = gloves[hand];
                   hand = hand + 1 == numHands ? 0 : hand + 1;
                   for (Gesture const *gesture = analyzer.GetFirstActiveGesture(glove); gesture;
                        gesture = analyzer.GetNextActiveGesture(glove))
                       benchmark::DoNotOptimize(gesture);
               });
}
BENCHMARK(ListActiveGestures)->Name("gestures/list_active");

} // namespace
} // namespace quillmarsh::benchmarks
