// What the controllers of devices read, in the terms of the panel that shows them.
#ifndef QUILLMARSH_PLUGINS_VIEWER_DEVICES_READINGS_H
#define QUILLMARSH_PLUGINS_VIEWER_DEVICES_READINGS_H

#include <quillmarsh/devices/staticgestures.h>
#include <quillmarsh/mathtools/vector3.h>

#include <array>
#include <vector>

namespace viewer
{

using quillmarsh::string;

/// A value with a bar and a trace.
struct AxisReading
{
    string name;
    double value = 0;
    /// Ends of the bar; equal for a value without a range of its own, whose bar shows what it was.
    double low = 0;
    double high = 0;
    /// Decimals to show.
    unsigned int precision = 2;
};

/// Readings of one controller. A plain record.
struct Readings
{
    std::vector<AxisReading> axes;
    std::vector<bool> buttons;
    /// Directions in degrees; negative at rest.
    std::vector<double> hats;
    /// Names of the keys that are down.
    std::vector<string> keys;
    /// Axes of a tracker; empty, or three.
    std::vector<quillmarsh::vec3> pose;
    /// Names of the gestures that a hand makes.
    std::vector<string> gestures;
    /// Why there are no readings; empty if there are some.
    string note;
};

/// Returns the last readings. Takes no new sample. Frame thread only.
Readings ReadController(quillmarsh::HIDController &controller,
                        quillmarsh::static_gestures::GestureAnalyzer const &analyzer);

/// Returns the words of a name, as "Index Inner" for "IndexJointInner".
string FormatSensorName(string const &name);

} // namespace viewer

#endif
