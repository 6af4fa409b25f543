#include "smallvolume.h"

#include <quillmarsh/dataobjects/sampleddataoperations.h>
#include <quillmarsh/dataobjects/scaling.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace viewer
{

using namespace quillmarsh;
using sampled_data::SampledData;

namespace
{

constexpr double s_largestValue = 65535;

unsigned int DivideUp(unsigned int a, unsigned int b)
{
    return a / b + (a % b != 0 ? 1 : 0);
}

/// Layers of a volume as one of their own, which borrows the samples. Nobody writes to it.
class Layers : public VolumeBaseFromExternalStorageAdapter
{
public:
    Layers(VolumeBase const &volume, unsigned int begin, unsigned int count)
        : SignalBase(volume.GetSampleByteSize()),
          VolumeBaseFromExternalStorageAdapter(volume.GetSampleFormat())
    {
        SetExternalStorage(const_cast<unsigned char *>(volume.SampleB(begin, 0, 0)), count, volume.GetNumRows(),
                           volume.GetNumColumns());
    }
};

/// Makes one layer of floats, the mean of blocks of `source`. The library's own filter would clamp them.
void MeanFloats(VolumeBase &target, VolumeBase const &source, unsigned int factor)
{
    for (unsigned int row = 0; row < target.GetNumRows(); ++row)
    {
        unsigned int const endRow = std::min((row + 1) * factor, source.GetNumRows());
        for (unsigned int column = 0; column < target.GetNumColumns(); ++column)
        {
            unsigned int const begin = column * factor;
            unsigned int const count = std::min(factor, source.GetNumColumns() - begin);
            double sum = 0;
            for (unsigned int layer = 0; layer < source.GetNumLayers(); ++layer)
            {
                for (unsigned int from = row * factor; from < endRow; ++from)
                {
                    unsigned char const *const samples = source.SampleB(layer, from, begin);
                    for (unsigned int i = 0; i < count; ++i)
                    {
                        float value;
                        std::memcpy(&value, samples + i * sizeof(value), sizeof(value));
                        sum += double(value);
                    }
                }
            }
            double const numSamples = double(source.GetNumLayers()) * (endRow - row * factor) * count;
            auto const mean = static_cast<float>(sum / numSamples);
            std::memcpy(target.SampleB(0, row, column), &mean, sizeof(mean));
        }
    }
}

bool ScaleLayers(VolumeBase &target, VolumeBase const &source, unsigned int factor)
{
    eSampleFormat const format = source.GetSampleFormat();
    if (format != e_format_FP32NormL && format != e_format_FP32NormA)
        return ScaleSamples(target, source, e_scale_area);
    MeanFloats(target, source, factor);
    return true;
}

/// Scales groups of layers one by one, so that the work can be stopped. Null if it was, or if the format is not known.
AutoPtr<VolumeBase> Scale(VolumeBase const &volume, unsigned int factor, std::function<bool(double)> const &progress)
{
    unsigned int const numLayers = DivideUp(volume.GetNumLayers(), factor);
    AutoPtr<VolumeBase> small(ManufactureVolume(volume.GetSampleFormat(), numLayers,
                                                DivideUp(volume.GetNumRows(), factor),
                                                DivideUp(volume.GetNumColumns(), factor)));
    for (unsigned int layer = 0; layer < numLayers; ++layer)
    {
        if (progress && !progress(static_cast<double>(layer) / numLayers))
            return nullptr;
        unsigned int const begin = layer * factor;
        Layers const source(volume, begin, std::min(factor, volume.GetNumLayers() - begin));
        Layers target(*small, layer, 1);
        if (!ScaleLayers(target, source, factor))
            return nullptr;
    }
    return small;
}

/// Index of the channel whose values are shown; -1 for colours.
int ChooseChannel(eSampleFormat format, int channel)
{
    if (channel >= 0)
        return channel;
    return FindChannel(format, "red") >= 0 ? -1 : 0;
}

void TakeColours(SmallVolume &result, AutoPtr<VolumeBase> samples)
{
    SampledData data(std::move(samples));
    sampled_data::ChangeFormat(data, e_format_A8R8G8B8);
    auto const *const words = reinterpret_cast<Pixel const *>(data.GetSamples().GetSamplesB());
    result.isColour = true;
    result.colours.assign(words, words + data.GetSamples().GetNumSamples());
}

void TakeValues(SmallVolume &result, VolumeBase const &samples, Channel const &channel)
{
    std::size_t const count = samples.GetNumSamples();
    std::size_t const step = samples.GetSampleByteSize();
    unsigned char const *const first = samples.GetSamplesB();
    double low = std::numeric_limits<double>::infinity();
    double high = -low;
    for (std::size_t i = 0; i < count; ++i)
    {
        double const value = channel.read(first + i * step) / channel.largest;
        if (!std::isfinite(value))
            continue;
        low = std::min(low, value);
        high = std::max(high, value);
    }
    if (low > high)
        low = high = 0;
    result.low = low;
    result.high = high;
    double const factor = high > low ? s_largestValue / (high - low) : 0;
    result.values.resize(count);
    for (std::size_t i = 0; i < count; ++i)
    {
        double const value = (channel.read(first + i * step) / channel.largest - low) * factor;
        // NaN counts as the lowest value.
        result.values[i] = static_cast<std::uint16_t>(value > 0 ? std::min(value, s_largestValue) + 0.5 : 0);
    }
}

void SetExtents(SmallVolume &result, VolumeBase const &volume, unsigned int factor)
{
    vec3 const size(static_cast<float>(volume.GetNumColumns()), static_cast<float>(volume.GetNumRows()),
                    static_cast<float>(volume.GetNumLayers()));
    result.halfExtent = size / size.AbsMax();
    auto const part = [&](float large, unsigned int small)
    { return large / (static_cast<float>(factor) * static_cast<float>(small)); };
    result.end = {part(size.x, result.numColumns), part(size.y, result.numRows), part(size.z, result.numLayers)};
}

/// Looks along lines of sight.
class Projector
{
public:
    Projector(SmallVolume const &volume, Rotation const &rotation, float unit, float width, float height)
        : volume_(volume),
          right_(ToSamples(rotation.right) / unit),
          down_(ToSamples(rotation.down) / unit),
          away_(ToSamples(rotation.away)),
          middle_(width / 2, height / 2),
          origin_(volume.end * 0.5F)
    {
        origin_.Set(origin_.x * Columns(), origin_.y * Rows(), origin_.z * Layers());
        // A step passes no sample.
        away_ = away_ / std::max(away_.AbsMax(), 1e-6F);
        auto const reach = static_cast<int>(std::ceil(origin_.Length())) + 1;
        first_ = -reach;
        last_ = reach;
    }

    /// Returns the index of the sample with the greatest value by `read`; the number of samples if there is none.
    template<typename Read>
    std::size_t Find(float x, float y, Read read) const
    {
        vec3 const start = origin_ + right_ * (x - middle_.x) + down_ * (y - middle_.y);
        std::size_t best = s_none;
        int bestValue = -1;
        auto const [first, last] = FindSteps(start);
        for (int step = first; step <= last; ++step)
        {
            std::size_t const index = FindSample(start + away_ * static_cast<float>(step));
            int const value = read(index);
            if (value > bestValue)
            {
                bestValue = value;
                best = index;
            }
        }
        return best;
    }

    static constexpr std::size_t s_none = ~std::size_t(0);

private:
    float Columns() const { return static_cast<float>(volume_.numColumns); }
    float Rows() const { return static_cast<float>(volume_.numRows); }
    float Layers() const { return static_cast<float>(volume_.numLayers); }
    /// Turns a direction of the whole volume, whose half extent is 1, into samples.
    vec3 ToSamples(vec3 const &v) const
    {
        vec3 const &half = volume_.halfExtent;
        vec3 const &end = volume_.end;
        return {v.x / half.x * end.x * Columns() / 2, v.y / half.y * end.y * Rows() / 2,
                v.z / half.z * end.z * Layers() / 2};
    }
    bool IsInside(vec3 const &place) const
    {
        return place.x >= 0 && place.y >= 0 && place.z >= 0 && place.x < Columns() && place.y < Rows() &&
               place.z < Layers();
    }
    /// Returns the first and last step of a line that lie inside; none if the first one comes after the last.
    std::pair<int, int> FindSteps(vec3 const &start) const
    {
        auto from = static_cast<float>(first_);
        auto to = static_cast<float>(last_);
        float const size[] = {Columns(), Rows(), Layers()};
        for (unsigned int axis = 0; axis < 3; ++axis)
        {
            float const step = away_.ToPtr()[axis];
            float const place = start.ToPtr()[axis];
            if (step == 0)
                continue;
            float const ends[] = {-place / step, (size[axis] - place) / step};
            from = std::max(from, std::min(ends[0], ends[1]));
            to = std::min(to, std::max(ends[0], ends[1]));
        }
        if (from > to)
            return {1, 0};
        auto first = static_cast<int>(std::ceil(from));
        auto last = static_cast<int>(std::floor(to));
        // What was rounded at the ends is looked at once more.
        while (first <= last && !IsInside(start + away_ * static_cast<float>(first)))
            ++first;
        while (first <= last && !IsInside(start + away_ * static_cast<float>(last)))
            --last;
        return {first, last};
    }
    std::size_t FindSample(vec3 const &place) const
    {
        return (static_cast<std::size_t>(place.z) * volume_.numRows + static_cast<std::size_t>(place.y)) *
                   volume_.numColumns +
               static_cast<std::size_t>(place.x);
    }

    SmallVolume const &volume_;
    vec3 right_;
    vec3 down_;
    vec3 away_;
    vec2 middle_;
    vec3 origin_;
    int first_;
    int last_;
};

int ReadBrightness(Pixel colour)
{
    return static_cast<int>((colour >> 16 & 255) + (colour >> 8 & 255) + (colour & 255));
}

} // namespace

SmallVolumePtr MakeSmallVolume(Content const &content, int channel, unsigned int limit,
                               std::function<bool(double)> const &progress)
{
    VolumeBase const &volume = *content.Get<VolumeBase>();
    unsigned int const longest = std::max({volume.GetNumLayers(), volume.GetNumRows(), volume.GetNumColumns()});
    std::span<Channel const> const channels = GetChannels(volume.GetSampleFormat());
    int const chosen = ChooseChannel(volume.GetSampleFormat(), channel);
    if (longest == 0 || channels.empty() || chosen >= static_cast<int>(channels.size()))
        return nullptr;
    unsigned int const factor = DivideUp(longest, std::max(limit, 1U));
    AutoPtr<VolumeBase> scaled = Scale(volume, factor, progress);
    if (scaled == nullptr)
        return nullptr;
    auto result = std::make_shared<SmallVolume>();
    result->numColumns = scaled->GetNumColumns();
    result->numRows = scaled->GetNumRows();
    result->numLayers = scaled->GetNumLayers();
    SetExtents(*result, volume, factor);
    if (chosen < 0)
        TakeColours(*result, std::move(scaled));
    else
        TakeValues(*result, *scaled, channels[static_cast<std::size_t>(chosen)]);
    return result;
}

void ComposeProjection(ImageBase &picture, SmallVolume const &volume, Rotation const &rotation, double zoom,
                       ToneMap const &tones, Pixel background)
{
    auto const width = static_cast<float>(picture.GetNumColumns());
    auto const height = static_cast<float>(picture.GetNumRows());
    float const unit = std::min(width, height) / 2 / volume.halfExtent.Length() * static_cast<float>(zoom);
    Projector const projector(volume, rotation, unit, width, height);
    double const range = (volume.high - volume.low) / s_largestValue;
    for (unsigned int y = 0; y < picture.GetNumRows(); ++y)
    {
        auto *const pixels = reinterpret_cast<Pixel *>(picture.SampleB(y, 0));
        for (unsigned int x = 0; x < picture.GetNumColumns(); ++x)
        {
            float const column = static_cast<float>(x) + 0.5F;
            float const row = static_cast<float>(y) + 0.5F;
            std::size_t const sample =
                volume.isColour
                    ? projector.Find(column, row, [&](std::size_t i) { return ReadBrightness(volume.colours[i]); })
                    : projector.Find(column, row, [&](std::size_t i) { return static_cast<int>(volume.values[i]); });
            if (sample == Projector::s_none)
                pixels[x] = background;
            else if (volume.isColour)
                pixels[x] = volume.colours[sample] | 0xFF000000;
            else
                pixels[x] = tones.MapValue(volume.low + volume.values[sample] * range);
        }
    }
}

} // namespace viewer
