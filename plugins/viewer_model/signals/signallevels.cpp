#include "signallevels.h"

#include <quillmarsh/basetools/paralleljobs.h>
#include <quillmarsh/dataobjects/signalbase.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>

namespace viewer
{

using namespace quillmarsh;

namespace
{

constexpr unsigned int s_run = SignalLevels::s_factor;
constexpr float s_infinity = std::numeric_limits<float>::infinity();
constexpr float s_nan = std::numeric_limits<float>::quiet_NaN();

/// Takes a run of samples and writes the extent of each channel, in the order of GetChannels().
using ReduceRun = void (*)(unsigned char const *samples, Extent *const *extents, std::size_t run);

/// Channels of whole bytes, `size` in a sample. Lanes of 16 bytes keep vector units busy; a lane has one channel.
template<unsigned int size, unsigned int... offsets>
void ReduceBytes(unsigned char const *samples, Extent *const *extents, std::size_t run)
{
    constexpr unsigned int width = 16;
    std::array<unsigned char, width> low;
    std::array<unsigned char, width> high = {};
    std::array<unsigned short, width> sum = {};
    low.fill(255);
    for (std::size_t row = 0; row < s_run * size / width; ++row)
    {
        unsigned char const *const bytes = samples + row * width;
        // A loop for each, so that compilers use their vector units.
        for (unsigned int i = 0; i < width; ++i)
            low[i] = low[i] < bytes[i] ? low[i] : bytes[i];
        for (unsigned int i = 0; i < width; ++i)
            high[i] = high[i] > bytes[i] ? high[i] : bytes[i];
        for (unsigned int i = 0; i < width; ++i)
            sum[i] = static_cast<unsigned short>(sum[i] + bytes[i]);
    }
    auto const fold = [&](unsigned int offset, Extent &extent)
    {
        unsigned int least = 255;
        unsigned int most = 0;
        unsigned int total = 0;
        for (unsigned int i = offset; i < width; i += size)
        {
            least = std::min<unsigned int>(least, low[i]);
            most = std::max<unsigned int>(most, high[i]);
            total += sum[i];
        }
        extent = {static_cast<float>(least), static_cast<float>(most), static_cast<float>(total) / s_run};
    };
    unsigned int channel = 0;
    (fold(offsets, extents[channel++][run]), ...);
}

/// A field of a 16-bit word, by shift and mask.
template<unsigned int shift, unsigned int mask>
struct Field
{
    static Extent Reduce(unsigned short const *words)
    {
        unsigned short low = mask;
        unsigned short high = 0;
        unsigned int sum = 0;
        for (unsigned int i = 0; i < s_run; ++i)
        {
            auto const value = static_cast<unsigned short>(words[i] >> shift & mask);
            low = std::min(low, value);
            high = std::max(high, value);
            sum += value;
        }
        return {static_cast<float>(low), static_cast<float>(high), static_cast<float>(sum) / s_run};
    }
};

template<typename... Fields>
void ReduceWords(unsigned char const *samples, Extent *const *extents, std::size_t run)
{
    std::array<unsigned short, s_run> words;
    std::memcpy(words.data(), samples, sizeof(words));
    unsigned int channel = 0;
    ((extents[channel++][run] = Fields::Reduce(words.data())), ...);
}

void ReduceFloats(unsigned char const *samples, Extent *const *extents, std::size_t run)
{
    constexpr unsigned int width = 8;
    std::array<float, s_run> values;
    std::memcpy(values.data(), samples, sizeof(values));
    std::array<float, width> low;
    std::array<float, width> high;
    std::array<float, width> sum = {};
    std::array<float, width> count = {};
    low.fill(s_infinity);
    high.fill(-s_infinity);
    for (unsigned int row = 0; row < s_run; row += width)
    {
        for (unsigned int i = 0; i < width; ++i)
        {
            float const value = values[row + i];
            // False for NaN.
            low[i] = value < low[i] ? value : low[i];
            high[i] = value > high[i] ? value : high[i];
            sum[i] += value == value ? value : 0;
            count[i] += value == value ? 1.0F : 0.0F;
        }
    }
    for (unsigned int i = 1; i < width; ++i)
    {
        low[0] = std::min(low[0], low[i]);
        high[0] = std::max(high[0], high[i]);
        sum[0] += sum[i];
        count[0] += count[i];
    }
    extents[0][run] = count[0] > 0 ? Extent{low[0], high[0], sum[0] / count[0]} : Extent{s_nan, s_nan, s_nan};
}

struct FormatReducer
{
    eSampleFormat format;
    ReduceRun reduce;
};

constexpr FormatReducer s_reducers[] = {
    {e_format_L8, &ReduceBytes<1, 0>},
    {e_format_A8, &ReduceBytes<1, 0>},
    {e_format_A8L8, &ReduceBytes<2, 0, 1>},
    {e_format_A4R4G4B4, &ReduceWords<Field<8, 15>, Field<4, 15>, Field<0, 15>, Field<12, 15>>},
    {e_format_A1R5G5B5, &ReduceWords<Field<10, 31>, Field<5, 31>, Field<0, 31>, Field<15, 1>>},
    {e_format_X8R8G8B8, &ReduceBytes<4, 2, 1, 0>},
    {e_format_A8R8G8B8, &ReduceBytes<4, 2, 1, 0, 3>},
    {e_format_FP32NormL, &ReduceFloats},
    {e_format_FP32NormA, &ReduceFloats},
};

ReduceRun FindReducer(eSampleFormat format)
{
    auto const *const row = std::find_if(std::begin(s_reducers), std::end(s_reducers),
                                         [&](FormatReducer const &candidate) { return candidate.format == format; });
    return row != std::end(s_reducers) ? row->reduce : nullptr;
}

/// Adds up extents of runs, and single values.
class Gathering
{
public:
    void Add(Extent const &extent, double weight)
    {
        if (std::isnan(extent.low))
            return;
        low_ = std::min(low_, extent.low);
        high_ = std::max(high_, extent.high);
        sum_ += static_cast<double>(extent.mean) * weight;
        weight_ += weight;
    }
    Extent Get() const
    {
        return weight_ > 0 ? Extent{low_, high_, static_cast<float>(sum_ / weight_)} : Extent{s_nan, s_nan, s_nan};
    }

private:
    float low_ = s_infinity;
    float high_ = -s_infinity;
    double sum_ = 0;
    double weight_ = 0;
};

} // namespace

SignalLevels::SignalLevels(ContentPtr content) : content_(std::move(content))
{
    SignalBase const &signal = *content_->Get<SignalBase>();
    channels_ = GetChannels(signal.GetSampleFormat());
    samples_ = signal.GetSamplesB();
    numSamples_ = signal.GetNumSamples();
    sampleByteSize_ = signal.GetSampleByteSize();
    levels_.resize(channels_.size());
}

SignalLevels::~SignalLevels() = default;

std::shared_ptr<SignalLevels const> SignalLevels::Build(ContentPtr content, std::function<bool(double)> const &progress)
{
    std::shared_ptr<SignalLevels> const levels(new SignalLevels(std::move(content)));
    if (!levels->BuildFirst(progress))
        return nullptr;
    levels->BuildRest();
    return levels;
}

bool SignalLevels::BuildFirst(std::function<bool(double)> const &progress)
{
    ReduceRun const reduce = FindReducer(content_->GetData().GetFormat());
    std::size_t const numRuns = static_cast<std::size_t>(numSamples_ / s_run);
    if (reduce == nullptr || numRuns == 0)
        return true;
    std::array<Extent *, 4> extents = {};
    for (std::size_t channel = 0; channel < channels_.size(); ++channel)
        extents[channel] = levels_[channel].emplace_back(numRuns).data();
    // Threads share a part; between two parts the work can stop.
    constexpr std::size_t runsOfJob = std::size_t(1) << 15;
    unsigned int const numThreads = GetNumParallelThreads();
    std::size_t const runsOfPart = runsOfJob * numThreads;
    for (std::size_t part = 0; part < numRuns; part += runsOfPart)
    {
        if (progress && !progress(static_cast<double>(part) / static_cast<double>(numRuns)))
            return false;
        std::size_t const end = std::min(numRuns, part + runsOfPart);
        RunInParallel(numThreads, (end - part + runsOfJob - 1) / runsOfJob,
                      [&](std::size_t job)
                      {
                          std::size_t const first = part + job * runsOfJob;
                          for (std::size_t run = first; run < std::min(end, first + runsOfJob); ++run)
                              reduce(samples_ + run * s_run * sampleByteSize_, extents.data(), run);
                      });
    }
    return true;
}

void SignalLevels::BuildRest()
{
    for (std::vector<std::vector<Extent>> &levels : levels_)
    {
        while (!levels.empty() && levels.back().size() >= s_factor)
        {
            std::vector<Extent> next(levels.back().size() / s_factor);
            for (std::size_t run = 0; run < next.size(); ++run)
            {
                Gathering gathering;
                for (std::size_t i = run * s_factor; i < (run + 1) * s_factor; ++i)
                    gathering.Add(levels.back()[i], 1);
                next[run] = gathering.Get();
            }
            levels.push_back(std::move(next));
        }
    }
}

Extent SignalLevels::GetExtent(unsigned int channel, std::uint64_t begin, std::uint64_t end) const
{
    Gathering gathering;
    end = std::min(end, numSamples_);
    auto const addSample = [&](std::uint64_t sample)
    {
        auto const value = static_cast<float>(GetValue(channel, sample));
        gathering.Add({value, value, value}, 1);
    };
    std::vector<std::vector<Extent>> const &levels = levels_[channel];
    double weight = 1;
    // The ends that fill no run of the next level are taken from this one; level 0 is the samples themselves.
    for (std::size_t level = 0; begin < end; ++level)
    {
        auto const add = [&](std::uint64_t index)
        {
            if (level == 0)
                addSample(index);
            else
                gathering.Add(levels[level - 1][static_cast<std::size_t>(index)], weight);
        };
        bool const isLast = level == levels.size();
        while (begin < end && (isLast || begin % s_factor != 0))
            add(begin++);
        while (begin < end && end % s_factor != 0)
            add(--end);
        begin /= s_factor;
        end /= s_factor;
        weight *= s_factor;
    }
    return gathering.Get();
}

} // namespace viewer
