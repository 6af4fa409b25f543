#include "imagestate.h"

#include <quillmarsh/dataobjects/dataexception.h>

#include <algorithm>
#include <cmath>

namespace viewer
{

using namespace quillmarsh;

namespace
{

constexpr char const *s_toolNames[] = {"pan", "line", "rectangle"};
/// Seconds that the view must rest before its figures are computed.
constexpr double s_restTime = 0.15;
/// Part of a sample that is not in view yet.
constexpr double s_sliver = 1e-3;

} // namespace

std::span<char const *const> GetImageToolNames()
{
    return s_toolNames;
}

ImageState::ImageState(Workspace &workspace)
    : comparison(workspace),
      workspace_(workspace),
      measureTask_([&workspace] { workspace.Invalidate(); }),
      figuresTask_([&workspace] { workspace.Invalidate(); })
{
}

// The image.

void ImageState::Show(DocumentPtr const &document)
{
    LoadedPtr const loaded = document != nullptr ? document->GetLoaded() : nullptr;
    title_ = document != nullptr ? document->GetTitle() : string();
    if (loaded == loaded_)
        return;
    bool const isSameContent = loaded != nullptr && loaded_ != nullptr && loaded->content == loaded_->content;
    // Also over a while without an image.
    eSampleFormat const formerFormat = GetImage() != nullptr ? GetFormat() : lastFormat_;
    lastFormat_ = formerFormat;
    loaded_ = loaded;
    Change();
    if (isSameContent || GetImage() == nullptr)
        return;
    ImageBase const &image = *GetImage();
    place.SetImageSize({static_cast<double>(image.GetNumColumns()), static_cast<double>(image.GetNumRows())});
    std::span<Channel const> const channels = GetChannels(formerFormat);
    auto const channel = static_cast<std::size_t>(display.channel);
    bool const hasChannel = display.channel >= 0 && channel < channels.size();
    display.channel = hasChannel ? FindChannel(GetFormat(), channels[channel].name) : -1;
    if (measurement_)
        Measure(measurement_);
}

ImageBase const *ImageState::GetImage() const
{
    return GetLevels() != nullptr ? &GetLevels()->GetLevel(0) : nullptr;
}

eSampleFormat ImageState::GetFormat() const
{
    return GetImage() != nullptr ? GetImage()->GetSampleFormat() : e_format_none;
}

ImageBase const &ImageState::RequireImage() const
{
    if (GetImage() == nullptr)
        throw sampled_data::DataException("no image is shown");
    return *GetImage();
}

DisplaySettings ImageState::GetDisplayFor(eSampleFormat format) const
{
    DisplaySettings settings = display;
    if (settings.channel >= 0 && format != GetFormat())
        settings.channel =
            FindChannel(format, GetChannels(GetFormat())[static_cast<std::size_t>(settings.channel)].name);
    return settings;
}

SampleArea ImageState::GetVisibleArea() const
{
    ImageBase const *const image = GetImage();
    if (image == nullptr)
        return {};
    Placement const &placement = place.Get();
    ImagePlace::Size const &view = place.GetViewSize();
    auto const limit = [](double value, unsigned int size)
    { return static_cast<unsigned int>(std::clamp(value, 0.0, static_cast<double>(size))); };
    unsigned int const left = limit(std::floor(placement.ToImageX(0, view.width) + s_sliver), image->GetNumColumns());
    unsigned int const top = limit(std::floor(placement.ToImageY(0, view.height) + s_sliver), image->GetNumRows());
    unsigned int const right =
        limit(std::ceil(placement.ToImageX(view.width, view.width) - s_sliver), image->GetNumColumns());
    unsigned int const bottom =
        limit(std::ceil(placement.ToImageY(view.height, view.height) - s_sliver), image->GetNumRows());
    return {left, top, right - left, bottom - top};
}

// Figures.

void ImageState::Measure(std::optional<Measurement> const &measurement, bool isFinal)
{
    measurement_ = measurement;
    measured_.reset();
    measureTask_.Stop();
    ChangeMarks();
    if (!measurement_ || !isFinal || GetImage() == nullptr)
        return;
    measureTask_.Start([content = loaded_->content, measured = *measurement_](Jobs::Progress const &progress)
                       { return ComputeFigures(*content->Get<ImageBase>(), measured, progress); },
                       [this](Figures const &figures)
                       {
                           measured_ = figures;
                           ChangeMarks();
                       });
}

void ImageState::UpdateFigures(double seconds)
{
    ImageBase const *const image = GetImage();
    bool const isWanted = image != nullptr && (histogram.isShown || wantsFigures_ || wantsWindow_);
    if (!isWanted)
    {
        figuresTask_.Stop();
        figures_.reset();
        figuresKey_ = {};
        return;
    }
    SampleArea const whole = {0, 0, image->GetNumColumns(), image->GetNumRows()};
    FiguresKey const wanted = {loaded_->content, histogram.isOfView ? GetVisibleArea() : whole};
    if (wanted == figuresKey_)
        return;
    // While the image moves, the figures wait. Those of another image go at once.
    if (wanted.content != figuresKey_.content)
        figures_.reset();
    restTime_ = wanted.area == lastArea_ ? restTime_ + seconds : 0;
    lastArea_ = wanted.area;
    if (histogram.isOfView && figures_ && restTime_ < s_restTime)
    {
        workspace_.Invalidate();
        return;
    }
    figuresKey_ = wanted;
    figuresTask_.Start([wanted](Jobs::Progress const &progress)
                       { return ComputeFigures(*wanted.content->Get<ImageBase>(), wanted.area, progress); },
                       [this](Figures const &figures) { TakeFigures(figures); });
}

void ImageState::TakeFigures(Figures const &figures)
{
    figures_ = figures;
    if (wantsWindow_)
        ApplyWindow();
    ChangeMarks();
}

void ImageState::RequestFigures()
{
    wantsFigures_ = true;
    workspace_.Invalidate();
}

void ImageState::SetWindowByFigures()
{
    wantsWindow_ = true;
    if (figures_ && !figuresTask_.IsBusy())
        ApplyWindow();
    workspace_.Invalidate();
}

void ImageState::ApplyWindow()
{
    wantsWindow_ = false;
    std::span<Channel const> const channels = GetChannels(GetFormat());
    double low = std::numeric_limits<double>::infinity(), high = -low;
    for (std::size_t i = 0; i < figures_->channels.size() && i < channels.size(); ++i)
    {
        ChannelFigures const &figures = figures_->channels[i];
        bool const isShown = display.channel < 0 ? channels.size() == 1 || string(figures.name) != "alpha"
                                                 : display.channel == static_cast<int>(i);
        if (!isShown || !std::isfinite(figures.minimum) || !std::isfinite(figures.maximum))
            continue;
        low = std::min(low, figures.minimum / channels[i].largest);
        high = std::max(high, figures.maximum / channels[i].largest);
    }
    if (low > high)
        return;
    display.low = low;
    // One value only: it is black, and what is above it would be white.
    display.high = low < high ? high : low + 1;
    Change();
}

// Changes.

void ImageState::Change()
{
    ++revision_;
    workspace_.Invalidate();
}

void ImageState::ChangePlace()
{
    ++placeRevision_;
    workspace_.Invalidate();
}

void ImageState::ChangeMarks()
{
    workspace_.Invalidate();
}

void ImageState::Update(double seconds)
{
    if (comparison.Update(loaded_))
        Change();
    figuresTask_.Poll();
    measureTask_.Poll();
    UpdateFigures(seconds);
}

void ImageState::Close()
{
    comparison.End();
    figuresTask_.Close();
    measureTask_.Close();
    loaded_.reset();
}

} // namespace viewer
