// Console commands that play and record.
#ifndef QUILLMARSH_PLUGINS_INPUT_RECORDING_RECORDINGCOMMANDS_H
#define QUILLMARSH_PLUGINS_INPUT_RECORDING_RECORDINGCOMMANDS_H

#include "playeddevice.h"
#include "recorder.h"

#include <quillmarsh/framework/commandtable.h>

namespace input_recording
{

/// The recordings that are played. The list outlives the driver, which is created anew when devices are reconfigured.
/// Frame thread only.
struct PlaybackList
{
    std::vector<Playback> playbacks;
    /// The code that changes the list sets this.
    bool hasChanged = false;
};

/// "play": plays recordings, each as its own device.
class PlayCmd : public quillmarsh::TableCommand
{
public:
    static constexpr char s_szDefaultName[] = "play";
    static constexpr char s_szOptionExit[] = "exit";
    static constexpr char s_szOptionOnce[] = "once";
    static constexpr char s_szOptionSteady[] = "steady";
    static constexpr char s_szOptionStop[] = "stop";
    static constexpr char s_szOptionSystem[] = "system";
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

/// "record": records live devices.
class RecordCmd : public quillmarsh::TableCommand
{
public:
    static constexpr char s_szDefaultName[] = "record";
    static constexpr char s_szOptionStop[] = "stop";
    static constexpr char s_szOptionOverwrite[] = "overwrite";
    static constexpr char s_szAssignDevice[] = "d";
    static constexpr char s_szValueDevice[] = "uinteger";

    /// The driver owns `recorder`, which must not outlive the devices. The command is for the present devices only.
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
    /// Number of the frame in which the devices were connected.
    unsigned int const firstFrame_;
};

} // namespace input_recording

#endif
