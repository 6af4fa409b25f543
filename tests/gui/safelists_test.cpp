#include "source/gui/manager/safelists.h"

#include <gtest/gtest.h>

#include <deque>
#include <random>

namespace quillmarsh
{
namespace
{

using gui::manager_parts::SafeList;

/// Member of a list, without the rest of a component.
class Member : public gui::VideoResourceUser
{
};

/// List under test beside a plain one, and walks that change both.
class ListTwin
{
public:
    explicit ListTwin(unsigned int seed) : random_(seed)
    {
        for (int i = 0; i < 20; ++i)
            Append();
    }

    /// Walks, changes the list at each step and now and then walks within the walk. The model of a walk is a copy of
    /// the list, from which erased members are struck.
    void Walk(bool worksOff, int depth)
    {
        models_.push_back(model_);
        std::size_t const model = models_.size() - 1;
        std::size_t next = 0;
        auto const step = [&](Member &member)
        {
            Member const *const expected = FindNext(model, next);
            ASSERT_EQ(expected, &member);
            if (worksOff)
                Forget(member);
            for (int i = Pick(4); i > 0; --i)
                Change();
            if (depth > 0 && Pick(3) == 0)
                Walk(false, depth - 1);
        };
        if (worksOff)
            list_.WorkOff(step);
        else
            list_.ForEach(step);
        EXPECT_EQ(FindNext(model, next), nullptr);
        models_.pop_back();
        Compare();
    }

private:
    int Pick(int count) { return static_cast<int>(random_() % static_cast<unsigned int>(count)); }
    Member &PickMember() { return *model_[static_cast<std::size_t>(Pick(static_cast<int>(model_.size())))]; }

    Member const *FindNext(std::size_t model, std::size_t &next)
    {
        while (next < models_[model].size())
        {
            Member *const member = models_[model][next++];
            if (member != nullptr && std::find(model_.begin(), model_.end(), member) != model_.end())
                return member;
        }
        return nullptr;
    }
    /// The list has erased the member.
    void Forget(Member &member)
    {
        std::erase(model_, &member);
        for (std::vector<Member *> &model : models_)
            std::replace(model.begin(), model.end(), &member, static_cast<Member *>(nullptr));
    }
    void Append()
    {
        Member &member = members_.emplace_back();
        EXPECT_TRUE(list_.Append(member));
        EXPECT_FALSE(list_.Append(member));
        model_.push_back(&member);
    }
    void Change()
    {
        if (model_.size() < 2)
            return Append();
        Member &member = PickMember();
        Member &other = PickMember();
        auto const place = std::find(model_.begin(), model_.end(), &member);
        auto const otherPlace = std::find(model_.begin(), model_.end(), &other);
        switch (Pick(9))
        {
        case 0:
            Append();
            break;
        case 1:
        case 2:
            EXPECT_TRUE(list_.Erase(member));
            EXPECT_FALSE(list_.Erase(member));
            Forget(member);
            break;
        case 3:
            EXPECT_EQ(list_.IsAhead(member, other), place < otherPlace);
            list_.Swap(member, other);
            std::iter_swap(place, otherPlace);
            break;
        case 4:
            list_.MoveToFront(member);
            std::rotate(model_.begin(), place, place + 1);
            break;
        case 5:
            list_.MoveToEnd(member);
            std::rotate(place, place + 1, model_.end());
            break;
        case 6:
            // Erased and back again at the front: the walks that run do not give it.
            list_.Erase(member);
            Forget(member);
            list_.InsertAtFront(member);
            model_.insert(model_.begin(), &member);
            break;
        case 7:
            // What a rebuild puts back is given.
            list_.BeginRebuild();
            std::reverse(model_.begin(), model_.end());
            for (Member *each : model_)
                list_.AppendRebuilt(*each);
            break;
        default:
            list_.StableSort([](Member const &a, Member const &b) { return &a < &b; });
            std::sort(model_.begin(), model_.end());
            break;
        }
        Compare();
    }
    void Compare()
    {
        // Now and then only, as reading closes the gaps.
        if (Pick(4) != 0)
            return;
        ASSERT_EQ(list_.GetSize(), model_.size());
        for (unsigned int i = 0; i < model_.size(); ++i)
            ASSERT_EQ(list_.Get(i), model_[i]);
        EXPECT_EQ(list_.Get(list_.GetSize()), nullptr);
    }

    std::mt19937 random_;
    std::deque<Member> members_;
    SafeList<Member> list_{gui::manager_parts::e_list_time};
    std::vector<Member *> model_;
    std::vector<std::vector<Member *>> models_;
};

TEST(GuiSafeList, WalksGiveWhatIsStillThereOnce)
{
    for (unsigned int seed = 0; seed < 200; ++seed)
    {
        SCOPED_TRACE(seed);
        ListTwin twin(seed);
        twin.Walk(false, 2);
        twin.Walk(true, 1);
        if (HasFatalFailure())
            return;
    }
}

TEST(GuiSafeList, ForgetsWhatARebuildHasLeftOut)
{
    Member members[3];
    SafeList<Member> list(gui::manager_parts::e_list_time);
    for (Member &member : members)
        list.Append(member);
    std::vector<Member *> given;
    list.ForEach(
        [&](Member &member)
        {
            given.push_back(&member);
            if (given.size() > 1)
                return;
            list.BeginRebuild();
            list.AppendRebuilt(members[0]);
            list.AppendRebuilt(members[1]);
            // As at its end, but it comes back, so that the walk may look at it.
            EXPECT_FALSE(list.Erase(members[2]));
            list.Append(members[2]);
        });
    EXPECT_EQ(given, (std::vector{&members[0], &members[1]}));
}

TEST(GuiSafeList, EndsItsWalkWhenACallThrows)
{
    Member members[3];
    SafeList<Member> list(gui::manager_parts::e_list_time);
    for (Member &member : members)
        list.Append(member);
    EXPECT_THROW(list.WorkOff([](Member &) { throw 1; }), int);
    // The one that failed is out, and the list has no walk any more: erasing the rest empties it.
    EXPECT_EQ(list.GetFirst(), &members[1]);
    list.Erase(members[1]);
    list.Erase(members[2]);
    EXPECT_TRUE(list.IsEmpty());
    EXPECT_EQ(list.GetLast(), nullptr);
}

} // namespace
} // namespace quillmarsh
