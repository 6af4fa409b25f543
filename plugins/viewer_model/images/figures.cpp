#include "figures.h"

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

/// Samples between two reports of progress.
constexpr std::size_t s_bandSamples = std::size_t(1) << 20;
constexpr unsigned int s_numParts = 256;

/// Counts of samples by their bytes, exact at any number of them.
class Counts
{
public:
    virtual ~Counts() = default;
    virtual void Add(unsigned char const *samples, std::size_t count) = 0;
    /// Writes the figures of all channels; they have their names.
    virtual void Finish(std::span<Channel const> channels, std::vector<ChannelFigures> &figures) const = 0;
};

/// Figures of one channel from the number of samples with each value of 0 to 255.
class ValueCounts
{
public:
    void Add(unsigned int value, std::uint64_t count) { counts_[value] += count; }

    void Finish(double largest, ChannelFigures &figures) const
    {
        std::uint64_t number = 0, sum = 0;
        figures.minimum = std::numeric_limits<double>::infinity();
        for (unsigned int value = 0; value < counts_.size(); ++value)
        {
            if (counts_[value] == 0)
                continue;
            number += counts_[value];
            sum += counts_[value] * value;
            figures.minimum = std::min<double>(figures.minimum, value);
            figures.maximum = value;
            auto const part = static_cast<std::size_t>(value * s_numParts / largest);
            figures.histogram[std::min<std::size_t>(part, s_numParts - 1)] += counts_[value];
        }
        figures.mean = static_cast<double>(sum) / static_cast<double>(number);
        double squares = 0;
        for (unsigned int value = 0; value < counts_.size(); ++value)
            squares += static_cast<double>(counts_[value]) * (value - figures.mean) * (value - figures.mean);
        figures.deviation = std::sqrt(squares / static_cast<double>(number));
    }

private:
    std::array<std::uint64_t, 256> counts_{};
};

/// Samples of one or two bytes: each word by itself, in several tables so that equal neighbours do not wait for each
/// other.
template<typename Word>
class WordCounts : public Counts
{
public:
    WordCounts() : tables_(s_numTables << 8 * sizeof(Word)) {}

    void Add(unsigned char const *samples, std::size_t count) override
    {
        for (std::size_t i = 0; i < count; ++i)
        {
            Word word;
            std::memcpy(&word, samples + i * sizeof(Word), sizeof(Word));
            ++tables_[word * s_numTables + i % s_numTables];
        }
    }

    void Finish(std::span<Channel const> channels, std::vector<ChannelFigures> &figures) const override
    {
        std::vector<ValueCounts> values(channels.size());
        for (std::size_t i = 0; i < tables_.size(); ++i)
        {
            auto const word = static_cast<Word>(i / s_numTables);
            unsigned char bytes[sizeof(Word)];
            std::memcpy(bytes, &word, sizeof(Word));
            for (std::size_t channel = 0; tables_[i] != 0 && channel < channels.size(); ++channel)
                values[channel].Add(static_cast<unsigned int>(channels[channel].read(bytes)), tables_[i]);
        }
        for (std::size_t channel = 0; channel < channels.size(); ++channel)
            values[channel].Finish(channels[channel].largest, figures[channel]);
    }

private:
    static constexpr std::size_t s_numTables = sizeof(Word) == 1 ? 4 : 2;
    std::vector<std::uint64_t> tables_;
};

/// Samples of four bytes: each byte by itself.
class ByteCounts : public Counts
{
public:
    void Add(unsigned char const *samples, std::size_t count) override
    {
        for (std::size_t i = 0; i < count; ++i, samples += 4)
        {
            for (std::size_t byte = 0; byte < 4; ++byte)
                ++tables_[byte][samples[byte]];
        }
    }

