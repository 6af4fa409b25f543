// The driver for OpenTrack's datagrams, with real datagrams.
#include "tests/support/failures.h"
#include "tests/support/host_process.h"
#include "tests/support/loaded_driver.h"
#include "tests/support/math_values.h"

#include <quillmarsh/basetools/time.h>
#include <quillmarsh/mathtools/transforms.h>

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

namespace quillmarsh::tests
{
namespace
{

using Values = std::array<double, 6>;

constexpr float s_tolerance = 2e-5f;

/// The driver on a free port, and a program that sends to it.
class OpenTrack : public ::testing::Test
{
protected:
    OpenTrack()
    {
        EXPECT_TRUE(loaded.driver.SetPluginParameter(NamedParameter("port", 0u)));
        loaded.Open();
        address_.sin_family = AF_INET;
        address_.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        address_.sin_port = htons(static_cast<unsigned short>(std::stoi(GetPort())));
    }
    ~OpenTrack() override { close(socket_); }

    HumanInterfaceDevice &GetDevice() { return *loaded.devices.at(0); }
    string GetPort() { return GetDevice().GetDeviceInfo().GetHardwarePort().substr(string("127.0.0.1 port ").size()); }
    string GetCaps()
    {
        std::ostringstream out;
        GetDevice().DumpDeviceCaps(out, 0);
        return out.str();
    }

    // Datagrams to the loopback address arrive at once.
    void SendBytes(void const *data, std::size_t size) const
    {
        auto const *const address = reinterpret_cast<sockaddr const *>(&address_);
        ASSERT_EQ(sendto(socket_, data, size, 0, address, sizeof(address_)), static_cast<ssize_t>(size));
    }
    void Send(Values const &values) const { SendBytes(values.data(), sizeof(values)); }
    mat3 SendAndSample(double yaw, double pitch, double roll)
    {
        Send({0, 0, 0, yaw, pitch, roll});
        return SampleAxes(GetDevice());
    }
    vec3 SamplePosition(Values const &values)
    {
        Send(values);
        GetDevice().SampleDevice();
        return GetPositionTracker(GetDevice()).GetPosition();
    }

