#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/basetools/syncprimitives.h>
#include <quillmarsh/framework/samplereadsentry.h>

#include "tests/support/test_kernel.h"
#include "tests/support/waiting.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <functional>
#include <stdexcept>

namespace quillmarsh
{
namespace
{

using tests::WaitUntil;

class JournalController : public HIDController
{
public:
    JournalController(string name, string &journal) : name_(std::move(name)), journal_(journal) {}

    using HIDController::SetParentHID;

    string GetControllerInterfaceName() const override { return name_; }
    void ResetInputReadings() override { reading = 0; }
    void PreSampleUpdate() override {}
    void PostSampleUpdate() override {}
    void OnBeginAsyncSampleRead() override { journal_ += "+" + name_; }
    void OnEndAsyncSampleRead() override { journal_ += "-" + name_; }

    unsigned int reading = 0;

private:
    string name_;
    string &journal_;
};

class TestDevice : public HumanInterfaceDevice
{
public:
    TestDevice()
    {
        DeviceInfo().SetCreationID(7);
        first.SetParentHID(*this);
        second.SetParentHID(*this);
    }
    ~TestDevice() override { StopAsyncSampling(); }

    unsigned int GetNumControllers() override { return 2; }
    HIDController *GetController(unsigned int index) override { return index == 0 ? &first : &second; }
    void ConnectDevice(HWND) override {}
    void DisconnectDevice() override {}
    void OnStartAsyncSampling(void *handle, unsigned int id) override
    {
        threadHandle = handle;
        threadID = id;
    }
    void OnStopAsyncSampling(void *handle, unsigned int id) override
    {
        stopsOnTheSameThread = handle == threadHandle && id == threadID;
        ratesAtStop = GetAverageSampleRate() + GetAverageSamplingTime();
    }
    void SampleDevice() override
    {
        ++numSamples;
        first.reading = 1;
        if (onSample)
            onSample();
    }
    void ApplyUseDirectInput(bool use) override
    {
        ++numSwitches;
        if (obeys)
            UpdateUsingDirectInput(use);
    }

    using HumanInterfaceDevice::DeviceInfo;

