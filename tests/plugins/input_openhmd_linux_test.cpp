// The driver for head-mounted displays, with those devices of OpenHMD that need no hardware.
#ifdef QUILLMARSH_TEST_input_openhmd

#include "tests/support/loaded_driver.h"
#include "tests/support/math_values.h"

#include <gtest/gtest.h>

#include <cmath>

namespace quillmarsh::tests
{
namespace
{

HumanInterfaceDevice *Find(LoadedDriver &loaded, char const *description)
{
    for (AutoPtr<HumanInterfaceDevice> const &device : loaded.devices)
    {
        if (device->GetDeviceInfo().GetDeviceDescription() == description)
            return device.get();
    }
    return nullptr;
}

TEST(OpenHMD, ConvertsItsAxes)
{
    float const sine = std::sin(0.5f), cosine = std::cos(0.5f);
    // Right-handed turns about axes to the right, up, and backwards.
    std::pair<vec3, vec3> const aheadAndUp[] = {
        {{0, sine, cosine}, {0, cosine, -sine}}, {{sine, 0, cosine}, {0, 1, 0}}, {{0, 0, 1}, {sine, cosine, 0}}};

    LoadedDriver loaded(QUILLMARSH_TEST_input_openhmd);
    for (std::size_t axis = 0; axis < 3; ++axis)
    {
        loaded.Open();
        HumanInterfaceDevice *const device = Find(loaded, "External Device");
        ASSERT_NE(device, nullptr);
        EXPECT_TRUE(IsNear(SampleAxes(*device), mat3::IDENTITY));
        float sensors[10] = {0.01f};
        sensors[1 + axis] = 1.0f;
        for (int i = 0; i < 50; ++i)
            ASSERT_TRUE(device->SetHIDParameter(NamedParameter("sensors", static_cast<void *>(sensors))));
        mat3 const axes = SampleAxes(*device);
        EXPECT_TRUE(IsNear(axes.Column2(), aheadAndUp[axis].first, 1e-4f)) << axis;
        EXPECT_TRUE(IsNear(axes.Column1(), aheadAndUp[axis].second, 1e-4f)) << axis;
        EXPECT_TRUE(GetOrientationTracker(*device).ResetOrientation());
        EXPECT_TRUE(IsNear(SampleAxes(*device), mat3::IDENTITY, 1e-4f));

        sensors[0] = std::nanf("");
        device->SetHIDParameter(NamedParameter("sensors", static_cast<void *>(sensors)));
        EXPECT_EQ(SampleAxes(*device), mat3::IDENTITY) << "nonsense is rest";
    }
}

TEST(OpenHMD, ListsDummiesWhenAskedTo)
{
    LoadedDriver loaded(QUILLMARSH_TEST_input_openhmd);
    loaded.Open();
    EXPECT_EQ(Find(loaded, "Left Controller Null Device"), nullptr);
    EXPECT_FALSE(loaded.driver.SetPluginParameter(NamedParameter("dummies", 1)));
    EXPECT_TRUE(loaded.driver.SetPluginParameter(NamedParameter("dummies", true)));
    loaded.Open();
    HumanInterfaceDevice *const left = Find(loaded, "Left Controller Null Device");
    ASSERT_NE(left, nullptr);
    HumanInterfaceDeviceInfo const &info = left->GetDeviceInfo();
    EXPECT_EQ(info.GetVendor() + "/" + info.GetModelType() + "/" + info.GetModelSubType(), "OpenHMD/Controller/Left");
    left->SampleDevice();
    EXPECT_TRUE(IsNear(GetPositionTracker(*left).GetPosition(), vec3(0.5f, 0.0f, 0.0f))) << "left is along X";
    float sensors[10] = {};
    EXPECT_FALSE(left->SetHIDParameter(NamedParameter("sensors", static_cast<void *>(sensors))));
}

} // namespace
} // namespace quillmarsh::tests

#endif