    void Finish(std::span<Channel const> channels, std::vector<ChannelFigures> &figures) const override
    {
        unsigned char const places[4] = {0, 1, 2, 3};
        for (std::size_t channel = 0; channel < channels.size(); ++channel)
        {
            ValueCounts values;
            auto const &table = tables_[static_cast<std::size_t>(channels[channel].read(places))];
            for (unsigned int value = 0; value < table.size(); ++value)
                values.Add(value, table[value]);
            values.Finish(channels[channel].largest, figures[channel]);
        }
    }

private:
    std::array<std::array<std::uint64_t, 256>, 4> tables_{};
};

/// Floats: means and squares of blocks, which are joined without the loss of one long sum.
class FloatCounts : public Counts
{
public:
    FloatCounts() : histogram_(s_numParts) {}

    void Add(unsigned char const *samples, std::size_t count) override
    {
        constexpr std::size_t block = 1024;
        for (std::size_t i = 0; i < count; i += block)
            AddBlock(samples + i * sizeof(float), std::min(block, count - i));
    }

    void Finish(std::span<Channel const>, std::vector<ChannelFigures> &figures) const override
    {
        ChannelFigures &result = figures.front();
        bool const isInfinite = numInfinite_[0] + numInfinite_[1] > 0;
        constexpr double infinity = std::numeric_limits<double>::infinity();
        constexpr double nothing = std::numeric_limits<double>::quiet_NaN();
        result.numNaN = numNaN_;
        result.histogram = histogram_;
        bool const isEmpty = number_ == 0 && !isInfinite;
        result.minimum = isEmpty ? nothing : minimum_;
        result.maximum = isEmpty ? nothing : maximum_;
        if (numInfinite_[0] > 0)
            result.minimum = -infinity;
        if (numInfinite_[1] > 0)
            result.maximum = infinity;
        result.mean = isEmpty ? nothing : mean_;
        if (isInfinite)
            result.mean = (numInfinite_[0] > 0 ? -infinity : 0) + (numInfinite_[1] > 0 ? infinity : 0);
        result.deviation = number_ == 0 || isInfinite ? nothing : std::sqrt(squares_ / number_);
    }

private:
    void AddBlock(unsigned char const *samples, std::size_t count)
    {
        std::array<double, 1024> values;
        std::size_t number = 0;
        double sum = 0;
        for (std::size_t i = 0; i < count; ++i)
        {
            float value;
            std::memcpy(&value, samples + i * sizeof(value), sizeof(value));
            if (std::isnan(value))
            {
                ++numNaN_;
                continue;
            }
            double const scaled = std::clamp<double>(static_cast<double>(value) * s_numParts, 0, s_numParts - 1);
            ++histogram_[static_cast<std::size_t>(scaled)];
            if (std::isinf(value))
            {
                ++numInfinite_[value > 0 ? 1 : 0];
                continue;
            }
            values[number++] = static_cast<double>(value);
            sum += static_cast<double>(value);
            minimum_ = std::min(minimum_, static_cast<double>(value));
            maximum_ = std::max(maximum_, static_cast<double>(value));
        }
        if (number == 0)
            return;
        double const mean = sum / static_cast<double>(number);
        double squares = 0;
        for (std::size_t i = 0; i < number; ++i)
            squares += (values[i] - mean) * (values[i] - mean);
        Join(static_cast<double>(number), mean, squares);
    }

    void Join(double number, double mean, double squares)
    {
        double const total = number_ + number;
        double const step = mean - mean_;
        mean_ += step * (number / total);
        squares_ += squares + step * step * (number_ * number / total);
        number_ = total;
    }

    double number_ = 0;
    double mean_ = 0;
    double squares_ = 0;
    double minimum_ = std::numeric_limits<double>::infinity();
    double maximum_ = -std::numeric_limits<double>::infinity();
    std::uint64_t numNaN_ = 0;
    std::uint64_t numInfinite_[2] = {0, 0};
    std::vector<std::uint64_t> histogram_;
};

