// Console commands that play and record.
#ifndef QUILLMARSH_PLUGINS_INPUT_RECORDING_RECORDINGCOMMANDS_H
#define QUILLMARSH_PLUGINS_INPUT_RECORDING_RECORDINGCOMMANDS_H

#include "playeddevice.h"
#include "recorder.h"

#include <quillmarsh/framework/commandtable.h>

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
class PlayCmd : public quillmarsh::TableCommand
{
public:
    static constexpr char s_szDefaultName[] = "play";
    static constexpr char s_szOptionOnce[] = "once";
    static constexpr char s_szOptionStop[] = "stop";
    static constexpr char s_szAssignSpeed[] = "speed";
    static constexpr char s_szValueSpeed[] = "real";

    explicit PlayCmd(PlaybackList &list);

    std::span<quillmarsh::CommandWord const> GetWords() const override;

protected:
    bool Execute(quillmarsh::ostream &out, quillmarsh::CommandArguments const &arguments) override;
    string GetDefaultBehavior() const override;

private:
    void Stop(quillmarsh::ostream &out);
    bool Play(quillmarsh::ostream &out, quillmarsh::CommandArguments const &arguments, string const &fileName);

    PlaybackList &list_;
};

/// Records live devices.
class RecordCmd : public quillmarsh::TableCommand
{
public:
    static constexpr char s_szDefaultName[] = "record";
    static constexpr char s_szOptionStop[] = "stop";
    static constexpr char s_szOptionOverwrite[] = "overwrite";
    static constexpr char s_szAssignDevice[] = "d";
    static constexpr char s_szValueDevice[] = "uinteger";

    /// The recorder is the driver's: it must not outlive the devices. The command belongs to the devices that are there.
    RecordCmd(quillmarsh::AutoPtr<Recorder> &recorder, PlaybackList const &list);

    std::span<quillmarsh::CommandWord const> GetWords() const override;

protected:
    bool Execute(quillmarsh::ostream &out, quillmarsh::CommandArguments const &arguments) override;
    string GetDefaultBehavior() const override;

private:
    void Stop(quillmarsh::ostream &out);
    bool Start(quillmarsh::ostream &out, quillmarsh::CommandArguments const &arguments, string const &fileName);
    string FindObstacle(quillmarsh::CommandArguments const &arguments, string const &fileName) const;

    quillmarsh::AutoPtr<Recorder> &recorder_;
    PlaybackList const &list_;
    /// Frames before the devices came.
    unsigned int const firstFrame_;
};

} // namespace input_recording

#endif
