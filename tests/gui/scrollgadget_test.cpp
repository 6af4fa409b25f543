#include <quillmarsh/gui/scrollgadget.h>

#include <gtest/gtest.h>

#include <limits>

namespace quillmarsh
{
namespace
{

ScrollGadget MakeGadget(unsigned int total, unsigned int visible, unsigned int bar)
{
    ScrollGadget gadget;
    gadget.SetBarLength(bar);
    gadget.EnableMaxPixelsPerStep(false);
    gadget.SetTotalSize(total);
    gadget.SetVisibleSize(visible);
    return gadget;
}

TEST(ScrollGadget, KeepsThePositionInside)
{
    ScrollGadget gadget = MakeGadget(100, 30, 50);
    EXPECT_EQ(gadget.GetMaxPosition(), 70u);
    gadget.SetPosition(-5);
    EXPECT_EQ(gadget.GetPosition(), 0u);
    gadget.OffsetPosition(60);
    EXPECT_EQ(gadget.GetLastVisiblePosition(), 89u);
    gadget.OffsetPosition(std::numeric_limits<int>::max());
    EXPECT_EQ(gadget.GetPosition(), 70u);
    EXPECT_TRUE(gadget.IsPositionAtMaximum());
    gadget.OffsetPosition(std::numeric_limits<int>::min());
    EXPECT_EQ(gadget.GetPosition(), 0u);
    gadget.SetPositionToMax();
    gadget.SetTotalSize(40);
    EXPECT_EQ(gadget.GetPosition(), 10u);
    gadget.SetVisibleSize(41);
    EXPECT_EQ(gadget.GetPosition(), 0u);
    EXPECT_FALSE(gadget.IsVisibleLessThanTotal());
    EXPECT_EQ(gadget.GetLastVisiblePosition(), 39u);
    gadget.SetTotalSize(0);
    EXPECT_EQ(gadget.GetLastVisiblePosition(), 0u);
}

TEST(ScrollGadget, PlacesTheThumb)
{
    ScrollGadget gadget = MakeGadget(20, 20, 50);
    EXPECT_EQ(std::pair(gadget.GetThumbLength(), gadget.GetThumbOffset()), std::pair(50u, 0u));
    gadget = MakeGadget(100, 30, 50);
    EXPECT_EQ(gadget.GetThumbLength(), 15u);
    gadget.SetPosition(35);
    EXPECT_EQ(gadget.GetThumbOffset(), 17u);
    gadget.SetPositionToMax();
    EXPECT_EQ(gadget.GetThumbOffset(), 35u);

    gadget.SetMinThumbLength(20);
    gadget.UpdateThumbParameters();
    EXPECT_EQ(std::pair(gadget.GetThumbLength(), gadget.GetThumbOffset()), std::pair(20u, 30u));
    // A thumb that does not fit stays at the beginning.
    gadget.SetMinThumbLength(60);
    gadget.UpdateThumbParameters();
    EXPECT_EQ(gadget.GetThumbOffset(), 0u);
}

TEST(ScrollGadget, LimitsTheWayOfAStep)
{
    // Three hidden steps of at most 4 pixels leave 12 pixels to move in.
    ScrollGadget gadget = MakeGadget(10, 7, 100);
    gadget.SetMaxPixelsPerStep(4);
    gadget.EnableMaxPixelsPerStep(true);
    gadget.UpdateThumbParameters();
    EXPECT_EQ(gadget.GetThumbLength(), 88u);
    gadget.OffsetPosition(1);
    EXPECT_EQ(gadget.GetThumbOffset(), 4u);
    // Where a step is shorter anyway, nothing changes.
    gadget.SetMaxPixelsPerStep(11);
    gadget.UpdateThumbParameters();
    EXPECT_EQ(gadget.GetThumbLength(), 70u);

    constexpr unsigned int s_huge = std::numeric_limits<unsigned int>::max();
    gadget = MakeGadget(s_huge, s_huge / 2, s_huge);
    gadget.SetMaxPixelsPerStep(s_huge);
    gadget.EnableMaxPixelsPerStep(true);
    gadget.SetPositionToMax();
    EXPECT_EQ(gadget.GetThumbLength(), s_huge / 2);
    EXPECT_EQ(gadget.GetThumbOffset() + gadget.GetThumbLength(), s_huge);
}

} // namespace
} // namespace quillmarsh
