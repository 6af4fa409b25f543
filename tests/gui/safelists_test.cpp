#include "source/gui/manager/safelists.h"

#include "tests/support/gui_desk.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace quillmarsh
{
namespace
{

using namespace gui;

/// Changes a list at random while walks run in each other, and compares with plain vectors.
class ListChanger
{
public:
    explicit ListChanger(unsigned int seed) : random_(seed)
    {
        for (int i = 0; i < 12; ++i)
            members_.push_back(&desk_.Add("", vec2::ZERO, vec2::ONE));
    }
    ~ListChanger() { list_.Clear(); }

    void Walk(int depth)
    {
        std::vector<Component *> const atBegin = model_;
        std::size_t const mark = erased_.size();
        std::vector<Component *> seen;
        list_.ForEach(
            [&](Component &component)
            {
                EXPECT_EQ(std::count(seen.begin(), seen.end(), &component), 0);
                EXPECT_EQ(std::count(model_.begin(), model_.end(), &component), 1);
                EXPECT_EQ(std::count(atBegin.begin(), atBegin.end(), &component), 1);
                seen.push_back(&component);
                Change();
                if (depth > 0 && random_() % 3 == 0)
                    Walk(depth - 1);
            });
        std::vector<Component *> const gone(erased_.begin() + static_cast<std::ptrdiff_t>(mark), erased_.end());
        for (Component *component : atBegin)
        {
            bool const wasErased = std::count(gone.begin(), gone.end(), component) != 0;
            EXPECT_TRUE(wasErased || std::count(seen.begin(), seen.end(), component) == 1);
        }
    }
    void Check()
    {
        ASSERT_EQ(list_.GetSize(), model_.size());
        for (unsigned int i = 0; i < model_.size(); ++i)
            ASSERT_EQ(list_.Get(i), model_[i]);
    }
    void Change()
    {
        Component *const member = members_[random_() % members_.size()];
        auto const place = std::find(model_.begin(), model_.end(), member);
        ASSERT_EQ(list_.Contains(*member), place != model_.end());
        auto const kind = random_() % 5;
        if (place == model_.end())
        {
            bool const atFront = kind == 0;
            EXPECT_TRUE(atFront ? list_.InsertAtFront(*member) : list_.Append(*member));
            model_.insert(atFront ? model_.begin() : model_.end(), member);
        }
        else if (kind < 2)
        {
            EXPECT_TRUE(list_.Erase(*member));
            model_.erase(place);
            erased_.push_back(member);
        }
        else if (kind == 2)
        {
            list_.MoveToFront(*member);
            std::rotate(model_.begin(), place, place + 1);
        }
        else if (kind == 3)
        {
            list_.MoveToEnd(*member);
            std::rotate(place, place + 1, model_.end());
        }
        else
        {
            list_.Swap(*member, *model_.front());
            std::iter_swap(place, model_.begin());
        }
    }

private:
    tests::GuiDesk desk_;
    std::mt19937 random_;
    manager_parts::SafeList<Component> list_{manager_parts::e_list_time};
    std::vector<Component *> members_;
    std::vector<Component *> model_;
    std::vector<Component *> erased_;
};

TEST(GuiSafeList, StaysWholeUnderWalks)
{
    for (unsigned int seed = 0; seed < 40; ++seed)
    {
        SCOPED_TRACE(seed);
        auto const changer = std::make_unique<ListChanger>(seed);
        for (int round = 0; round < 40; ++round)
        {
            changer->Change();
            changer->Walk(2);
            changer->Check();
        }
    }
}

} // namespace
} // namespace quillmarsh
