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
    list.Clear();
    EXPECT_EQ(list.GetNumParameters(), 0u);
}

TEST(NamedParameterList, GivesValuesOfTheExactTypeOnly)
{
    int target = 0;
    NamedParameterList list;
    for (NamedParameter const &parameter :
         {NamedParameter("pointer", &target), NamedParameter("bool", true), NamedParameter("integer", 3),
          NamedParameter("uinteger", 4u), NamedParameter("double", 5.5), NamedParameter("string", "six")})
        list.Insert(parameter, false);

    struct Case
    {
        char const *name;
        void *pointer;
        bool boolean;
        int integer;
        unsigned int uInteger;
        double real;
        char const *text;
    };
    Case const cases[] = {
        {"pointer", &target, false, 7, 7, 7, "seven"}, {"bool", &list, true, 7, 7, 7, "seven"},
        {"integer", &list, false, 3, 7, 7, "seven"},   {"uinteger", &list, false, 7, 4, 7, "seven"},
        {"double", &list, false, 7, 7, 5.5, "seven"},  {"string", &list, false, 7, 7, 7, "six"},
        {"missing", &list, false, 7, 7, 7, "seven"},
    };
    for (Case const &c : cases)
    {
        EXPECT_EQ(list.GetValuePointer(c.name, &list), c.pointer) << c.name;
        EXPECT_EQ(list.GetValueBool(c.name, false), c.boolean) << c.name;
        EXPECT_EQ(list.GetValueInteger(c.name, 7), c.integer) << c.name;
        EXPECT_EQ(list.GetValueUInteger(c.name, 7), c.uInteger) << c.name;
        EXPECT_EQ(list.GetValueDouble(c.name, 7), c.real) << c.name;
        EXPECT_EQ(list.GetValueString(c.name, "seven"), c.text) << c.name;
    }
}

} // namespace
} // namespace quillmarsh
