#include <quillmarsh/basetools/heaptracked.h>
#include <quillmarsh/basetools/memory.h>

#include "tests/support/failures.h"
#include "tests/support/scripted_dialogs.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <thread>

namespace quillmarsh
{
namespace
{

constexpr std::size_t s_tooMuch = std::numeric_limits<std::ptrdiff_t>::max() - 100;

string MessageOf(auto allocate)
{
    return tests::MessageOf<NoMemoryException>(allocate, "source/basetools/memory.cpp");
}

void OtherHandler()
{
    throw std::bad_alloc();
}

TEST(NewThrowsExceptionSentry, FailedAllocationThrowsWhileItLives)
{
    if (QUILLMARSH_TEST_SANITIZED)
        GTEST_SKIP() << "the sanitizer ends the process";
    auto const allocate = [] { return ::operator new(s_tooMuch); };
    auto const allocateArray = [] { return ::operator new[](s_tooMuch); };
#if defined(_WIN32)
    // On Windows, a module's allocation functions serve that module only, so the size is not known.
    string const expected = "Failed to allocate an unknown number of bytes";
#else
    string const expected = "Failed to allocate " + std::to_string(s_tooMuch) + " bytes";
#endif
    EXPECT_THROW(allocate(), std::bad_alloc);
    {
        NewThrowsExceptionSentry const sentry;
        EXPECT_EQ(MessageOf(allocate), expected);
        EXPECT_EQ(MessageOf(allocateArray), expected);
        std::thread([&] { EXPECT_EQ(MessageOf(allocate), expected); }).join();
        EXPECT_EQ(::operator new(s_tooMuch, std::nothrow), nullptr);
        EXPECT_EQ(MessageOf([] { return ::operator new(s_tooMuch, std::align_val_t(64)); }), expected);
        EXPECT_EQ(MessageOf([] { return ::operator new[](s_tooMuch, std::align_val_t(4096)); }), expected);
        EXPECT_EQ(::operator new(s_tooMuch, std::align_val_t(64), std::nothrow), nullptr);
    }
    EXPECT_THROW(allocate(), std::bad_alloc);
}

TEST(NewThrowsExceptionSentry, AlignedBlocksAreAlignedAndFreed)
{
    for (std::size_t const alignment : {1, 8, 32, 64, 4096})
    {
        for (std::size_t const size : {0, 1, 100})
        {
            void *const block = ::operator new(size, std::align_val_t(alignment));
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % alignment, 0u);
            ::operator delete(block, std::align_val_t(alignment));
            ::operator delete[](::operator new[](size, std::align_val_t(alignment)), std::align_val_t(alignment));
        }
    }
}

TEST(NewThrowsExceptionSentry, RestoresThePreviousHandlerAndVerifiesItsOwn)
{
    std::new_handler const original = std::set_new_handler(&OtherHandler);
    {
        NewThrowsExceptionSentry const outer;
        NewThrowsExceptionSentry const inner;
        EXPECT_NE(std::get_new_handler(), &OtherHandler);
    }
    EXPECT_EQ(std::get_new_handler(), &OtherHandler);
    std::set_new_handler(original);

    tests::ScriptedDialogs dialogs;
    {
        NewThrowsExceptionSentry const sentry;
        std::set_new_handler(&OtherHandler);
    }
    EXPECT_EQ(std::get_new_handler(), original);
    EXPECT_EQ(dialogs.TakeTexts(), std::vector<string>{"quillmarsh-new-handler was unhooked by non-quillmarsh code."});
}

/// A buffer that records the requests.
class RecordingBuffer : public AdaptiveBufferBase
{
public:
    /// Runs one cycle for each demand.
    void Cycle(std::initializer_list<unsigned int> demands)
    {
        for (unsigned int const demand : demands)
        {
            BeginReserveCycle();
            ReserveSpace(demand / 2);
            ReserveSpace(demand);
            ReserveSpace(0);
            EndReserveCycle();
        }
    }

    string Take() { return std::exchange(calls_, string()); }

protected:
    void AllocateBuffer(unsigned int size) override { calls_ += "a" + std::to_string(size); }
    void FreeBuffer() override { calls_ += "f"; }

private:
    string calls_;
};

TEST(AdaptiveBuffer, GrowsAtOnceAndShrinksAfterStableCycles)
{
    RecordingBuffer buffer;
    buffer.ReserveSpace(0);
    EXPECT_EQ(buffer.Take(), "");
    buffer.SetMinStableCycles(3);
    buffer.Cycle({100, 10, 10, 10});
    EXPECT_EQ(buffer.Take(), "fa50fa100");
    buffer.Cycle({10});
    EXPECT_EQ(buffer.Take(), "fa10");
    buffer.Cycle({20, 12, 12, 11, 12, 12, 12, 0, 0, 0, 0, 0});
    EXPECT_EQ(buffer.GetSize(), 20u);
}

TEST(AdaptiveBuffer, MinimumHoldsAndKeepsTheSizeOfASpike)
{
    RecordingBuffer buffer;
    buffer.SetMinStableCycles(3);
    buffer.SetMinSize(20);
    EXPECT_EQ(buffer.Take(), "fa20");
    buffer.Cycle({100, 10, 10, 10, 10, 10, 20, 20, 20, 20, 20, 30, 30, 30});
    buffer.SetMinSize(15);
    buffer.Cycle({30});
    EXPECT_EQ(buffer.GetSize(), 100u);
    buffer.Cycle({30, 30});
    EXPECT_EQ(buffer.GetSize(), 30u);
    buffer.Take();
    buffer.ForceMinSize();
    buffer.SetMinSize(0);
    buffer.ForceMinSize();
    EXPECT_EQ(buffer.Take(), "fa15f");
}

struct OtherBase
{
    virtual ~OtherBase() = default;
    int value = 0;
};

class Tracked : public OtherBase, public HeapTracked
{
};

TEST(HeapTracked, KnowsNewFromEverythingElse)
{
    Tracked onStack;
    EXPECT_FALSE(onStack.IsOnHeap());
    AutoPtr<Tracked> const onHeap(new Tracked);
    HeapTracked const &base = *onHeap;
    ASSERT_NE(static_cast<void const *>(&base), static_cast<void const *>(onHeap.get()));
    EXPECT_TRUE(base.IsOnHeap());
    auto const inside = std::make_unique<std::pair<int, Tracked>>();
    EXPECT_FALSE(inside->second.IsOnHeap());

    void const *const address = onHeap.get();
    AutoPtr<OtherBase>(new Tracked).reset();
    AutoPtr<Tracked> const next(new Tracked);
    EXPECT_TRUE(next->IsOnHeap() && onHeap->IsOnHeap() && address != next.get());
}

TEST(HeapTracked, ThreadsMakeAndDeleteAtOneTime)
{
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back(
            []
            {
                for (int round = 0; round < 500; ++round)
                    EXPECT_TRUE(AutoPtr<Tracked>(new Tracked)->IsOnHeap());
            });
    for (std::thread &thread : threads)
        thread.join();
}

TEST(HeapTracked, RefusesArrays)
{
    tests::ScriptedDialogs dialogs;
    EXPECT_EQ(new Tracked[2], nullptr);
    EXPECT_EQ(dialogs.TakeTexts(), std::vector<string>{"Invalid call: calling new[] for heap-tracked class."});
    HeapTracked::operator delete[](nullptr);
    EXPECT_EQ(dialogs.TakeTexts(), std::vector<string>{"Invalid call: calling delete[] for heap-tracked class."});
}

} // namespace
} // namespace quillmarsh
