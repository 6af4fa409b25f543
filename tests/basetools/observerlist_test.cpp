#include <quillmarsh/basetools/observerlist.h>

#include <gtest/gtest.h>

namespace quillmarsh
{
namespace
{

TEST(ObserverList, MayChangeWhileItIsWalked)
{
    struct Observer
    {
        int calls = 0;
    };
    Observer first, second, third, late;
    ObserverList<Observer> list;
    for (Observer *observer : {&first, &second, &second, &third})
        list.Add(observer);
    list.Add(nullptr);
    list.Remove(&late);
    EXPECT_EQ(3u, list.GetSize());

    list.ForEach(
        [&](Observer &observer)
        {
            ++observer.calls;
            if (&observer != &first)
                return;
            list.Remove(&first);
            list.Remove(&second);
            list.Add(&late);
            list.ForEach([](Observer &inner) { ++inner.calls; });
        });
    EXPECT_EQ(1, first.calls);
    EXPECT_EQ(0, second.calls);
    EXPECT_EQ(2, third.calls);
    EXPECT_EQ(1, late.calls);
    EXPECT_EQ(2u, list.GetSize());
}

} // namespace
} // namespace quillmarsh
