// A driver that plays recordings as devices, and records devices.
#include "recordingcommands.h"

#include <quillmarsh/framework/directinputconfig.h>
#include <quillmarsh/framework/hiddriver.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/plugindescriptors.h>
#include <quillmarsh/framework/pluginlibrary.h>
#include <quillmarsh/framework/stdcommandinterpreter.h>

#include <ostream>
#include <utility>

namespace input_recording
{
namespace
{

using namespace quillmarsh;

/// Creates a device for each playback. The commands exist while the driver is open.
class RecordingDriver : public HIDDriver0
{
public:
    explicit RecordingDriver(PlaybackList &list) : list_(list) {}

    void OpenDriver(DirectInputConfig const &, unsigned int) override
    {
        list_.hasChanged = false;
        if (std_command_interpreter::Interpreter *const interpreter = Kernel::Instance().GetCommandInterpreter())
        {
            interpreter->RegisterExternalCommand(new PlayCmd(list_));
            interpreter->RegisterExternalCommand(new RecordCmd(recorder_, list_));
        }
    }

    void CloseDriver() override
    {
        if (recorder_)
            GetConOut() << "The recording stopped, because the devices are reconfigured: " << recorder_->GetFileName()
                        << std::endl;
        recorder_.reset();
        if (std_command_interpreter::Interpreter *const interpreter = Kernel::Instance().GetCommandInterpreter())
        {
            interpreter->DeleteExternalCommand(PlayCmd::s_szDefaultName);
            interpreter->DeleteExternalCommand(RecordCmd::s_szDefaultName);
        }
    }

    bool PollDeviceChanges() override { return std::exchange(list_.hasChanged, false); }

    unsigned int EnumerateDevices() override { return static_cast<unsigned int>(list_.playbacks.size()); }

    HumanInterfaceDevice *CreateDevice(unsigned int index) override
    {
        return index < list_.playbacks.size() ? new PlayedDevice(list_.playbacks[index]) : nullptr;
    }

private:
    PlaybackList &list_;
    AutoPtr<Recorder> recorder_;
};

/// Keeps the list of playbacks from one driver to the next.
class RecordingDescriptor : public HIDDriverPluginDescriptor
{
public:
    RecordingDescriptor()
        : HIDDriverPluginDescriptor(PluginInfo(library_info::GetHeaderVersion(), e_plugin_hid_driver, "input_recording",
                                               PluginVersion(1, 0, 0, 0), library_info::GetBuildTimestamp(),
                                               "Plays and records input", "The Quillmarsh authors"))
    {
    }

    HIDDriver *CreateHIDDriver() override { return new RecordingDriver(list_); }

private:
    PlaybackList list_;
};

} // namespace
} // namespace input_recording

QUILLMARSH_PLUGIN_LIBRARY(input_recording::RecordingDescriptor)
