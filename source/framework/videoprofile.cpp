#include <quillmarsh/framework/videoprofile.h>

#include <quillmarsh/basetools/streameffectors.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/framework/videoconfig.h>

#include <cstdint>
#include <limits>
#include <utility>

namespace quillmarsh
{

namespace
{

/// Distance of a mode from a wish. The arithmetic wraps around on purpose: a mode that exceeds the wish in size, or has
/// a lower bit depth, is farther away than any other.
std::uint32_t MeasureDistance(DisplayModeProperties const &mode, DisplayModeConfig const &wish)
{
    return (mode.GetBitDepth() - wish.BitDepth) * 1'000'000u + (wish.Width - mode.GetWidth()) * 1000u +
           (wish.Height - mode.GetHeight());
}

/// Deductions for the differences between a frame buffer and a wish; the second ones decide between equal first ones.
/// They cannot overflow, whatever the bit counts are.
struct Deductions
{
    std::int64_t first;
    std::int64_t second;

    bool operator<(Deductions const &other) const
    {
        return first != other.first ? first < other.first : second < other.second;
    }
};

std::int64_t GetDifference(unsigned int a, unsigned int b)
{
    return a > b ? a - b : b - a;
}

Deductions MeasureDeductions(FrameBufferConfig const &config, FrameBufferConfig const &wish)
{
    std::int64_t const flags =
        (config.Fullscreen != wish.Fullscreen) + (config.HardwareRasterizer != wish.HardwareRasterizer);
    std::int64_t const colorBits =
        GetDifference(config.RedBits, wish.RedBits) + GetDifference(config.GreenBits, wish.GreenBits) +
        GetDifference(config.BlueBits, wish.BlueBits) + GetDifference(config.AlphaBits, wish.AlphaBits);
    std::int64_t const accumulationBits = GetDifference(config.AccumulationRedBits, wish.AccumulationRedBits) +
                                          GetDifference(config.AccumulationGreenBits, wish.AccumulationGreenBits) +
                                          GetDifference(config.AccumulationBlueBits, wish.AccumulationBlueBits) +
                                          GetDifference(config.AccumulationAlphaBits, wish.AccumulationAlphaBits);
    return {flags * 100'000'000 + colorBits * 1'000'000 + GetDifference(config.DepthBits, wish.DepthBits) * 100 +
                GetDifference(config.StencilBits, wish.StencilBits) * 10'000,
            accumulationBits * 10'000'000 + GetDifference(config.BackBufferCount, wish.BackBufferCount) * 1'000'000};
}

/// Number with blanks in front of it.
string MakeField(unsigned int number, std::size_t width)
{
    string const text = MakeString(number);
    return string(width > text.size() ? width - text.size() : 0, ' ') + text;
}

constexpr char const *s_legend[] = {
    "Legend:",
    "FS    = fullscreen",
    "HWR   = hardware-rasterizer",
    "BBC   = back-buffer-count",
    "BBL   = back-buffer-layout (r.g.b.a)",
    "DSBL  = depth-stencil-buffer-layout (d.s)",
    "ACCBL = accumulation-buffer-layout (r.g.b.a)",
};

} // namespace

void VideoProfile::Filter(VideoProfile &out, DisplayModeConfigFilter &modeFilter,
                          FrameBufferConfigFilter &frameBufferFilter) const
{
    VideoProfile kept;
    kept.SetDriverInfo(driverDescription_, driverVersion_, driverGuid_);
    for (DisplayModeProperties const &mode : displayModes_)
    {
        for (unsigned int i = 0; i < mode.GetNumRefreshFrequencies(); ++i)
        {
            DisplayModeConfig const config(mode.GetWidth(), mode.GetHeight(), mode.GetBitDepth(),
                                           mode.GetRefreshFrequency(i));
            if (modeFilter.Filter(config))
                kept.Add(config);
        }
    }
    for (FrameBufferConfig const &config : frameBufferConfigs_)
    {
        if (frameBufferFilter.Filter(config))
            kept.frameBufferConfigs_.push_back(config);
    }
    out = std::move(kept);
}

DisplayModeProperties const *VideoProfile::SelectClosestLowerDisplayModeProperties(DisplayModeConfig const &wish) const
{
    DisplayModeProperties const *closest = nullptr;
    std::uint32_t least = std::numeric_limits<std::uint32_t>::max();
    for (DisplayModeProperties const &mode : displayModes_)
    {
        bool const isLarger = mode.GetWidth() > wish.Width || mode.GetHeight() > wish.Height;
        if (mode.GetBitDepth() < wish.BitDepth && isLarger)
            continue;
        std::uint32_t const distance = MeasureDistance(mode, wish);
        if (distance < least)
        {
            least = distance;
            closest = &mode;
        }
    }
    return closest;
}

FrameBufferConfig const *VideoProfile::SelectClosestFrameBufferConfig(FrameBufferConfig const &wish) const
{
    FrameBufferConfig const *closest = nullptr;
    Deductions least{};
    for (FrameBufferConfig const &config : frameBufferConfigs_)
    {
        Deductions const deductions = MeasureDeductions(config, wish);
        if (closest == nullptr || deductions < least)
        {
            least = deductions;
            closest = &config;
        }
    }
    return closest;
}

bool VideoProfile::ConstructClosestValidVideoConfig(VideoConfig const &wish, VideoConfig &out) const
{
    out = wish;
    DisplayModeProperties const *const mode = SelectClosestLowerDisplayModeProperties(wish.DisplayMode);
    if (mode == nullptr)
        return false;
    out.DisplayMode = DisplayModeConfig(mode->GetWidth(), mode->GetHeight(), mode->GetBitDepth(),
                                        mode->GetClosestLowerRefreshFrequency(wish.DisplayMode.RefreshFrequency));

    FrameBufferConfig const *const frameBuffer = SelectClosestFrameBufferConfig(wish.FrameBuffer);
    if (frameBuffer == nullptr)
        return false;
    out.FrameBuffer = *frameBuffer;
    return true;
}

void VideoProfile::DumpGeneralInfo(ostream &out, unsigned int tabs) const
{
    IndentEffector const indent(tabs);
    out << indent << "DriverDescription: " << driverDescription_ << nl;
    out << indent << "DriverVersion....: " << driverVersion_ << nl;
    out << indent << "DriverGUID.......: " << driverGuid_ << nl;
}

void VideoProfile::DumpDisplayModeProperties(ostream &out, unsigned int tabs) const
{
    for (DisplayModeProperties const &mode : displayModes_)
    {
        out << IndentEffector(tabs) << MakeField(mode.GetWidth(), 4) << " x " << MakeField(mode.GetHeight(), 4) << " x "
            << MakeField(mode.GetBitDepth(), 2) << "  @ ";
        for (unsigned int i = 0; i < mode.GetNumRefreshFrequencies(); ++i)
            out << ' ' << MakeString(mode.GetRefreshFrequency(i));
        out << nl;
    }
    out.flush();
}

void VideoProfile::DumpFrameBufferConfigs(ostream &out, bool legend, unsigned int tabs) const
{
    IndentEffector const indent(tabs);
    out << indent << " FS    HWR    BBC        BBL        DSBL        ACCBL" << nl;
    for (FrameBufferConfig const &config : frameBufferConfigs_)
    {
        out << indent << ' ' << (config.Fullscreen ? 'x' : ' ') << "      " << (config.HardwareRasterizer ? 'x' : ' ')
            << "      " << MakeString(config.BackBufferCount) << "       " << config.MakeBackBufferDesc(".") << "      "
            << config.MakeDepthStencilDesc(".") << "      " << config.MakeAccumulationDesc(".") << nl;
    }
    if (!legend)
        return;
    out << nl;
    for (char const *line : s_legend)
        out << indent << line << nl;
}

void VideoProfile::Dump(ostream &out) const
{
    TitleEffector title("General information", 70, '=');
    out << title;
    DumpGeneralInfo(out, 0);
    out << title("Display modes: " + MakeString(GetNumDisplayModeProperties()) + " found.");
    DumpDisplayModeProperties(out, 0);
    out << title("Frame-buffer-configurations: " + MakeString(GetNumFrameBufferConfigs()) + " found.");
    DumpFrameBufferConfigs(out, true, 0);
    out << std::endl;
}

} // namespace quillmarsh
