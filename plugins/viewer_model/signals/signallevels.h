// Extremes and means of a signal at any zoom, in the time of a screen's width.
#ifndef QUILLMARSH_PLUGINS_VIEWER_MODEL_SIGNALS_SIGNALLEVELS_H
#define QUILLMARSH_PLUGINS_VIEWER_MODEL_SIGNALS_SIGNALLEVELS_H

#include <viewer_model/samples/channels.h>
#include <viewer_model/samples/content.h>

#include <functional>

namespace viewer
{

/// Smallest and greatest value of a run of samples, and its mean.
struct Extent
{
    float low = 0;
    float high = 0;
    float mean = 0;
};

/// For each channel of a signal, the extent of each run of 32 samples, of 1024 and so on. Takes less than the signal
/// itself. NaN counts in no extent; a run of NaN alone has NaN. Immutable; any thread.
class SignalLevels : quillmarsh::NoCopy
{
public:
    /// Samples of a run of the first level, and runs of a run of the next one.
    static constexpr unsigned int s_factor = 32;

    ~SignalLevels();
    /// `progress` as in ImageLevels::Build(); null when it stops. The content must be a signal with known channels.
    static std::shared_ptr<SignalLevels const> Build(ContentPtr content,
                                                     std::function<bool(double)> const &progress = {});

    /// Returns the extent of the samples from `begin` to ahead of `end`, for the channel with this index. Reads at most
    /// some hundred values, whatever the length. The mean of a long range counts a run that has some NaN as one without.
    /// An empty range has NaN; what lies behind the signal is left out.
    Extent GetExtent(unsigned int channel, std::uint64_t begin, std::uint64_t end) const;
    ContentPtr const &GetContent() const { return content_; }
    std::uint64_t GetNumSamples() const { return numSamples_; }
    std::span<Channel const> GetSignalChannels() const { return channels_; }
    /// Returns the value of a channel of a sample.
    double GetValue(unsigned int channel, std::uint64_t sample) const
    {
        return channels_[channel].read(samples_ + sample * sampleByteSize_);
    }

private:
    explicit SignalLevels(ContentPtr content);

    bool BuildFirst(std::function<bool(double)> const &progress);
    void BuildRest();

    ContentPtr content_;
    std::span<Channel const> channels_;
    unsigned char const *samples_ = nullptr;
    std::uint64_t numSamples_ = 0;
    std::size_t sampleByteSize_ = 0;
    /// By channel, then by level. Whole runs only: what is left of a run is read from the level before.
    std::vector<std::vector<std::vector<Extent>>> levels_;
};

} // namespace viewer

#endif
