// The input devices with what they have read in the last seconds.
#ifndef QUILLMARSH_PLUGINS_VIEWER_DEVICES_DEVICEWATCH_H
#define QUILLMARSH_PLUGINS_VIEWER_DEVICES_DEVICEWATCH_H

#include "readings.h"

#include <viewer_model/signals/trace.h>

namespace quillmarsh
{
class HumanInterfaceDevice;
}

namespace viewer
{

/// A gesture that is made, or was made a moment ago.
struct GestureMark
{
    string name;
    /// Seconds since it has ended; negative while it is made.
    double age = -1;
};

struct WatchedController
{
    /// Borrowed.
    quillmarsh::HIDController *controller = nullptr;
    string title;
    Readings readings;
    /// One for each axis.
    std::vector<Trace> traces;
    std::vector<GestureMark> gestures;
};

struct WatchedDevice
{
    unsigned int number = 0;
    string title;
    /// Maker, model and port, as far as they are known.
    string hint;
    std::vector<WatchedController> controllers;
};

/// Reads devices while somebody watches, and keeps traces and gestures. A device that comes back goes on with its
/// traces. Frame thread only.
class DeviceWatch : quillmarsh::NoCopy
{
public:
    /// Seconds that a gesture which has ended still shows.
    static constexpr double s_gestureSeconds = 3;

    void Connect(quillmarsh::HumanInterfaceDevice &device);
    void DisconnectAll();
    /// Lets time pass, and reads the devices if somebody watches. Once a frame.
    void Update(double seconds, bool isWatched);

    std::vector<WatchedDevice> const &GetDevices() const { return devices_; }
    /// Time of traces: seconds since the program has begun.
    double GetTime() const { return time_; }
    /// Names of devices, with gestures and keys, in one line.
    string Describe() const;

private:
    void Read(WatchedController &watched, double seconds);

    std::vector<WatchedDevice> devices_;
    /// Devices of the last connection that have not come back yet. Their controllers are gone.
    std::vector<WatchedDevice> former_;
    quillmarsh::static_gestures::GestureAnalyzer analyzer_;
    double time_ = 0;
};

} // namespace viewer

#endif
