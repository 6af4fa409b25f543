// Tells in words why a profile does not offer a configuration.
#include <quillmarsh/framework/videoprofile.h>

#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/framework/videoconfig.h>

#include "framebufferfields.h"

#include <algorithm>
#include <span>

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

string Join(std::span<string const> texts)
{
    string joined;
    for (string const &text : texts)
    {
        joined += joined.empty() ? "" : ", ";
        joined += text;
    }
    return joined;
}

/// Joins offers; a long list is cut, and tells how many are left out.
string JoinOffers(std::span<string const> offers)
{
    static constexpr std::size_t s_limit = 8;
    if (offers.empty())
        return "nothing";
    if (offers.size() <= s_limit)
        return Join(offers);
    return Join(offers.first(s_limit)) + " and " + MakeString(static_cast<unsigned int>(offers.size() - s_limit)) +
           " more";
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
    std::vector<string> differences;
    for (FrameBufferField const &field : s_frameBufferFields)
    {
        string const offered = field.makeText(closest);
        string const wished = field.makeText(wish);
        if (offered != wished)
            differences.push_back(string(field.label).append(" " + offered).append(" instead of " + wished));
    }
    return "FrameBufferConfiguration: the wishes are not offered together; the closest offer has " + Join(differences) +
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
