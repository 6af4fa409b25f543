#include <quillmarsh/basetools/namedparameter.h>
#include <quillmarsh/basetools/variableregistry.h>

#include "tests/support/scripted_dialogs.h"

#include <gtest/gtest.h>

#include <limits>

namespace quillmarsh
{
namespace
{

/// Records name and value of every change.
class Listener : public VariableProxy::Observer
{
public:
    void OnValueChanged(VariableProxy const &proxy) override
    {
        heard_ += proxy.GetName() + "=" + proxy.GetValueString() + ";";
    }

    string Take() { return std::exchange(heard_, string()); }

private:
    string heard_;
};

/// A proxy class of a program that cannot be cloned.
class Unclonable : public VariableProxyInt
{
public:
    Unclonable() : VariableProxyInt(nullptr) {}
    VariableProxyInt *Clone() const override { return nullptr; }
};

class VariableProxyTest : public testing::Test
{
protected:
    VariableProxyTest() { VariableProxy::SetGlobalObserver(&global_); }
    ~VariableProxyTest() override { VariableProxy::SetGlobalObserver(nullptr); }

    Listener global_;
    Listener own_;
};

TEST_F(VariableProxyTest, TextGoesBothWaysForEachType)
{
    void *pointer = nullptr;
    bool boolean = false;
    int integer = 0;
    unsigned int uInteger = 0;
    float real = 0;
    double wideReal = 0;
    string text;
    auto const check =
        [](VariableProxy const &proxy, string const &value, char const *typeName, string const &range = "")
    {
        AutoPtr<VariableProxy> const clone(proxy.Clone());
        VariableProxy const &cloned = *clone;
        EXPECT_EQ(typeid(cloned), typeid(proxy));
        clone->SetValueFromString(value);
        EXPECT_EQ(proxy.GetValueString(), value);
        EXPECT_EQ(proxy.GetTargetTypeName() + proxy.GetTargetRestrictions(), typeName + range);
    };
    check(VariableProxyVoidPointer(&pointer), "0x1f00", "void*");
    check(VariableProxyBool(&boolean), "true", "bool");
    check(VariableProxyInt(&integer), "-7", "int");
    check(VariableProxyUInt(&uInteger), "7", "unsigned int");
    check(VariableProxyFloat(&real), "0.25", "float");
    check(VariableProxyDouble(&wideReal), "1e+100", "double");
    check(VariableProxyString(&text), string("a b\0\xff ", 6), "string");
    check(VariableProxyRangeCheckedDouble(&wideReal, -0.5, 1), "0.75", "double", "range=[-0.5, 1]");
    EXPECT_EQ(VariableProxyInt(&integer).GetTargetObjectName(), FormatObjectName("int", &integer));
}

TEST_F(VariableProxyTest, WithoutAVariableNothingHappens)
{
    VariableProxyInt proxy(nullptr, "name", "what it is", true, &own_);
    VariableProxyRangeCheckedInt ranged(nullptr, 0, 10, "name", "", false, &own_);
    proxy.SetValue(3);
    proxy.SetValueFromString("3");
    ranged.SetValue(3);
    ranged.SetValueFromString("3");
    EXPECT_EQ(proxy.GetValueString() + "," + proxy.GetTargetObjectName(), "Unknown,NA");
    EXPECT_EQ(own_.Take() + global_.Take(), "");
}

TEST_F(VariableProxyTest, OwnObserverKeepsTheGlobalOneOut)
{
    int value = 1;
    VariableProxyInt proxy(&value, "v", "d", true, &own_);
    proxy.SetValue(2);
    proxy.SetValueFromString("x");
    EXPECT_EQ(own_.Take(), "v=2;v=2;");
    EXPECT_EQ(global_.Take(), "");

    AutoPtr<VariableProxy> const clone(proxy.Clone());
    EXPECT_TRUE(clone->IsDeveloperModeOnly());
    EXPECT_EQ(clone->GetVarDescription(), "d");
    EXPECT_EQ(clone->GetObserver(), &own_);
    clone->SetObserver(nullptr);
    clone->SetValueFromString("3");
    EXPECT_EQ(global_.Take(), "v=3;");
    VariableProxy::SetGlobalObserver(nullptr);
    clone->SetValueFromString("4");
    EXPECT_EQ(value, 4);
    EXPECT_EQ(own_.Take() + global_.Take(), "");
}

TEST_F(VariableProxyTest, RangeHoldsForTextAndValue)
{
    constexpr std::tuple<int, int, char const *, int> cases[] = {
        {0, 10, "15", 10}, {0, 10, "-3", 0},  {0, 10, "5", 5}, {0, 10, "x", 7},  {0, 10, "10", 10},
        {0, 5, "x", 5},    {10, 0, "-1", 10}, {10, 0, "0", 0}, {10, 0, "20", 0},
    };
    for (auto const &[minimum, maximum, text, result] : cases)
    {
        int value = 7;
        VariableProxyRangeCheckedInt proxy(&value, minimum, maximum, "v", "", false, &own_);
        proxy.SetValueFromString(text);
        EXPECT_EQ(value, result) << text;
        EXPECT_EQ(own_.Take(), "v=" + std::to_string(result) + ";");
    }
    float real = std::numeric_limits<float>::infinity();
    VariableProxyRangeCheckedFloat(&real, -1, 1).SetValue(real);
    EXPECT_EQ(real, 1);

    constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
    VariableProxyRangeCheckedFloat(&real, -1, 1).SetValue(notANumber);
    EXPECT_EQ(real, -1);
    VariableProxyRangeCheckedFloat open(&real, notANumber, 2);
    open.SetValue(-1e30f);
    EXPECT_EQ(real, -1e30f);
    open.SetValue(3);
    EXPECT_EQ(real, 2);
}

TEST_F(VariableProxyTest, RegistryKeepsClonesInOrderOfNames)
{
    int first = 1, second = 2;
    VariableRegistry registry;
    VariableProxyInt proxy(&first, "b");
    EXPECT_TRUE(registry.RegisterVariable(proxy));
    EXPECT_FALSE(registry.RegisterVariable(Unclonable()) || registry.RegisterVariable(VariableProxyInt(&second, "b")));
    proxy.SetName("later");
    EXPECT_TRUE(registry.RegisterVariable(VariableProxyInt(&second, "a")));
    EXPECT_TRUE(registry.RegisterVariable(VariableProxyInt(&second, "B")));
    EXPECT_TRUE(registry.RegisterVariable(VariableProxyInt(&second, "\xe4")));

    string names;
    for (unsigned int i = 0; i < registry.GetNumVariables(); ++i)
        names += registry.GetVariable(i).GetName() + " ";
    EXPECT_EQ(names, "B a b \xe4 ");
    EXPECT_EQ(registry.GetVariable("b")->GetValueString(), "1");
    EXPECT_EQ(registry.GetVariable("later"), nullptr);

    registry.UnregisterVariable("unknown");
    registry.UnregisterVariable(registry.GetVariable(1).GetName());
    EXPECT_EQ(registry.GetVariable("a"), nullptr);
    EXPECT_EQ(registry.GetNumVariables(), 3u);
}

TEST_F(VariableProxyTest, ForcingRangesTellsEveryObserver)
{
    int ranged = 5;
    string text = "as it is ";
    VariableRegistry registry;
    registry.RegisterVariable(VariableProxyRangeCheckedInt(&ranged, 0, 10, "r", "", false, &own_));
    registry.RegisterVariable(VariableProxyString(&text, "t"));
    ranged = 99;
    registry.ForceValueRanges();
    EXPECT_EQ(ranged, 10);
    EXPECT_EQ(own_.Take(), "r=10;");
    EXPECT_EQ(global_.Take(), "t=as it is ;");
}

TEST_F(VariableProxyTest, VariablesMayComeAndGoWhileRangesAreForced)
{
    /// Registers one variable and unregisters others, among them its own.
    class Gardener : public Listener
    {
    public:
        explicit Gardener(VariableRegistry &registry) : registry_(registry) {}
        void OnValueChanged(VariableProxy const &proxy) override
        {
            Listener::OnValueChanged(proxy);
            registry_.RegisterVariable(VariableProxyInt(nullptr, "a new one"));
            registry_.UnregisterVariable("c gone");
            registry_.UnregisterVariable(proxy.GetName());
        }

    private:
        VariableRegistry &registry_;
    };
    int value = 1;
    VariableRegistry registry;
    Gardener gardener(registry);
    registry.RegisterVariable(VariableProxyInt(&value, "a first", "", false, &own_));
    registry.RegisterVariable(VariableProxyInt(&value, "b leaving", "", false, &gardener));
    registry.RegisterVariable(VariableProxyInt(&value, "c gone", "", false, &own_));
    registry.RegisterVariable(VariableProxyInt(&value, "d last", "", false, &own_));
    registry.ForceValueRanges();
    EXPECT_EQ(gardener.Take(), "b leaving=1;");
    EXPECT_EQ(own_.Take(), "a first=1;d last=1;");
    EXPECT_EQ(registry.GetNumVariables(), 3u);
}

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
    EXPECT_TRUE(list.Insert(NamedParameter("b", 1), false) && list.Insert(NamedParameter("a", 2), true));
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
