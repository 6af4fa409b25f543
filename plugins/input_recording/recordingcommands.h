// Console commands that play and record.
#ifndef QUILLMARSH_PLUGINS_INPUT_RECORDING_RECORDINGCOMMANDS_H
#define QUILLMARSH_PLUGINS_INPUT_RECORDING_RECORDINGCOMMANDS_H

#include "playeddevice.h"
#include "recorder.h"

#include <quillmarsh/basetools/command.h>

namespace input_recording
{

/// What is played. It outlasts the driver, which goes and comes back when devices do. Frame thread only.
struct PlaybackList
{
    std::vector<Playback> playbacks;
    /// Set by whoever changes the list.
    bool hasChanged = false;
};

/// Plays recordings, each as a device of its own.
class PlayCmd : public quillmarsh::Command
{
public:
    static constexpr char s_szDefaultName[] = "play";
    static constexpr char s_szOptionOnce[] = "once";
    static constexpr char s_szOptionStop[] = "stop";
    static constexpr char s_szAssignSpeed[] = "speed";
    static constexpr char s_szValueSpeed[] = "real";

    explicit PlayCmd(PlaybackList &list);

    bool ParseAndExecute(quillmarsh::ostream &out, quillmarsh::CommandLineParser const &parser,
                         string const &commandLine) override;
    void DumpHelp(quillmarsh::ostream &out, quillmarsh::CommandLineParser const &parser) override;

private:
    bool Play(quillmarsh::ostream &out, quillmarsh::CommandLineParser const &parser);

    PlaybackList &list_;
};

/// Records live devices.
class RecordCmd : public quillmarsh::Command
{
public:
    static constexpr char s_szDefaultName[] = "record";
    static constexpr char s_szOptionStop[] = "stop";
    static constexpr char s_szAssignDevice[] = "d";
    static constexpr char s_szValueDevice[] = "uinteger";

    /// The recorder is the driver's: it must not outlive the devices.
    explicit RecordCmd(quillmarsh::AutoPtr<Recorder> &recorder);

    bool ParseAndExecute(quillmarsh::ostream &out, quillmarsh::CommandLineParser const &parser,
                         string const &commandLine) override;
    void DumpHelp(quillmarsh::ostream &out, quillmarsh::CommandLineParser const &parser) override;

private:
    bool Start(quillmarsh::ostream &out, quillmarsh::CommandLineParser const &parser);

    quillmarsh::AutoPtr<Recorder> &recorder_;
};

} // namespace input_recording

#endif
