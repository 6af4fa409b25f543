#include "composer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace viewer
{

using namespace quillmarsh;

namespace
{

constexpr char const *s_differenceNames[] = {"absolute", "squared", "relative"};
/// Samples between two reports of progress.
constexpr std::size_t s_bandSamples = std::size_t(1) << 18;

string Describe(Content const &content)
{
    return sampled_data::GetFormatName(content.GetData().GetFormat()) + ", " +
           sampled_data::Describe(content.GetData().GetDimensions());
}

void CheckMatch(Content const &a, Content const &b)
{
    if (a.GetData().GetFormat() != b.GetData().GetFormat() ||
        a.GetData().GetDimensions() != b.GetData().GetDimensions() || !a.Get<ImageBase>() ||
        GetChannels(a.GetData().GetFormat()).empty())
        throw sampled_data::DataException("Only images of one format and size have a difference; these are " +
                                          Describe(a) + " and " + Describe(b) + '.');
}

/// The difference of two floats.
struct FloatDifference
{
    eDifference difference;

    double operator()(unsigned char const *first, unsigned char const *second) const
    {
        float a, b;
        std::memcpy(&a, first, sizeof(a));
        std::memcpy(&b, second, sizeof(b));
        if (a == b || (std::isnan(a) && std::isnan(b)))
            return 0;
        double const distance = std::abs(static_cast<double>(a) - static_cast<double>(b));
        switch (difference)
        {
        case eDifference::e_squared:
            return distance * distance;
        case eDifference::e_relative:
            // Beside an infinite value, any other one is nothing.
            return std::isinf(distance) ? 1 : distance / static_cast<double>(std::max(std::abs(a), std::abs(b)));
        default:
            return distance;
        }
    }
};

/// Fields of a word, and the largest value of the widest one.
struct WordFields
{
    struct Field
    {
        unsigned int shift = 0;
        unsigned int largest = 0;
        /// Makes the field as wide as the widest one.
        unsigned int factor = 0;
    };
    std::array<Field, 4> fields;
    unsigned int whole = 1;

    explicit WordFields(std::span<Channel const> channels)
    {
        for (Channel const &channel : channels)
            whole = std::max(whole, static_cast<unsigned int>(channel.largest));
        for (std::size_t i = 0; i < channels.size(); ++i)
        {
            auto const largest = static_cast<unsigned int>(channels[i].largest);
            fields[i] = {channels[i].shift, largest, whole / largest};
        }
    }
};

/// The greatest difference of the fields of two words.
template<typename Word, eDifference difference>
struct WordDifference
{
    static constexpr std::size_t s_numFields = sizeof(Word) == 1 ? 1 : 4;
    WordFields word;

    double operator()(unsigned char const *first, unsigned char const *second) const
    {
        Word a, b;
        std::memcpy(&a, first, sizeof(a));
        std::memcpy(&b, second, sizeof(b));
        // A fraction, so that only the greatest one is divided.
        unsigned int greatest = 0, whole = word.whole;
        for (std::size_t i = 0; i < s_numFields; ++i)
        {
            WordFields::Field const &field = word.fields[i];
            unsigned int const x = a >> field.shift & field.largest, y = b >> field.shift & field.largest;
            auto const distance = static_cast<unsigned int>(std::abs(static_cast<int>(x - y))) * field.factor;
            if constexpr (difference != eDifference::e_relative)
            {
                greatest = std::max(greatest, distance);
                continue;
            }
            unsigned int const ownWhole = std::max(x, y) * field.factor;
            if (distance * whole > greatest * ownWhole)
            {
                greatest = distance;
                whole = ownWhole;
            }
        }
        double const part = static_cast<double>(greatest) / whole;
        return difference == eDifference::e_squared ? part * part : part;
    }
};

/// Writes the differences of all samples. Returns false when it was stopped.
template<typename Difference>
bool WriteDifferences(ImageBase &result, ImageBase const &a, ImageBase const &b, Difference const &difference,
                      double scale, std::function<bool(double)> const &progress)
{
    std::size_t const size = a.GetSampleByteSize(), count = a.GetNumSamples();
    for (std::size_t i = 0; i < count;)
    {
        for (std::size_t const end = std::min(i + s_bandSamples, count); i < end; ++i)
        {
            auto const value =
                static_cast<float>(difference(a.GetSamplesB() + i * size, b.GetSamplesB() + i * size) * scale);
            std::memcpy(result.GetSamplesB() + i * sizeof(value), &value, sizeof(value));
        }
        if (progress && !progress(static_cast<double>(i) / static_cast<double>(count)))
            return false;
    }
    return true;
}

/// Writes the differences of two images of words.
template<typename Word>
bool WriteWordDifferences(ImageBase &result, ImageBase const &a, ImageBase const &b, eDifference difference,
                          double scale, std::function<bool(double)> const &progress)
{
    WordFields const fields(GetChannels(a.GetSampleFormat()));
    auto const write = [&](auto const &kind) { return WriteDifferences(result, a, b, kind, scale, progress); };
    switch (difference)
    {
    case eDifference::e_squared:
        return write(WordDifference<Word, eDifference::e_squared>{fields});
    case eDifference::e_relative:
        return write(WordDifference<Word, eDifference::e_relative>{fields});
    default:
        return write(WordDifference<Word, eDifference::e_absolute>{fields});
    }
}

} // namespace

std::span<char const *const> GetDifferenceNames()
{
    return s_differenceNames;
}

ContentPtr MakeDifference(Content const &a, Content const &b, eDifference difference, double scale,
                          std::function<bool(double)> const &progress)
{
    CheckMatch(a, b);
    ImageBase const &first = *a.Get<ImageBase>(), &second = *b.Get<ImageBase>();
    AutoPtr<ImageBase> result(ManufactureImage(e_format_FP32NormL, first.GetNumRows(), first.GetNumColumns()));
    bool isDone;
    if (GetChannels(first.GetSampleFormat()).front().isFloat)
        isDone = WriteDifferences(*result, first, second, FloatDifference{difference}, scale, progress);
    else if (first.GetSampleByteSize() == 1)
        isDone = WriteWordDifferences<std::uint8_t>(*result, first, second, difference, scale, progress);
    else if (first.GetSampleByteSize() == 2)
        isDone = WriteWordDifferences<std::uint16_t>(*result, first, second, difference, scale, progress);
    else
        isDone = WriteWordDifferences<std::uint32_t>(*result, first, second, difference, scale, progress);
    if (!isDone)
        return nullptr;
    return std::make_shared<Content>(sampled_data::SampledData(std::move(result)));
}

} // namespace viewer