AutoPtr<Counts> MakeCounts(eSampleFormat format)
{
    std::span<Channel const> const channels = GetChannels(format);
    if (channels.empty())
        return nullptr;
    if (channels.front().isFloat)
        return std::make_unique<FloatCounts>();
    switch (sample_formats::ExtractByteSize(format))
    {
    case 1:
        return std::make_unique<WordCounts<std::uint8_t>>();
    case 2:
        return std::make_unique<WordCounts<std::uint16_t>>();
    default:
        return std::make_unique<ByteCounts>();
    }
}

Figures Finish(eSampleFormat format, Counts const *counts, std::uint64_t numSamples)
{
    Figures result;
    result.numSamples = numSamples;
    std::span<Channel const> const channels = GetChannels(format);
    for (Channel const &channel : channels)
    {
        ChannelFigures &figures = result.channels.emplace_back();
        figures.name = channel.name;
        figures.histogram.resize(s_numParts);
    }
    if (counts && numSamples > 0)
        counts->Finish(channels, result.channels);
    return result;
}

} // namespace

std::optional<Figures> ComputeFigures(ImageBase const &image, SampleArea const &area,
                                      std::function<bool(double)> const &progress)
{
    eSampleFormat const format = image.GetSampleFormat();
    AutoPtr<Counts> const counts = MakeCounts(format);
    unsigned int const left = std::min(area.x, image.GetNumColumns()), top = std::min(area.y, image.GetNumRows());
    std::size_t const width = std::min(area.width, image.GetNumColumns() - left);
    std::size_t const height = std::min(area.height, image.GetNumRows() - top);
    if (width == 0 || height == 0 || !counts)
        return Finish(format, nullptr, std::uint64_t{width} * height);
    std::size_t const sampleSize = image.GetSampleByteSize(), rowSize = image.GetRowByteSize();
    std::size_t const rowsOfBand = std::max<std::size_t>(s_bandSamples / width, 1);
    for (std::size_t row = 0; row < height;)
    {
        std::size_t const end = std::min(row + rowsOfBand, height);
        for (; row < end; ++row)
            counts->Add(image.GetSamplesB() + (top + row) * rowSize + left * sampleSize, width);
        if (progress && !progress(static_cast<double>(row) / static_cast<double>(height)))
            return std::nullopt;
    }
    return Finish(format, counts.get(), std::uint64_t{width} * height);
}

Figures ComputeLineFigures(ImageBase const &image, double x0, double y0, double x1, double y1)
{
    eSampleFormat const format = image.GetSampleFormat();
    AutoPtr<Counts> const counts = MakeCounts(format);
    double const startX = std::floor(x0), startY = std::floor(y0);
    double const wayX = std::floor(x1) - startX, wayY = std::floor(y1) - startY;
    double const numSteps = std::max(std::abs(wayX), std::abs(wayY));
    if (!counts || !std::isfinite(numSteps) || !std::isfinite(startX + startY))
        return Finish(format, nullptr, 0);
    // The steps that may lie in the image, of both axes.
    double first = 0, last = numSteps;
    auto const cut = [&](double start, double way, double size)
    {
        if (way == 0)
            return;
        double const a = -start * numSteps / way, b = (size - start) * numSteps / way;
        first = std::max(first, std::floor(std::min(a, b)) - 1);
        last = std::min(last, std::ceil(std::max(a, b)) + 1);
    };
    cut(startX, wayX, image.GetNumColumns());
    cut(startY, wayY, image.GetNumRows());
    std::uint64_t numSamples = 0;
    for (double step = first; step <= last; ++step)
    {
        double const part = numSteps == 0 ? 0 : step / numSteps;
        double const x = std::floor(startX + 0.5 + wayX * part), y = std::floor(startY + 0.5 + wayY * part);
        if (x < 0 || y < 0 || x >= image.GetNumColumns() || y >= image.GetNumRows())
            continue;
        counts->Add(image.SampleB(static_cast<unsigned int>(y), static_cast<unsigned int>(x)), 1);
        ++numSamples;
    }
    return Finish(format, counts.get(), numSamples);
}

} // namespace viewer