    LoadedDriver loaded{QUILLMARSH_TEST_input_opentrack};

private:
    int const socket_ = socket(AF_INET, SOCK_DGRAM, 0);
    sockaddr_in address_{};
};

TEST_F(OpenTrack, ConvertsItsAxesInBothSamplingModes)
{
    static_assert(std::endian::native == std::endian::little, "the datagrams are sent as they lie");
    float const half = 0.5f, root = std::sqrt(0.75f);
    std::tuple<char const *, Values, vec3, vec3> const cases[] = {
        {"rest", {0, 0, 0, 0, 0, 0}, {0, 0, 1}, {0, 1, 0}},
        {"right", {0, 0, 0, 30, 0, 0}, {-half, 0, root}, {0, 1, 0}},
        {"up", {0, 0, 0, 0, 30, 0}, {0, half, root}, {0, root, -half}},
        {"leaning right", {0, 0, 0, 0, 0, 30}, {0, 0, 1}, {-half, root, 0}},
        {"right, then up", {0, 0, 0, 90, 30, 0}, {-root, half, 0}, {half, root, 0}},
        {"right, then leaning right", {0, 0, 0, 90, 0, 30}, {-1, 0, 0}, {0, root, -half}},
        {"round and round", {0, 0, 0, 360e6 + 30, -720, 360}, {-half, 0, root}, {0, 1, 0}},
    };
    for (auto const mode : {OrientationTracker::EulerSamplingMode, OrientationTracker::QuaternionSamplingMode})
    {
        ASSERT_TRUE(GetOrientationTracker(GetDevice()).SetSamplingMode(mode));
        for (auto const &[what, sent, ahead, up] : cases)
        {
            Send(sent);
            mat3 const axes = SampleAxes(GetDevice());
            EXPECT_TRUE(IsNear(axes.Column2(), ahead, s_tolerance)) << what << " in mode " << mode;
            EXPECT_TRUE(IsNear(axes.Column1(), up, s_tolerance)) << what << " in mode " << mode;
        }
    }
    EXPECT_TRUE(IsNear(SamplePosition({10, 20, 30, 0, 0, 0}), vec3(-0.1f, 0.2f, -0.3f)));
}

TEST_F(OpenTrack, ShowsTheNewestPoseAndDropsInvalidData)
{
    for (double yaw : {10.0, 20.0, 30.0})
        Send({0, 0, 0, yaw, 0, 0});
    mat3 const axes = SampleAxes(GetDevice());
    EXPECT_NEAR(axes.Column2().x, -0.5f, s_tolerance);
    EXPECT_EQ(GetCaps(), "Datagrams: 3\nDropped..: 0\n");

    std::array<double, 12> const longer{1, 2, 3, 4, 5, 6};
    for (std::size_t const size : {0, 1, 47, 49, 96})
        SendBytes(longer.data(), size);
    double const infinity = std::numeric_limits<double>::infinity();
    for (double const bad : {infinity, -infinity, std::nan(""), 1e300})
        for (std::size_t i = 0; i < Values().size(); ++i)
        {
            Values values{};
            values[i] = bad;
            Send(values);
        }
    EXPECT_EQ(SampleAxes(GetDevice()), axes);
    EXPECT_EQ(GetCaps(), "Datagrams: 3\nDropped..: 29\n");
}

TEST_F(OpenTrack, IsAtRestUntilSomethingComesAndAfterASecondOfSilence)
{
    OrientationTracker &tracker = GetOrientationTracker(GetDevice());
    EXPECT_EQ(SampleAxes(GetDevice()), mat3::IDENTITY);
    EXPECT_FALSE(tracker.ResetOrientation() || tracker.ResetHead() || tracker.ResetPitch() || tracker.ResetRoll());
    PositionTracker &position = GetPositionTracker(GetDevice());
    EXPECT_FALSE(position.ResetPosition() || position.ResetX() || position.ResetY() || position.ResetZ());

    HighResolutionTimer const timer;
    EXPECT_NE(SendAndSample(10, 0, 0), mat3::IDENTITY);
    EXPECT_TRUE(tracker.ResetHead());
    EXPECT_NE(SendAndSample(20, 0, 0), mat3::IDENTITY);
    while (SampleAxes(GetDevice()) != mat3::IDENTITY && timer.GetElapsedSeconds() < 10)
    {
        // A dropped datagram counts as silence.
        SendBytes("x", 1);
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    EXPECT_GE(timer.GetElapsedSeconds(), 1.0);
    EXPECT_LT(timer.GetElapsedSeconds(), 5.0);
    EXPECT_EQ(position.GetPosition(), vec3::ZERO);
}

TEST_F(OpenTrack, ResetsWithoutTippingTheVertical)
{
    OrientationTracker &tracker = GetOrientationTracker(GetDevice());
    auto const isTurned = [](mat3 const &axes, float head, float pitch, float roll)
    {
        mat3 expected;
        GenerateEulerHPR_VM(expected, -head, -pitch, -roll);
        return IsNear(axes, expected, s_tolerance);
    };
    ASSERT_TRUE(isTurned(SendAndSample(-40, -20, 30), 40, 20, 30));
    EXPECT_TRUE(tracker.ResetHead());
    EXPECT_TRUE(isTurned(SampleAxes(GetDevice()), 0, 20, 30)) << "what came last is shown again";
    EXPECT_TRUE(isTurned(SendAndSample(-50, -20, 30), 10, 20, 30));
    EXPECT_TRUE(tracker.ResetRoll());
    EXPECT_TRUE(isTurned(SendAndSample(-50, -20, 30), 10, 20, 0));
    EXPECT_TRUE(tracker.ResetPitch());
    EXPECT_TRUE(isTurned(SendAndSample(-50, -20, 30), 10, 0, 0));
    EXPECT_TRUE(isTurned(SendAndSample(35, -20, 30), -75, 0, 0)) << "turns about the vertical";

    SendAndSample(25, 15, -50);
    EXPECT_TRUE(tracker.ResetOrientation());
    EXPECT_TRUE(isTurned(SampleAxes(GetDevice()), 0, 0, 0));
    EXPECT_TRUE(isTurned(SendAndSample(-45, 15, -50), 70, 0, 0)) << "turns about the vertical";

    PositionTracker &position = GetPositionTracker(GetDevice());
    SamplePosition({-100, 200, -300, 0, 0, 0});
    EXPECT_TRUE(position.ResetY());
    EXPECT_TRUE(IsNear(SamplePosition({-100, 300, -300, 0, 0, 0}), vec3(1, 1, 3)));
    EXPECT_TRUE(position.ResetPosition());
    EXPECT_TRUE(IsNear(SamplePosition({-200, 300, -500, 0, 0, 0}), vec3(1, 0, 2)));
    EXPECT_TRUE(position.ResetX());
    EXPECT_TRUE(position.ResetZ());
    EXPECT_TRUE(IsNear(SamplePosition({-200, 300, -500, 0, 0, 0}), vec3::ZERO));
}

TEST_F(OpenTrack, TakesParametersAndNamesMistakes)
{
    for (NamedParameter const &parameter :
         {NamedParameter("address", 5), NamedParameter("port", -1), NamedParameter("port", 65536u),
          NamedParameter("port", "4242 or so"), NamedParameter("port", 4242.0), NamedParameter("ports", 4242u)})
    {
        loaded.kernel.conOut.str("");
        EXPECT_FALSE(loaded.driver.SetPluginParameter(parameter));
        EXPECT_NE(loaded.kernel.conOut.str().find(parameter.GetName()), string::npos) << loaded.kernel.conOut.str();
    }
    NamedParameter value;
    EXPECT_TRUE(loaded.driver.GetPluginParameter("port", value));
    EXPECT_EQ(value.GetValueUInteger(), 0u);

    auto const tellWhyNot = [this](char const *address, string const &port)
    {
        EXPECT_TRUE(loaded.driver.SetPluginParameter(NamedParameter("address", address)));
        EXPECT_TRUE(loaded.driver.SetPluginParameter(NamedParameter("port", port)));
        AutoPtr<HumanInterfaceDevice> const device(loaded.driver.CreateDevice(0));
        return MessageOf<HIDException>(
            [&]
            {
                device->ConnectDevice(nullptr);
                device->DisconnectDevice();
            });
    };
    EXPECT_EQ(tellWhyNot("127.0.0.1", "0"), "");
    EXPECT_EQ(tellWhyNot("localhost", "0"), "The address 'localhost' is not an IP address");
    EXPECT_EQ(tellWhyNot("127.0.0.1", GetPort()),
              "Cannot listen at 127.0.0.1 port " + GetPort() + ": Address already in use");
    EXPECT_EQ(tellWhyNot("192.0.2.1", "4242"), "Cannot listen at 192.0.2.1 port 4242: Cannot assign requested address");
}

TEST_F(OpenTrack, IsGivenParametersByTheHost)
{
    auto const run = [](string const &parameter)
    {
        HostResult const result =
            RunHost({"--plugin", "input_opentrack", "--parameter", parameter}, "hid-control -d=1 -info\n");
        return result.out + result.err;
    };
    EXPECT_NE(run("input_opentrack.port=0").find("HardwarePort......: 127.0.0.1 port "), string::npos);
    string const refused = run("input_opentrack.port=" + GetPort() + "0");
    EXPECT_NE(refused.find("'input_opentrack' is left out: KernelException: It does not take"), string::npos)
        << refused;
}

} // namespace
} // namespace quillmarsh::tests
