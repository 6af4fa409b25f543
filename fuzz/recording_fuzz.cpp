// Recordings: every accepted recording can be played, and stays the same when it is written and read again.
#include "plugins/input_recording/recordingplayer.h"
#include "plugins/input_recording/recordingreader.h"
#include "plugins/input_recording/recordingwriter.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>

namespace
{

using namespace input_recording;

/// Plays a recording to its end, sample by sample, and writes it again. Returns an empty text when the movements at one
/// time add up to more than a recording can hold.
string Rewrite(Recording const &recording)
{
    std::ostringstream out;
    RecordingWriter writer(out, recording.description, recording.controllers);
    RecordingPlayer player(recording, false);
    for (Sample const &sample : recording.samples)
    {
        player.AdvanceTo(sample.time);
        for (unsigned int i = 0; i < recording.controllers.size(); ++i)
        {
            for (float const value : player.GetState(i))
            {
                if (!std::isfinite(value))
                    std::abort();
            }
            unsigned int const numMovements = recording.controllers[i].GetDesc().numMovements;
            for (float const value : player.GetState(i).first(numMovements))
            {
                if (std::fabs(value) > s_maxInteger)
                    return "";
            }
            writer.Write(sample.time, i, player.GetState(i));
        }
        player.EndFrame();
    }
    writer.WriteEnd(recording.length);
    return out.str();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    // Limits the length of the input: every sample goes through all controllers, and a longer recording only takes more
    // time.
    if (size > 65536)
        return 0;
    Recording recording;
    try
    {
        recording = ParseRecording(string(reinterpret_cast<char const *>(data), size), "input");
    }
    catch (RecordingException const &failure)
    {
        if (failure.GetMessage().rfind("input:", 0) != 0)
            std::abort();
        return 0;
    }
    RecordingPlayer loop(recording, true);
    for (double round = 0; round < 3; round += 0.125)
        loop.AdvanceTo(round * recording.length);
    string const written = Rewrite(recording);
    if (!written.empty())
        ParseRecording(written, "written");
    return 0;
}
