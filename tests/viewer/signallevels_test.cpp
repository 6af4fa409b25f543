// Extremes and means of signals, against a plain look at every sample.
#include "viewer_model/signals/signallevels.h"

#include <quillmarsh/dataobjects/signalbase.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <random>

namespace viewer
{
namespace
{

using namespace quillmarsh;

ContentPtr MakeContent(eSampleFormat format, unsigned int numSamples)
{
    AutoPtr<SignalBase> signal(ManufactureSignal(format, numSamples));
    std::mt19937 random(numSamples);
    bool const isFloat = GetChannels(format)[0].isFloat;
    for (unsigned int i = 0; i < signal->GetTotalByteSize(); i += isFloat ? 4 : 1)
    {
        float const value = static_cast<float>(static_cast<int>(random() % 2001) - 1000) / 64;
        if (isFloat)
            std::memcpy(signal->GetSamplesB() + i, &value, sizeof(value));
        else
            signal->GetSamplesB()[i] = static_cast<unsigned char>(random());
    }
    return std::make_shared<Content>(sampled_data::SampledData(std::move(signal)));
}

/// Looks at every sample.
Extent ComputeExtent(SignalLevels const &levels, unsigned int channel, std::uint64_t begin, std::uint64_t end)
{
    double low = INFINITY;
    double high = -INFINITY;
    double sum = 0;
    unsigned int count = 0;
    for (std::uint64_t i = begin; i < std::min(end, levels.GetNumSamples()); ++i)
    {
        double const value = levels.GetValue(channel, i);
        if (std::isnan(value))
            continue;
        low = std::min(low, value);
        high = std::max(high, value);
        sum += value;
        ++count;
    }
    if (count == 0)
        return {NAN, NAN, NAN};
    return {static_cast<float>(low), static_cast<float>(high), static_cast<float>(sum / count)};
}

void ExpectSame(SignalLevels const &levels, unsigned int channel, std::uint64_t begin, std::uint64_t end)
{
    Extent const wanted = ComputeExtent(levels, channel, begin, end);
    Extent const found = levels.GetExtent(channel, begin, end);
    string const place =
        std::to_string(begin) + " to " + std::to_string(end) + " of channel " + std::to_string(channel);
    if (std::isnan(wanted.low))
    {
        EXPECT_TRUE(std::isnan(found.low) && std::isnan(found.high) && std::isnan(found.mean)) << place;
        return;
    }
    EXPECT_EQ(wanted.low, found.low) << place;
    EXPECT_EQ(wanted.high, found.high) << place;
    EXPECT_NEAR(wanted.mean, found.mean, 1e-5 * (1 + std::abs(wanted.mean))) << place;
}

TEST(SignalLevels, AgreeWithEverySample)
{
    // Sizes around whole runs of each level.
    for (unsigned int const numSamples : {1U, 31U, 32U, 33U, 1023U, 1024U, 1025U, 33'000U})
    {
        for (eSampleFormat const format :
             {e_format_L8, e_format_A8, e_format_A8L8, e_format_A4R4G4B4, e_format_A1R5G5B5, e_format_X8R8G8B8,
              e_format_A8R8G8B8, e_format_FP32NormL, e_format_FP32NormA})
        {
            SCOPED_TRACE(sampled_data::GetFormatName(format) + ' ' + std::to_string(numSamples));
            auto const levels = SignalLevels::Build(MakeContent(format, numSamples));
            std::mt19937 random(numSamples);
            auto const draw = [&](unsigned int count) { return static_cast<unsigned int>(random() % count); };
            for (unsigned int channel = 0; channel < levels->GetSignalChannels().size(); ++channel)
            {
                ExpectSame(*levels, channel, 0, numSamples);
                ExpectSame(*levels, channel, 0, std::uint64_t(1) << 40);
                ExpectSame(*levels, channel, numSamples / 2, numSamples / 2);
                ExpectSame(*levels, channel, numSamples, numSamples + 5);
                for (unsigned int i = 0; i < 20; ++i)
                {
                    unsigned int const begin = draw(numSamples);
                    ExpectSame(*levels, channel, begin, begin + 1 + draw(numSamples - begin));
                }
            }
        }
    }
}

TEST(SignalLevels, LeaveNaNOutAndKeepInfinity)
{
    constexpr unsigned int numSamples = 5000;
    AutoPtr<SignalBase> signal(ManufactureSignal(e_format_FP32NormL, numSamples));
    auto *const samples = reinterpret_cast<float *>(signal->GetSamplesB());
    for (unsigned int i = 0; i < numSamples; ++i)
        samples[i] = i < 2048 ? NAN : i % 2 == 0 ? NAN : static_cast<float>(i);
    samples[4001] = -INFINITY;
    auto const levels = SignalLevels::Build(std::make_shared<Content>(sampled_data::SampledData(std::move(signal))));
    EXPECT_TRUE(std::isnan(levels->GetExtent(0, 0, 2048).high));
    EXPECT_TRUE(std::isnan(levels->GetExtent(0, 3, 1900).low));
    EXPECT_EQ(2049, levels->GetExtent(0, 0, 3000).low);
    EXPECT_EQ(2999, levels->GetExtent(0, 0, 3000).high);
    EXPECT_EQ(-INFINITY, levels->GetExtent(0, 100, 5000).low);
    EXPECT_EQ(-INFINITY, levels->GetExtent(0, 4001, 4002).high);
}

TEST(SignalLevels, StopWhenAsked)
{
    ContentPtr const content = MakeContent(e_format_L8, 5'000'000);
    std::vector<double> parts;
    EXPECT_EQ(nullptr, SignalLevels::Build(content,
                                           [&](double part)
                                           {
                                               parts.push_back(part);
                                               return parts.size() < 3;
                                           }));
    ASSERT_EQ(3U, parts.size());
    EXPECT_EQ(0, parts[0]);
    EXPECT_TRUE(parts[1] < parts[2] && parts[2] < 1);
}

} // namespace
} // namespace viewer
