// Tells in words why a profile does not offer a configuration.
#include <quillmarsh/framework/videoprofile.h>

#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/framework/videoconfig.h>

#include "framebufferfields.h"

#include <algorithm>

namespace quillmarsh
{

namespace
{

/// Adds an offer to a list, unless the list has it.
void AddOffer(std::vector<string> &offers, string const &offer)
{
    if (std::ranges::find(offers, offer) == offers.end())
        offers.push_back(offer);
}

/// Joins offers; a long list is cut, and tells how many are left out.
string JoinOffers(std::vector<string> const &offers)
{
    static constexpr std::size_t s_limit = 8;
    if (offers.empty())
        return "nothing";
    string text = offers.front();
    for (std::size_t i = 1; i < std::min(offers.size(), s_limit); ++i)
        text += ", " + offers[i];
    if (offers.size() > s_limit)
        text += " and " + MakeString(static_cast<unsigned int>(offers.size() - s_limit)) + " more";
    return text;
}

string MakeLine(string const &label, string const &wish, std::vector<string> const &offers)
{
    return label + ": wished " + wish + ", offered " + JoinOffers(offers) + ".\n";
}

/// A line for each value that no offer has.
string DescribeValues(std::vector<FrameBufferConfig> const &configs, FrameBufferConfig const &wish)
{
    string text;
    for (FrameBufferField const &field : s_frameBufferFields)
    {
        std::vector<string> offers;
        for (FrameBufferConfig const &config : configs)
            AddOffer(offers, field.makeText(config));
        string const wished = field.makeText(wish);
        if (std::ranges::find(offers, wished) == offers.end())
            text += MakeLine(field.label, wished, offers);
    }
    return text;
}

/// A line with what is different in the closest offer.
string DescribeClosest(FrameBufferConfig const &closest, FrameBufferConfig const &wish)
{
    string differences;
    for (FrameBufferField const &field : s_frameBufferFields)
    {
        string const offered = field.makeText(closest);
        string const wished = field.makeText(wish);
        if (offered != wished)
            differences +=
                (differences.empty() ? "" : ", ") + string(field.label) + " " + offered + " instead of " + wished;
    }
    return "FrameBufferConfiguration: the wishes are not offered together; the closest offer has " + differences +
           ".\n";
}

} // namespace

string VideoProfile::DescribeMismatch(VideoConfig const &config) const
{
    string text;
    if (!IsValid(config.FrameBuffer))
    {
        string const values = DescribeValues(frameBufferConfigs_, config.FrameBuffer);
        text = values.empty() ? DescribeClosest(*SelectClosestFrameBufferConfig(config.FrameBuffer), config.FrameBuffer)
                              : values;
    }
    if (!config.FrameBuffer.Fullscreen || IsValid(config.DisplayMode))
        return text;

    DisplayModeConfig const &wish = config.DisplayMode;
    std::vector<string> modes;
    std::vector<string> frequencies;
    string const wishedMode = DisplayModeProperties(wish.Width, wish.Height, wish.BitDepth).MakeDesc(" x ");
    for (DisplayModeProperties const &mode : displayModes_)
    {
        modes.push_back(mode.MakeDesc(" x "));
        for (unsigned int i = 0; modes.back() == wishedMode && i < mode.GetNumRefreshFrequencies(); ++i)
            AddOffer(frequencies, MakeString(mode.GetRefreshFrequency(i)));
    }
    if (std::ranges::find(modes, wishedMode) == modes.end())
        return text + MakeLine("DisplayMode", wishedMode, modes);
    return text + MakeLine("RefreshFrequency of " + wishedMode, MakeString(wish.RefreshFrequency), frequencies);
}

} // namespace quillmarsh
