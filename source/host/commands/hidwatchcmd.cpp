#include "hidreadings.h"
#include "hostcommands.h"

#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/basetools/texttools.h>

#include <cmath>

namespace quillmarsh::host
{

namespace
{

constexpr char s_szSeconds[] = "seconds";
/// Seconds between two looks at the readings.
constexpr double s_interval = 0.1;

constexpr CommandValue s_duration{"a number of seconds above 0", [](CommandArguments const &, string const &text)
                                  {
                                      double seconds = 0;
                                      return ToValue(text, seconds) && std::isfinite(seconds) && seconds > 0;
                                  }};

constexpr CommandWord s_words[] = {
    CommandWord::Assignment(s_szSeconds, "number", "show each change for so long; an interrupt ends it\n", s_duration),
    CommandWord::Argument("0) device", "creation-id of the only device to show\n", command_values::s_device),
};

} // namespace

/// Shows readings at the end of frames, as long as it lives.
class HidWatchCmd::Watch : public FrameObserver
{
public:
    Watch(HostKernel &kernel, ConsoleLines &lines, ostream &out, std::optional<unsigned int> device, double seconds)
        : kernel_(kernel),
          lines_(lines),
          out_(out),
          device_(device),
          seconds_(seconds)
    {
    }

    /// Prints all readings that have changed. Returns the number of devices.
    unsigned int Show();
    void OnFrame(bool &removeObserver, unsigned int frameNumber, double frameTime) override;

private:
    void ShowDevice(HumanInterfaceDevice &device);

    HostKernel &kernel_;
    ConsoleLines &lines_;
    ostream &out_;
    std::optional<unsigned int> const device_;
    double const seconds_;
    double time_ = 0;
    double shownAt_ = 0;
    /// What was printed last, by device and controller.
    std::map<std::pair<unsigned int, unsigned int>, string> shown_;
};

unsigned int HidWatchCmd::Watch::Show()
{
    unsigned int count = 0;
    for (unsigned int i = 0; i < kernel_.GetNumHumanInterfaceDevices(); ++i)
    {
        HumanInterfaceDevice *const device = kernel_.GetHumanInterfaceDevice(i);
        if (device == nullptr || (device_ && device->GetDeviceInfo().GetCreationID() != *device_))
            continue;
        ShowDevice(*device);
        ++count;
    }
    out_.flush();
    return count;
}

void HidWatchCmd::Watch::ShowDevice(HumanInterfaceDevice &device)
{
    unsigned int const id = device.GetDeviceInfo().GetCreationID();
    for (unsigned int i = 0; i < device.GetNumControllers(); ++i)
    {
        HIDController *const controller = device.GetController(i);
        if (controller == nullptr)
            continue;
        string const readings = DescribeReadings(*controller);
        string &shown = shown_[{id, i}];
        if (std::exchange(shown, readings) == readings)
            continue;
        string seconds;
        ToStringFix(seconds, time_, 0, 1);
        out_ << (seconds_ > 0 ? seconds + " s  " : "") << id << ' ' << device.GetDeviceInfo().GetDeviceDescription()
             << ", " << controller->GetControllerInterfaceName() << ": " << readings << nl;
    }
}

void HidWatchCmd::Watch::OnFrame(bool &removeObserver, unsigned int, double frameTime)
{
    time_ += frameTime;
    bool const isInterrupted = !lines_.IsWaiting();
    if (isInterrupted || time_ >= seconds_)
    {
        removeObserver = true;
        return;
    }
    // The next line waits for the end.
    lines_.Wait(2);
    if (time_ - shownAt_ < s_interval)
        return;
    shownAt_ = time_;
    if (Show() > 0)
        return;
    out_ << "The device is gone." << std::endl;
    removeObserver = true;
}

HidWatchCmd::HidWatchCmd(HostKernel &kernel, ConsoleLines &lines) : kernel_(kernel), lines_(lines)
{
    SetDefaultName("hid-watch");
    SetShortDesc("Show the readings of human-interface-devices");
}

HidWatchCmd::~HidWatchCmd() = default;

std::span<CommandWord const> HidWatchCmd::GetWords() const
{
    return s_words;
}

string HidWatchCmd::GetDefaultBehavior() const
{
    return "show the readings of all devices once";
}

bool HidWatchCmd::Execute(ostream &out, CommandArguments const &arguments)
{
    std::optional<unsigned int> device;
    if (string const *const text = arguments.FindArgument(0))
    {
        unsigned int id = 0;
        ToValue(*text, id);
        device = id;
    }
    double seconds = 0;
    arguments.ReadAssignment(s_szSeconds, seconds);
    watch_ = std::make_unique<Watch>(kernel_, lines_, kernel_.GetConsole().GetStream(), device, seconds);
    if (watch_->Show() == 0)
    {
        out << "There are no devices." << nl;
        return true;
    }
    if (seconds > 0)
    {
        lines_.Wait(2);
        kernel_.AddFrameObserver(watch_.get());
    }
    return true;
}

} // namespace quillmarsh::host
