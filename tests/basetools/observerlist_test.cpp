#include <quillmarsh/basetools/observerlist.h>

#include <gtest/gtest.h>

namespace quillmarsh
{
namespace
{

TEST(ObserverList, MayChangeWhileItIsWalked)
{
    int first = 0, second = 0, third = 0, late = 0;
    ObserverList<int> list;
    for (int *observer : {&first, &second, &second, &third})
        list.Add(observer);
    list.Add(nullptr);
    list.Remove(&late);
    EXPECT_EQ(3u, list.GetSize());

    list.ForEach(
        [&](int &observer)
        {
            ++observer;
            if (&observer != &first)
                return;
            list.Remove(&first);
            list.Remove(&second);
            list.Add(&late);
            list.ForEach([](int &inner) { ++inner; });
        });
    EXPECT_EQ(1, first);
    EXPECT_EQ(0, second);
    EXPECT_EQ(2, third);
    EXPECT_EQ(1, late);
    EXPECT_EQ(2u, list.GetSize());
}

} // namespace
} // namespace quillmarsh
