#include <quillmarsh/framework/directinputconfig.h>
#include <quillmarsh/framework/directinputproxy.h>
#include <quillmarsh/framework/hiddriver.h>

// The full definition of the record, from the system's header on Windows.
#include "source/platform/directinput.h"

#include <gtest/gtest.h>

#include <cstring>
#include <sstream>

namespace quillmarsh
{
namespace
{

TEST(DirectInputConfig, ComparesWhatCounts)
{
    std::tuple<DirectInputConfig, DirectInputConfig, bool> const cases[] = {
        {{false, true, 3, true, true}, {false, false, 8, false, false}, true},
        {{true, true, 3, true, true}, {true, true, 8, true, true}, true},
        {{true, false, 3, true, true}, {true, false, 8, true, true}, false},
        {{true, true, 3, true, true}, {true, false, 3, true, true}, false},
        {{true, true, 3, true, true}, {false, true, 3, true, true}, false},
        {{true, true, 3, true, true}, {true, true, 3, false, true}, false},
        {{true, true, 3, true, true}, {true, true, 3, true, false}, false}};
    for (auto const &[left, right, equal] : cases)
    {
        EXPECT_EQ(equal, left.IsLogicallyEqual(right));
        EXPECT_FALSE(left == right);
    }
}

DIDEVICEINSTANCEA MakeInstance(unsigned int type)
{
    DIDEVICEINSTANCEA instance{};
    instance.dwSize = sizeof(instance);
    instance.guidInstance = win_utils::Guid(UID(1, 0, 0, 0));
    instance.guidProduct = win_utils::Guid(UID(2, 0, 0, 0));
    instance.dwDevType = type;
    std::strcpy(instance.tszInstanceName, "stick");
    // A name without a terminating zero.
    std::memset(instance.tszProductName, 'x', sizeof(instance.tszProductName));
    return instance;
}

string Dump(auto const &record, unsigned int tabs)
{
    std::ostringstream out;
    record.DumpInfo(out, tabs);
    return out.str();
}

TEST(DirectInputDeviceInstanceInfo, DumpsAndCopiesTheSystemsRecord)
{
    static_assert(sizeof(DIDEVICEINSTANCEA) == 580);
    DIDEVICEINSTANCEA instance = MakeInstance(0x12340c1c);
    DirectInputDeviceInstanceInfo8 const info(instance);
    string const product(260, 'x');
    EXPECT_EQ("\tInstanceGUID.: [00000001-00000000-00000000-00000000]\n\tInstanceName.: stick\n"
              "\tProductGUID..: [00000002-00000000-00000000-00000000]\n\tProductName..: " +
                  product + "\n\tDeviceType...: supplemental controller\n\tDeviceSubType: three pedals\n",
              Dump(info, 1));
    DirectInputDeviceInstanceInfo common;
    EXPECT_EQ("Unknown", common.InstanceName);
    info.CopyInfo(common);
    EXPECT_EQ(DirectInputDeviceInstanceInfo(win_utils::Guid(UID(1, 0, 0, 0)), win_utils::Guid(UID(2, 0, 0, 0)), "stick",
                                            product),
              common);
    EXPECT_EQ("InstanceGUID: [00000001-00000000-00000000-00000000]\nInstanceName: stick\n"
              "ProductGUID.: [00000002-00000000-00000000-00000000]\nProductName.: " +
                  product + "\n",
              Dump(common, 0));

    instance.tszInstanceName[100] = 'z';
    DirectInputDeviceInstanceInfo8 other(instance);
    EXPECT_EQ(info, other);
    instance.wUsage = 1;
    other = instance;
    EXPECT_NE(info, other);
    other = info;
    EXPECT_EQ(info, other);
}

TEST(DirectInputDeviceInstanceInfo, NamesTypes)
{
    constexpr std::pair<unsigned int, char const *> cases[] = {
        {0x0211, "unclassified\nDeviceSubType: unknown"},
        {0x0612, "mouse\nDeviceSubType: absolute axis data"},
        {0x0113, "keyboard\nDeviceSubType: IBM PC/XT 83-key keyboard"},
        {0x0218, "first-person-game controller\nDeviceSubType: unknown"},
        {0x0d1c, "supplemental controller\nDeviceSubType: rudder pedals"},
        {0x011d, "unknown\nDeviceSubType: unknown"},
    };
    for (auto const &[type, names] : cases)
        EXPECT_TRUE(Dump(DirectInputDeviceInstanceInfo8(MakeInstance(type)), 0)
                        .ends_with(string("\nDeviceType...: ") + names + "\n"));
}

TEST(DirectInputProxy, DescribesCooperativeLevels)
{
    EXPECT_EQ("background exclusive", DirectInputProxy8::GetCooperativeLevelDesc(9));
    EXPECT_EQ("foreground non-exclusive", DirectInputProxy8::GetCooperativeLevelDesc(6));
    EXPECT_EQ("background exclusive no-win-key", DirectInputProxy8::GetCooperativeLevelDesc(31));
    EXPECT_EQ("", DirectInputProxy8::GetCooperativeLevelDesc(0));
}

} // namespace
} // namespace quillmarsh
