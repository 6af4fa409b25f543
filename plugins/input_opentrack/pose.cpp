#include "pose.h"

#include "tracker_support/resettabletrackers.h"

#include <bit>
#include <cmath>
#include <cstdint>

namespace input_opentrack
{

using namespace quillmarsh;

namespace
{

double ReadDouble(std::span<std::byte const> bytes)
{
    std::uint64_t bits = 0;
    for (std::size_t i = bytes.size(); i-- > 0;)
        bits = bits << 8 | std::to_integer<std::uint64_t>(bytes[i]);
    return std::bit_cast<double>(bits);
}

/// Reduces an angle by whole turns.
float WithinTurn(double degrees)
{
    return static_cast<float>(std::remainder(degrees, 360.0));
}

} // namespace

bool ReadPose(std::span<std::byte const> datagram, Pose &pose)
{
    if (datagram.size() != s_poseSize)
        return false;
    double values[s_poseSize / sizeof(double)];
    for (double &value : values)
    {
        value = ReadDouble(datagram.first(sizeof(double)));
        datagram = datagram.subspan(sizeof(double));
        if (!std::isfinite(static_cast<float>(value)))
            return false;
    }
    auto const [x, y, z, yaw, pitch, roll] = values;
    auto const toMetres = [](double centimetres) { return static_cast<float>(centimetres / 100.0); };
    pose.position.Set(-toMetres(x), toMetres(y), -toMetres(z));
    pose.orientation = tracker_support::MakeOrientation(WithinTurn(-yaw), WithinTurn(-pitch), WithinTurn(roll));
    return true;
}

} // namespace input_opentrack
