// A volume made small enough to be drawn as a whole.
#ifndef QUILLMARSH_PLUGINS_VIEWER_MODEL_VOLUMES_SMALLVOLUME_H
#define QUILLMARSH_PLUGINS_VIEWER_MODEL_VOLUMES_SMALLVOLUME_H

#include "rotation.h"
#include <viewer_model/samples/content.h>
#include <viewer_model/samples/display.h>

#include <quillmarsh/mathtools/vector3.h>

#include <cstdint>
#include <functional>

namespace viewer
{

/// A volume at a part of its size, with the extremes of its values. Immutable; any thread.
struct SmallVolume
{
    unsigned int numColumns = 0;
    unsigned int numRows = 0;
    unsigned int numLayers = 0;
    /// Half of the extents of the whole volume, of which the greatest is 1.
    quillmarsh::vec3 halfExtent;
    /// Place in the small volume of the far end of the whole one: at most 1, for the last small samples may stand for
    /// fewer large ones.
    quillmarsh::vec3 end;
    /// True if `colours` has the samples; else `values` has them.
    bool isColour = false;
    /// Words of A8R8G8B8.
    std::vector<Pixel> colours;
    /// Values of one channel: 0 stands for `low`, 65535 for `high`.
    std::vector<std::uint16_t> values;
    /// Extremes of the values of the small volume, as parts of the nominal range; 0 and 1 for colours. NaN and infinity
    /// do not count.
    double low = 0;
    double high = 1;
};

using SmallVolumePtr = std::shared_ptr<SmallVolume const>;

/// Makes the mean of blocks of samples, so that no side has more than `limit` samples. `channel` is an index of
/// GetChannels(); -1 takes colours where the format has them, and the first channel otherwise. `progress` gets the part
/// that is done, and returns false to stop: the result is null then, as it is for a format that is not known. Any thread.
SmallVolumePtr MakeSmallVolume(Content const &content, int channel, unsigned int limit,
                               std::function<bool(double)> const &progress = {});

/// Fills a picture in A8R8G8B8 with the greatest values along the line of sight. With a `zoom` of 1 the volume just fits
/// the picture, whatever its rotation. Any thread; the time depends on the picture and the sides of the volume.
void ComposeProjection(quillmarsh::ImageBase &picture, SmallVolume const &volume, Rotation const &rotation, double zoom,
                       ToneMap const &tones, Pixel background);

} // namespace viewer

#endif
