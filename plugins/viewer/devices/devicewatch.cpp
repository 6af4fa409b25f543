#include "devicewatch.h"

#include <quillmarsh/framework/hidcontroller.h>
#include <quillmarsh/framework/humaninterfacedevice.h>

#include <algorithm>

namespace viewer
{

using namespace quillmarsh;

namespace
{

string FormatHint(HumanInterfaceDeviceInfo const &info)
{
    string hint;
    for (string const *const part :
         {&info.GetVendor(), &info.GetModelType(), &info.GetModelSubType(), &info.GetHardwarePort()})
    {
        if (!part->empty() && *part != "Unknown")
            hint += (hint.empty() ? "" : ", ") + *part;
    }
    return hint;
}

void UpdateGestures(std::vector<GestureMark> &marks, std::vector<string> const &made, double seconds)
{
    for (GestureMark &mark : marks)
    {
        bool const isMade = std::find(made.begin(), made.end(), mark.name) != made.end();
        mark.age = isMade ? -1 : std::max(0.0, mark.age) + seconds;
    }
    std::erase_if(marks, [](GestureMark const &mark) { return mark.age > DeviceWatch::s_gestureSeconds; });
    for (string const &name : made)
    {
        if (std::none_of(marks.begin(), marks.end(), [&](GestureMark const &mark) { return mark.name == name; }))
            marks.push_back({name});
    }
}

} // namespace

void DeviceWatch::Connect(HumanInterfaceDevice &device)
{
    HumanInterfaceDeviceInfo const &info = device.GetDeviceInfo();
    WatchedDevice watched;
    watched.number = info.GetCreationID();
    watched.title = info.GetDeviceDescription();
    watched.hint = FormatHint(info);
    auto const before = std::find_if(former_.begin(), former_.end(),
                                     [&](WatchedDevice const &former)
                                     { return former.title == watched.title && former.hint == watched.hint; });
    if (before != former_.end())
    {
        watched.controllers = std::move(before->controllers);
        former_.erase(before);
    }
    watched.controllers.resize(device.GetNumControllers());
    for (unsigned int i = 0; i < device.GetNumControllers(); ++i)
    {
        watched.controllers[i].controller = device.GetController(i);
        if (watched.controllers[i].controller != nullptr)
            watched.controllers[i].title =
                FormatSensorName(watched.controllers[i].controller->GetControllerInterfaceName());
    }
    devices_.push_back(std::move(watched));
}

void DeviceWatch::DisconnectAll()
{
    former_ = std::move(devices_);
    devices_.clear();
    for (WatchedDevice &device : former_)
    {
        for (WatchedController &watched : device.controllers)
            watched.controller = nullptr;
    }
}

void DeviceWatch::Update(double seconds, bool isWatched)
{
    time_ += seconds;
    if (!isWatched)
        return;
    for (WatchedDevice &device : devices_)
    {
        for (WatchedController &watched : device.controllers)
        {
            if (watched.controller != nullptr)
                Read(watched, seconds);
        }
    }
}

void DeviceWatch::Read(WatchedController &watched, double seconds)
{
    watched.readings = ReadController(*watched.controller, analyzer_);
    watched.traces.resize(watched.readings.axes.size());
    for (std::size_t i = 0; i < watched.traces.size(); ++i)
        watched.traces[i].Add(time_, watched.readings.axes[i].value);
    UpdateGestures(watched.gestures, watched.readings.gestures, seconds);
}

string DeviceWatch::Describe() const
{
    string text;
    for (WatchedDevice const &device : devices_)
    {
        text += (text.empty() ? "" : "; ") + device.title;
        for (WatchedController const &watched : device.controllers)
        {
            for (string const &name : watched.readings.gestures)
                text += ", " + name;
            for (string const &name : watched.readings.keys)
                text += ", " + name;
        }
    }
    return text;
}

} // namespace viewer
