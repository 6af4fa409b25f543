#include "recordingcommands.h"

#include "recordingreader.h"

#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/basetools/streameffectors.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/framework/kernel.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <utility>

namespace input_recording
{

using namespace quillmarsh;

namespace
{

constexpr CommandValue s_speed{"a speed from 0.01 to 100", [](CommandArguments const &, string const &text)
                               {
                                   double speed = 0;
                                   return ToValue(text, speed) && speed >= 0.01 && speed <= 100;
                               }};

constexpr CommandWord s_playWords[] = {
    CommandWord::Option(PlayCmd::s_szOptionExit, "play once, and end the program\n"),
    CommandWord::Option(PlayCmd::s_szOptionOnce, "play once, and stay at the end\n"),
    CommandWord::Option(PlayCmd::s_szOptionSteady, "play slower where frames take longer than 1/20 s\n"),
    CommandWord::Option(PlayCmd::s_szOptionStop, "stop all recordings that are played\n"),
    CommandWord::Option(PlayCmd::s_szOptionSystem, "play as mouse and keyboard of the system, which a GUI uses\n"),
    CommandWord::Assignment(PlayCmd::s_szAssignSpeed, PlayCmd::s_szValueSpeed,
                            "play at a multiple of the recorded speed, from 0.01 to 100\n", s_speed),
    CommandWord::Argument("0) string", "file of the recording, which becomes a device\n", command_values::s_file),
};

constexpr CommandWord s_recordWords[] = {
    CommandWord::Option(RecordCmd::s_szOptionStop, "end the recording\n"),
    CommandWord::Option(RecordCmd::s_szOptionOverwrite, "replace the file if it exists\n"),
    CommandWord::Assignment(RecordCmd::s_szAssignDevice, RecordCmd::s_szValueDevice,
                            "record only the device with this creation-id\n", command_values::s_device),
    CommandWord::Argument("0) string", "file to write\n", command_values::s_file),
};

/// Options that need a file.
constexpr char const *s_optionsOfFile[] = {PlayCmd::s_szOptionExit, PlayCmd::s_szOptionOnce, PlayCmd::s_szOptionSteady,
                                           PlayCmd::s_szOptionSystem};

/// Prints a message and returns false if the line has words about a file but names none.
bool HasFileForItsWords(ostream &out, string const *fileName, bool hasWords)
{
    if (fileName == nullptr && hasWords)
        out << "The name of the file is missing." << std::endl;
    return fileName != nullptr || !hasWords;
}

/// True for equal names, and for two names of one file.
bool IsSameFile(string const &one, string const &other)
{
    std::error_code error;
    return one == other ||
           std::filesystem::equivalent(file_system::GetStreamPath(one), file_system::GetStreamPath(other), error);
}

string CountControllers(Recorder const &recorder)
{
    unsigned int const count = recorder.GetNumControllers();
    return MakeString(count) + (count == 1 ? " controller" : " controllers");
}

} // namespace

PlayCmd::PlayCmd(PlaybackList &list) : list_(list)
{
    SetDefaultName(s_szDefaultName);
    SetShortDesc("Play recorded input");
}

std::span<CommandWord const> PlayCmd::GetWords() const
{
    return s_playWords;
}

string PlayCmd::GetDefaultBehavior() const
{
    return "list the recordings that are played";
}

bool PlayCmd::Execute(ostream &out, CommandArguments const &arguments)
{
    string const *const fileName = arguments.FindArgument(0);
    if (!HasFileForItsWords(out, fileName,
                            std::any_of(std::begin(s_optionsOfFile), std::end(s_optionsOfFile),
                                        [&](char const *option) { return arguments.HasOption(option); }) ||
                                arguments.FindAssignment(s_szAssignSpeed)))
        return false;
    if (arguments.HasOption(s_szOptionStop))
        Stop(out);
    else if (fileName == nullptr)
    {
        for (Playback const &playback : list_.playbacks)
            out << "Playing " << playback.fileName << ", " << playback.recording->length << " s" << nl;
        if (list_.playbacks.empty())
            out << "Nothing is played." << std::endl;
    }
    return fileName == nullptr || Play(out, arguments, *fileName);
}

void PlayCmd::Stop(ostream &out)
{
    list_.hasChanged = list_.hasChanged || !list_.playbacks.empty();
    for (Playback const &playback : list_.playbacks)
        out << "Stopped " << playback.fileName << nl;
    if (list_.playbacks.empty())
        out << "Nothing is played." << std::endl;
    list_.playbacks.clear();
}

bool PlayCmd::Play(ostream &out, CommandArguments const &arguments, string const &fileName)
{
    Playback playback;
    playback.fileName = fileName;
    playback.endsProgram = arguments.HasOption(s_szOptionExit);
    playback.isLooped = !arguments.HasOption(s_szOptionOnce) && !playback.endsProgram;
    playback.isSteady = arguments.HasOption(s_szOptionSteady);
    playback.isSystem = arguments.HasOption(s_szOptionSystem);
    arguments.ReadAssignment(s_szAssignSpeed, playback.speed);
    try
    {
        playback.recording = std::make_shared<Recording const>(LoadRecording(playback.fileName));
    }
    catch (RecordingException const &failure)
    {
        out << failure.GetMessage() << std::endl;
        return false;
    }
    list_.playbacks.push_back(playback);
    list_.hasChanged = true;
    out << "Playing " << playback.fileName << ", " << playback.recording->length << " s" << std::endl;
    return true;
}

RecordCmd::RecordCmd(AutoPtr<Recorder> &recorder, PlaybackList const &list)
    : recorder_(recorder),
      list_(list),
      firstFrame_(Kernel::Instance().GetFrameNumber())
{
    SetDefaultName(s_szDefaultName);
    SetShortDesc("Record input");
}

std::span<CommandWord const> RecordCmd::GetWords() const
{
    return s_recordWords;
}

string RecordCmd::GetDefaultBehavior() const
{
    return "print the file that is written";
}

bool RecordCmd::Execute(ostream &out, CommandArguments const &arguments)
{
    string const *const fileName = arguments.FindArgument(0);
    if (!HasFileForItsWords(out, fileName,
                            arguments.HasOption(s_szOptionOverwrite) || arguments.FindAssignment(s_szAssignDevice)))
        return false;
    if (arguments.HasOption(s_szOptionStop))
        Stop(out);
    else if (fileName == nullptr && recorder_)
        out << "Recording " << CountControllers(*recorder_) << " to " << recorder_->GetFileName() << ", "
            << recorder_->GetTime() << " s" << std::endl;
    else if (fileName == nullptr)
        out << "Nothing is recorded." << std::endl;
    return fileName == nullptr || Start(out, arguments, *fileName);
}

void RecordCmd::Stop(ostream &out)
{
    if (recorder_)
        out << "Recorded " << recorder_->GetFileName() << ", " << recorder_->GetTime() << " s" << std::endl;
    recorder_.reset();
}

bool RecordCmd::Start(ostream &out, CommandArguments const &arguments, string const &fileName)
{
    string const obstacle = FindObstacle(arguments, fileName);
    if (!obstacle.empty())
    {
        out << obstacle << std::endl;
        return false;
    }
    unsigned int id = 0;
    bool const hasID = arguments.ReadAssignment(s_szAssignDevice, id);
    std::vector<HumanInterfaceDevice *> devices;
    Kernel &kernel = Kernel::Instance();
    for (unsigned int i = 0; i < kernel.GetNumHumanInterfaceDevices(); ++i)
    {
        HumanInterfaceDevice *const device = kernel.GetHumanInterfaceDevice(i);
        if (!hasID || device->GetDeviceInfo().GetCreationID() == id)
            devices.push_back(device);
    }
    bool const areSampled = kernel.GetFrameNumber() > firstFrame_;
    try
    {
        auto recorder = std::make_unique<Recorder>(
            fileName, devices, areSampled ? Recorder::eStart::e_now : Recorder::eStart::e_nextFrame);
        if (recorder_)
            Stop(out);
        recorder_ = std::move(recorder);
    }
    catch (RecordingException const &failure)
    {
        out << failure.GetMessage() << std::endl;
        return false;
    }
    out << "Recording " << CountControllers(*recorder_) << " to " << fileName << std::endl;
    return true;
}

/// Returns the reason why the file cannot be recorded now; empty when it can.
string RecordCmd::FindObstacle(CommandArguments const &arguments, string const &fileName) const
{
    if (list_.hasChanged)
        return "The devices change in the next frame; enter wait first.";
    if (recorder_ && IsSameFile(recorder_->GetFileName(), fileName))
        return fileName + ": is being recorded, stop that first with record -stop";
    if (!arguments.HasOption(s_szOptionOverwrite) && file_system::FileExists(fileName))
        return fileName + ": the file already exists, replace it with -overwrite";
    return "";
}

} // namespace input_recording
