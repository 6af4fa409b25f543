#include "composer.h"

#include <algorithm>
#include <cmath>
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
        a.GetData().GetDimensions() != b.GetData().GetDimensions() || !a.Get<ImageBase>())
        throw sampled_data::DataException("Only images of one format and size have a difference; these are " +
                                          Describe(a) + " and " + Describe(b) + '.');
}

/// Difference of two values, which are parts of the nominal range.
double Subtract(double a, double b, eDifference difference)
{
    if (a == b || (std::isnan(a) && std::isnan(b)))
        return 0;
    double const distance = std::abs(a - b);
    switch (difference)
    {
    case eDifference::e_squared:
        return distance * distance;
    case eDifference::e_relative:
        // Beside an infinite value, any other one is nothing.
        return std::isinf(distance) ? 1 : distance / std::max(std::abs(a), std::abs(b));
    default:
        return distance;
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
    std::span<Channel const> const channels = GetChannels(first.GetSampleFormat());
    AutoPtr<ImageBase> result(ManufactureImage(e_format_FP32NormL, first.GetNumRows(), first.GetNumColumns()));
    std::size_t const size = first.GetSampleByteSize(), count = first.GetNumSamples();
    for (std::size_t i = 0; i < count; ++i)
    {
        double greatest = 0;
        for (Channel const &channel : channels)
        {
            double const distance =
                Subtract(channel.read(first.GetSamplesB() + i * size) / channel.largest,
                         channel.read(second.GetSamplesB() + i * size) / channel.largest, difference);
            if (!(distance <= greatest))
                greatest = distance;
        }
        auto const value = static_cast<float>(greatest * scale);
        std::memcpy(result->GetSamplesB() + i * sizeof(value), &value, sizeof(value));
        bool const isEndOfBand = i % s_bandSamples == s_bandSamples - 1 || i + 1 == count;
        if (isEndOfBand && progress && !progress(static_cast<double>(i + 1) / static_cast<double>(count)))
            return nullptr;
    }
    return std::make_shared<Content>(sampled_data::SampledData(std::move(result)));
}

} // namespace viewer
