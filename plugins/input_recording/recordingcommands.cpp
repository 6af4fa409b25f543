#include "recordingcommands.h"

#include "recordingreader.h"

#include <quillmarsh/basetools/commandlineparser.h>
#include <quillmarsh/basetools/streameffectors.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/framework/commandtable.h>
#include <quillmarsh/framework/kernel.h>

namespace input_recording
{

using namespace quillmarsh;

namespace
{

constexpr CommandWord s_playWords[] = {
    CommandWord::Option(PlayCmd::s_szOptionOnce, "play once, and stay at the end\n"),
    CommandWord::Option(PlayCmd::s_szOptionStop, "end all that is played\n"),
    CommandWord::Assignment(PlayCmd::s_szAssignSpeed, PlayCmd::s_szValueSpeed,
                            "play at a multiple of the true speed, from 0.01 to 100\n"),
    CommandWord::Argument("0) string", "file of the recording, which becomes a device\n"),
};

constexpr CommandWord s_recordWords[] = {
    CommandWord::Option(RecordCmd::s_szOptionStop, "end the recording\n"),
    CommandWord::Assignment(RecordCmd::s_szAssignDevice, RecordCmd::s_szValueDevice,
                            "record only the device with this creation-id\n"),
    CommandWord::Argument("0) string", "file to write\n"),
};

constexpr double s_minSpeed = 0.01;
constexpr double s_maxSpeed = 100.0;

/// The file that the line names; empty when it names none.
string GetFileName(CommandLineParser const &parser)
{
    for (unsigned int i = 0; i < parser.GetNumArguments(); ++i)
    {
        CommandLineParser::Argument const &argument = parser.GetArgument(i);
        if (argument == CommandLineParser::e_string)
            return argument.String();
    }
    return "";
}

} // namespace

PlayCmd::PlayCmd(PlaybackList &list) : list_(list)
{
    SetDefaultName(s_szDefaultName);
    SetShortDesc("Play recorded input");
}

bool PlayCmd::ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &)
{
    if (parser.GetOption(s_szOptionStop))
    {
        list_.hasChanged = list_.hasChanged || !list_.playbacks.empty();
        list_.playbacks.clear();
    }
    if (!GetFileName(parser).empty())
        return Play(out, parser);
    for (Playback const &playback : list_.playbacks)
        out << "Playing " << playback.fileName << ", " << playback.recording->length << " s" << nl;
    if (list_.playbacks.empty())
        out << "Nothing is played." << std::endl;
    return true;
}

bool PlayCmd::Play(ostream &out, CommandLineParser const &parser)
{
    Playback playback;
    playback.fileName = GetFileName(parser);
    playback.isLooped = !parser.GetOption(s_szOptionOnce);
    string speed;
    bool const isSpeedValid =
        !parser.GetAssignment(s_szAssignSpeed, speed) ||
        (ToValue(speed, playback.speed) && playback.speed >= s_minSpeed && playback.speed <= s_maxSpeed);
    if (!isSpeedValid)
    {
        out << "Not a speed from 0.01 to 100: " << speed << std::endl;
        return false;
    }
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

void PlayCmd::DumpHelp(ostream &out, CommandLineParser const &parser)
{
    DumpCommandWords(out, parser, s_playWords, "list what is played");
}

RecordCmd::RecordCmd(AutoPtr<Recorder> &recorder) : recorder_(recorder)
{
    SetDefaultName(s_szDefaultName);
    SetShortDesc("Record input");
}

bool RecordCmd::ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &)
{
    if (parser.GetOption(s_szOptionStop))
    {
        if (recorder_)
            out << "Recorded " << recorder_->GetFileName() << ", " << recorder_->GetTime() << " s" << std::endl;
        recorder_.reset();
        return true;
    }
    if (!GetFileName(parser).empty())
        return Start(out, parser);
    if (recorder_)
        out << "Recording " << recorder_->GetNumControllers() << " controllers to " << recorder_->GetFileName() << ", "
            << recorder_->GetTime() << " s" << std::endl;
    else
        out << "Nothing is recorded." << std::endl;
    return true;
}

bool RecordCmd::Start(ostream &out, CommandLineParser const &parser)
{
    string idText;
    unsigned int id = 0;
    bool const hasID = parser.GetAssignment(s_szAssignDevice, idText);
    if (hasID && !ToValue(idText, id))
    {
        out << "Not a creation-id: " << idText << std::endl;
        return false;
    }
    std::vector<HumanInterfaceDevice *> devices;
    Kernel &kernel = Kernel::Instance();
    for (unsigned int i = 0; i < kernel.GetNumHumanInterfaceDevices(); ++i)
    {
        HumanInterfaceDevice *const device = kernel.GetHumanInterfaceDevice(i);
        if (!hasID || device->GetDeviceInfo().GetCreationID() == id)
            devices.push_back(device);
    }
    try
    {
        recorder_.reset();
        recorder_ = std::make_unique<Recorder>(GetFileName(parser), devices);
    }
    catch (RecordingException const &failure)
    {
        out << failure.GetMessage() << std::endl;
        return false;
    }
    out << "Recording " << recorder_->GetNumControllers() << " controllers to " << recorder_->GetFileName()
        << std::endl;
    return true;
}

void RecordCmd::DumpHelp(ostream &out, CommandLineParser const &parser)
{
    DumpCommandWords(out, parser, s_recordWords, "tell what is recorded");
}

} // namespace input_recording
