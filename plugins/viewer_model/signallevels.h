// Extremes of a signal at any zoom, in the time of a screen's width.
#ifndef QUILLMARSH_PLUGINS_VIEWER_MODEL_SIGNALLEVELS_H
#define QUILLMARSH_PLUGINS_VIEWER_MODEL_SIGNALLEVELS_H

#include "channels.h"
#include "content.h"

#include <functional>

namespace viewer
{

/// Smallest and greatest value of a run of samples.
struct Extent
{
    float low = 0;
    float high = 0;
};

/// For each channel of a signal, the extremes of each run of 16 samples, of 256 and so on. Takes less than the signal
/// itself. NaN counts in no extreme; a run of NaN alone has NaN. Immutable; any thread.
class SignalLevels : quillmarsh::NoCopy
{
public:
    /// Samples of a run of the first level, and runs of a run of the next one.
    static constexpr unsigned int s_factor = 16;

    ~SignalLevels();
    /// `progress` as in ImageLevels::Build(); null when it stops. The content must be a signal with known channels.
    static std::shared_ptr<SignalLevels const> Build(ContentPtr content,
                                                     std::function<bool(double)> const &progress = {});

    /// Returns the extremes of the samples from `begin` to ahead of `end`, for the channel with this index. Reads at most
    /// some hundred values, whatever the length. An empty range has NaN.
    Extent GetExtent(unsigned int channel, std::uint64_t begin, std::uint64_t end) const;
    ContentPtr const &GetContent() const { return content_; }

private:
    explicit SignalLevels(ContentPtr content);

    ContentPtr content_;
    /// By channel, then by level.
    std::vector<std::vector<std::vector<Extent>>> levels_;
};

} // namespace viewer

#endif