    string journal;
    JournalController first{"A", journal};
    JournalController second{"B", journal};
    std::atomic<unsigned int> numSamples{0};
    std::function<void()> onSample;
    bool obeys = true;
    unsigned int numSwitches = 0;
    void *threadHandle = nullptr;
    unsigned int threadID = 0;
    bool stopsOnTheSameThread = false;
    double ratesAtStop = -1;
};

class HumanInterfaceDeviceTest : public testing::Test
{
protected:
    tests::TestKernel kernel;
    TestDevice device;
};

TEST_F(HumanInterfaceDeviceTest, KeepsItsMaximumRateInRange)
{
    std::pair<double, double> const rates[] = {{0.5, 1}, {62.5, 62.5}, {5000, 1000}, {std::nan(""), 1}};
    for (auto const &[wanted, stored] : rates)
    {
        device.SetMaxSampleRate(wanted);
        EXPECT_EQ(stored, device.GetMaxSampleRate());
    }
}

TEST_F(HumanInterfaceDeviceTest, SwitchesDirectInputWithinWhatItCanDo)
{
    struct Case
    {
        bool only, can, isUsing, wanted, obeys, result;
        unsigned int numSwitches;
    } const cases[] = {{true, true, false, false, true, true, 0}, {false, false, false, true, true, false, 0},
                       {true, true, true, false, true, false, 0}, {false, true, false, true, true, true, 1},
                       {false, true, true, false, true, true, 1}, {false, true, false, true, false, false, 1}};
    for (Case const &c : cases)
    {
        TestDevice fresh;
        fresh.DeviceInfo().SetCanUseDirectInput(true);
        fresh.SetUseDirectInput(c.isUsing);
        fresh.DeviceInfo().SetCanUseDirectInput(c.can);
        fresh.DeviceInfo().SetDirectInputOnly(c.only);
        fresh.obeys = c.obeys;
        fresh.numSwitches = 0;
        EXPECT_EQ(c.result, fresh.SetUseDirectInput(c.wanted));
        EXPECT_EQ(c.numSwitches, fresh.numSwitches);
    }
}

TEST_F(HumanInterfaceDeviceTest, LockIsAFlagAndTellsTheControllersInOrder)
{
    device.LockSampledData();
    device.LockSampledData();
    EXPECT_EQ("+A+B", device.journal);
    device.UnlockSampledData();
    device.UnlockSampledData();
    EXPECT_EQ("+A+B-A-B", device.journal);
    // No lock is held, so the thread can sample.
    device.StartAsyncSampling();
    EXPECT_TRUE(WaitUntil([this] { return device.numSamples > 1; }));
}

TEST_F(HumanInterfaceDeviceTest, SentriesSampleOrLock)
{
    {
        SampleReadSentry const sample(device, true);
        AsyncSampleReadSentry const last(device.second, true);
        EXPECT_EQ(1u, device.numSamples);
        EXPECT_FALSE(device.IsSampledDataLocked());
    }
    EXPECT_EQ("", device.journal);

    device.StartAsyncSampling();
    {
        SampleReadSentry const sentry(device.first, true);
        unsigned int const before = device.numSamples;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
        EXPECT_EQ(before, device.numSamples);
    }
    EXPECT_FALSE(device.IsSampledDataLocked());
    {
        AsyncSampleReadSentry const sentry(device, false);
    }
    EXPECT_TRUE(device.IsSampledDataLocked());
    device.StopAsyncSampling();
    EXPECT_EQ("+A+B-A-B+A+B-A-B", device.journal);
}

TEST_F(HumanInterfaceDeviceTest, StartsAndStopsAgainAndAgain)
{
    device.LockSampledData();
    device.StopAsyncSampling();
    EXPECT_EQ("", kernel.logOut.str());
    EXPECT_FALSE(device.IsSampledDataLocked());
    for (unsigned int round = 1; round <= 2; ++round)
    {
        device.numSamples = 0;
        device.ActivateAsyncSampling(true);
        device.StartAsyncSampling();
        EXPECT_TRUE(WaitUntil([this] { return device.numSamples > 2; }));
        device.ActivateAsyncSampling(false);
        unsigned int const atStop = device.numSamples;
        EXPECT_TRUE(device.threadHandle != nullptr && device.threadID != 0 && device.stopsOnTheSameThread);
        EXPECT_EQ(0.0, device.ratesAtStop);
        EXPECT_EQ(atStop, device.numSamples);
    }
    string const once = "Starting async-sampling on hid: 7\nStoping async-sampling on hid: 7\n";
    EXPECT_EQ(once + once, kernel.logOut.str());
}

TEST_F(HumanInterfaceDeviceTest, AveragesBeginWithTheWantedRate)
{
    Event atGate, mayPass;
    std::atomic<bool> isOpen{false};
    device.onSample = [&]
    {
        atGate.Set();
        if (!isOpen)
            mayPass.WaitInfinite();
    };
    // Allows a sample, and returns when the thread waits for the next one.
    auto const letOneIn = [&] { return mayPass.Set() && atGate.WaitInfinite(); };
    device.EnableMaxSampleRate(true);
    device.SetMaxSampleRate(40.0);
    device.StartAsyncSampling();
    atGate.WaitInfinite();
    ASSERT_TRUE(letOneIn());
    EXPECT_NEAR(40.0, device.GetAverageSampleRate(), 1e-9);
    double const firstTime = device.GetAverageSamplingTime();
    EXPECT_GT(firstTime, 0.0);

    // A new target rate counts from the next pass on.
    device.SetMaxSampleRate(200.0);
    ASSERT_TRUE(letOneIn() && letOneIn());
    EXPECT_NEAR(200.0, device.GetAverageSampleRate(), 0.1);
    isOpen = true;
    mayPass.Set();
    device.StopAsyncSampling();
}

TEST_F(HumanInterfaceDeviceTest, SurvivesADeviceThatFailsOnItsThread)
{
    std::pair<std::function<void()>, char const *> const cases[] = {
        {[] { QUILLMARSH_THROW(HIDException, "unplugged"); }, "HIDException: unplugged"},
        {[] { throw std::runtime_error("cut"); }, "cut"},
        {[] { throw 3; }, "an object of unknown class was thrown."},
    };
    for (auto const &[fail, reason] : cases)
    {
        kernel.logOut.str("");
        device.numSamples = 0;
        device.onSample = [this, throwIt = fail]
        {
            if (device.numSamples == 3)
                throwIt();
        };
        device.StartAsyncSampling();
        ASSERT_TRUE(WaitUntil([this] { return device.numSamples == 3; }));
        ASSERT_TRUE(WaitUntil(
            [this]
            {
                SampleReadSentry const sentry(device, true);
                return device.first.reading == 0;
            }));
        EXPECT_TRUE(device.IsAsyncSamplingActive());
        device.StopAsyncSampling();
        EXPECT_EQ(3u, device.numSamples);
        EXPECT_EQ(string("Starting async-sampling on hid: 7\nAsync-sampling failed on hid: 7/Unknown/Unknown: ") +
                      reason + "\nStoping async-sampling on hid: 7\n",
                  kernel.logOut.str());
    }
}

TEST(HumanInterfaceDeviceInfoTest, KeepsItsFlagsTogetherAndDumps)
{
    HumanInterfaceDeviceInfo info;
    info.SetDirectInputOnly(true);
    info.SetCanUseDirectInput(false);
    EXPECT_TRUE(info.CanUseDirectInput());
    info.SetDirectInputOnly(false);
    EXPECT_TRUE(info.CanUseDirectInput());
    info.SetCanUseDirectInput(false);
    EXPECT_FALSE(info.CanUseDirectInput());

    info.SetCreationID(12);
    info.SetDeviceDescription("Stick");
    info.SetCreatorPluginName("sticks");
    info.SetDirectInputDeviceInstanceInfo(
        {win_utils::Guid(UID(1, 2, 3, 4)), win_utils::Guid(UID(5, 6, 7, 8)), "instance", "product"});
    EXPECT_EQ("12/Stick/sticks", info.MakeShortDesc());
    EXPECT_EQ("\tCreationID........: 12\n\tCreatorPluginName.: sticks\n\tDeviceDescription.: Stick\n"
              "\tVendor............: Unknown\n\tModelType.........: Unknown\n\tModelSubType......: Unknown\n"
              "\tHardwarePort......: Unknown\n\tAdditionalInfo....: Unknown\n\tIsDirectInputOnly.: false\n"
              "\tCanUseDirectInput.: false\n\tDInputInstanceGUID: [00000001-00000002-00000003-00000004]\n"
              "\tDInputInstanceName: instance\n\tDInputProductGUID.: [00000005-00000006-00000007-00000008]\n"
              "\tDInputProductName.: product\n",
              tests::DumpText(info, 1));
}

TEST_F(HumanInterfaceDeviceTest, KernelWalksDevices)
{
    TestDevice other;
    kernel.devices = {&device, &other};
    EXPECT_EQ(2u, kernel.GetNumHIDControllers("B"));
    EXPECT_EQ(0u, kernel.GetNumHIDControllers("Keyboard"));
    EXPECT_EQ(&device.second, kernel.GetHIDController("B", 0));
    EXPECT_EQ(&other.second, kernel.GetHIDController("B", 1));
    EXPECT_EQ(nullptr, kernel.GetHIDController("B", 2));

    kernel.directInputConfig.DirectInputVersion = 5;
    kernel.RequestHIDReconfig(9);
    ASSERT_EQ(1u, kernel.hidReconfigs.size());
    EXPECT_EQ(kernel.directInputConfig, kernel.hidReconfigs[0].first);
    EXPECT_EQ(9u, kernel.hidReconfigs[0].second);
}

} // namespace
} // namespace quillmarsh
