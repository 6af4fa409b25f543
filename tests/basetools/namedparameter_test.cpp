#include <quillmarsh/basetools/namedparameter.h>

#include "tests/support/scripted_dialogs.h"

#include <gtest/gtest.h>

namespace quillmarsh
{
namespace
{

TEST(NamedParameter, WrongTypeAssertsAndReadsTheSameBits)
{
    NamedParameter parameter("size", "text");
    parameter.SetValueInteger(-2);
    tests::ScriptedDialogs dialogs;
    EXPECT_EQ(parameter.GetValueUInteger(), 0xfffffffeu);
    EXPECT_EQ(parameter.GetValueString(), "text");
    EXPECT_TRUE(parameter.GetValueBool());
    EXPECT_EQ(dialogs.TakeTexts(), std::vector<string>(3, "Extracting wrong value-type from NamedParameter: size"));
}

TEST(NamedParameterList, KeepsOneOfEachNameInOrder)
{
    NamedParameterList list;
    EXPECT_TRUE(list.Insert(NamedParameter("b", 1), false));
    EXPECT_TRUE(list.Insert(NamedParameter("a", 2), true));
    EXPECT_TRUE(list.Insert(NamedParameter("B", 3), false));
    EXPECT_FALSE(list.Insert(NamedParameter("a", 4), false));
    EXPECT_EQ(list.GetValueInteger("a", 0), 2);
    EXPECT_TRUE(list.Insert(NamedParameter("a", "new"), true));
    EXPECT_EQ(list.GetNumParameters(), 3u);
    EXPECT_EQ(list.GetParameter(0).GetName() + list.GetParameter(1).GetName() + list.GetParameter(2).GetName(), "Bab");
    EXPECT_EQ(list.GetParameter("a")->GetValueString(), "new");
    EXPECT_EQ(list.GetParameter("A"), nullptr);

    list.Remove("A");
    list.Remove("b");
    EXPECT_EQ(list.GetParameter("b"), nullptr);
    EXPECT_EQ(list.GetNumParameters(), 2u);
}

TEST(NamedParameterList, GivesValuesOfTheExactTypeOnly)
{
    int target = 0;
    NamedParameterList list;
    for (NamedParameter const &parameter :
         {NamedParameter("pointer", &target), NamedParameter("bool", true), NamedParameter("integer", 3),
          NamedParameter("uinteger", 4u), NamedParameter("double", 5.5), NamedParameter("string", "six")})
        list.Insert(parameter, false);
    for (string const name : {"pointer", "bool", "integer", "uinteger", "double", "string", "missing"})
    {
        auto const expect = [&name]<typename T>(char const *owner, T const &value, T const &stored, T const &byDefault)
        { EXPECT_EQ(value, name == owner ? stored : byDefault) << name; };
        expect("pointer", list.GetValuePointer(name, &list), static_cast<void *>(&target), static_cast<void *>(&list));
        expect("bool", list.GetValueBool(name, false), true, false);
        expect("integer", list.GetValueInteger(name, 7), 3, 7);
        expect("uinteger", list.GetValueUInteger(name, 7), 4u, 7u);
        expect("double", list.GetValueDouble(name, 7), 5.5, 7.0);
        expect("string", list.GetValueString(name, "seven"), string("six"), string("seven"));
    }
}

} // namespace
} // namespace quillmarsh
