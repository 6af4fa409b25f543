#include "imageview.h"

#include "numbers.h"
#include "theme.h"

#include <quillmarsh/gui/gui_manager.h>
#include <quillmarsh/widgets/measures.h>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace viewer
{

using namespace quillmarsh;
using widgets::Measures;

namespace
{

constexpr int s_wheelNotch = 120;
/// Seconds after the last turn of the wheel until its line is shown.
constexpr double s_wheelRestTime = 0.4;
/// Units around the divider in which it is grabbed.
constexpr float s_dividerReach = 5;
/// Sets of colours that are kept: of two images and a difference, and one more.
constexpr std::size_t s_maxTones = 4;

int TakeNotches(int &rest, int delta)
{
    bool const goesOn = (rest < 0) == (delta < 0);
    int const sum = delta + (goesOn ? rest : 0);
    rest = sum % s_wheelNotch;
    return sum / s_wheelNotch;
}

/// Moves the pixels of a part of a picture. What comes in from outside is left as it is.
void MovePixels(ImageBase &picture, PixelArea const &area, long right, long down)
{
    auto const width = static_cast<long>(area.width), height = static_cast<long>(area.height);
    auto const fromX = area.x + static_cast<unsigned int>(std::max(-right, 0L));
    auto const toX = area.x + static_cast<unsigned int>(std::max(right, 0L));
    auto const byteSize = static_cast<std::size_t>(width - std::abs(right)) * sizeof(Pixel);
    long const count = height - std::abs(down);
    for (long i = 0; i < count; ++i)
    {
        // Rows that are still needed are read ahead of their overwriting.
        long const row = static_cast<long>(area.y) + (down > 0 ? height - 1 - i : i);
        std::memmove(picture.SampleB(static_cast<unsigned int>(row), toX),
                     picture.SampleB(static_cast<unsigned int>(row - down), fromX), byteSize);
    }
}

bool AreEqual(PixelArea const &a, PixelArea const &b)
{
    return a.x == b.x && a.y == b.y && a.width == b.width && a.height == b.height;
}

bool Contains(PixelArea const &area, vec2 const &position)
{
    auto const x = static_cast<double>(position.x), y = static_cast<double>(position.y);
    return x >= area.x && x < area.x + area.width && y >= area.y && y < area.y + area.height;
}

} // namespace

ImageView::ImageView(gui::Component *parent, std::shared_ptr<ImageState> state) : View(parent), state_(std::move(state))
{
    SetCanFocus(true);
}

ImageView::~ImageView() = default;

void ImageView::Update(double seconds)
{
    state_->place.SetMaxZoom(64 * std::max(1.0, static_cast<double>(Measures::GetScale())));
    if (state_->GetLevels() == nullptr)
    {
        // What is not shown any more is not kept either.
        panes_.clear();
        last_ = {};
    }
    if (wheelLine_.empty())
        return;
    wheelTime_ += seconds;
    if (wheelTime_ >= s_wheelRestTime)
        state_->GetWorkspace().Echo(std::exchange(wheelLine_, string()));
    else
        state_->GetWorkspace().Invalidate();
}

void ImageView::DrawSelf(gui::Renderer &renderer)
{
    Pixel const background = IsLightTheme() ? 0xFFCDD2DA : 0xFF15171B;
    bool const isSame =
        revision_ == state_->GetRevision() && placeRevision_ == state_->GetPlaceRevision() && background_ == background;
    revision_ = state_->GetRevision();
    placeRevision_ = state_->GetPlaceRevision();
    background_ = background;
    if (!isSame)
        Invalidate();
    View::DrawSelf(renderer);
}

// Picture.

ToneMap const &ImageView::GetTones(Pane const &pane) const
{
    eSampleFormat const format = pane.levels->GetLevel(0).GetSampleFormat();
    for (Tones const &tones : tones_)
    {
        if (tones.format == format && tones.display == pane.display)
            return tones.map;
    }
    if (tones_.size() == s_maxTones)
        tones_.erase(tones_.begin());
    tones_.push_back({format, pane.display, ToneMap(format, pane.display)});
    return tones_.back().map;
}

void ImageView::ComposePane(ImageBase &picture, Pane const &pane, PixelArea const &area) const
{
    // Without the smaller levels, the nearest samples are quick to find.
    bool const isSmooth = pane.levels->GetNumLevels() > 1;
    ComposeImage(picture, area, *pane.levels, GetTones(pane), pane.placement, isSmooth, state_->level, background_);
}

ImageView::LastPicture ImageView::DescribePicture(unsigned int width, unsigned int height) const
{
    LastPicture picture = {state_->GetRevision(), background_, width, height, {}};
    for (Pane const &pane : panes_)
    {
        picture.panes.push_back({pane.levels, pane.area, pane.placement.zoom,
                                 std::lround(pane.placement.ToViewX(0, width)),
                                 std::lround(pane.placement.ToViewY(0, height))});
    }
    return picture;
}

bool ImageView::CanMovePicture(LastPicture const &next) const
{
    bool const isSame = last_.revision == next.revision && last_.background == next.background &&
                        last_.width == next.width && last_.height == next.height &&
                        last_.panes.size() == next.panes.size();
    if (!isSame)
        return false;
    for (std::size_t i = 0; i < next.panes.size(); ++i)
    {
        LastPane const &from = last_.panes[i], &to = next.panes[i];
        bool const isNear = std::abs(to.left - from.left) < static_cast<long>(to.area.width) &&
                            std::abs(to.top - from.top) < static_cast<long>(to.area.height);
        if (!isNear || from.levels != to.levels || from.zoom != to.zoom || !AreEqual(from.area, to.area))
            return false;
    }
    return !next.panes.empty();
}

void ImageView::MovePane(ImageBase &picture, std::size_t index, LastPicture const &next) const
{
    LastPane const &from = last_.panes[index], &to = next.panes[index];
    PixelArea const &area = to.area;
    long const right = to.left - from.left, down = to.top - from.top;
    MovePixels(picture, area, right, down);
    auto const width = static_cast<unsigned int>(std::abs(right)), height = static_cast<unsigned int>(std::abs(down));
    unsigned int const x = right > 0 ? area.x : area.x + area.width - width;
    unsigned int const y = down > 0 ? area.y : area.y + area.height - height;
    if (width != 0)
        ComposePane(picture, panes_[index], {x, area.y, width, area.height});
    if (height != 0)
        ComposePane(picture, panes_[index], {area.x, y, area.width, height});
}

void ImageView::Compose(ImageBase &picture)
{
    unsigned int const width = picture.GetNumColumns(), height = picture.GetNumRows();
    state_->place.SetViewSize(GetPaneSize(*state_, width, height));
    panes_ = MakePanes(*state_, width, height);
    LastPicture next = DescribePicture(width, height);
    if (CanMovePicture(next))
    {
        for (std::size_t i = 0; i < panes_.size(); ++i)
            MovePane(picture, i, next);
    }
    else
    {
        if (panes_.size() != 1)
            std::fill_n(reinterpret_cast<Pixel *>(picture.GetSamplesB()), std::size_t{width} * height, background_);
        for (Pane const &pane : panes_)
            ComposePane(picture, pane, pane.area);
    }
    last_ = std::move(next);
}

// Mouse.

std::optional<ImageView::ImagePosition> ImageView::FindPosition(vec2 const &position) const
{
    if (panes_.empty())
        return std::nullopt;
    Pane const *pane = &panes_.front();
    for (Pane const &other : panes_)
    {
        if (Contains(other.area, position))
            pane = &other;
    }
    double const width = std::round(static_cast<double>(GetSize().x)),
                 height = std::round(static_cast<double>(GetSize().y));
    return ImagePosition{pane, pane->placement.ToImageX(static_cast<double>(position.x), width),
                         pane->placement.ToImageY(static_cast<double>(position.y), height)};
}

bool ImageView::IsOnDivider(vec2 const &position) const
{
    if (!state_->comparison.Is(eComparison::e_divider))
        return false;
    float const place = static_cast<float>(state_->comparison.settings.divider) * GetSize().x;
    return std::abs(position.x - place) <= Measures::Pixels(s_dividerReach);
}

ImageView::eDrag ImageView::ChooseDrag(eMouseButton button, vec2 const &position)
{
    if (state_->GetLevels() == nullptr)
        return eDrag::e_none;
    if (button == e_mouse_button_middle)
        return eDrag::e_image;
    if (button != e_mouse_button_left)
        return eDrag::e_none;
    if (IsOnDivider(position))
        return eDrag::e_divider;
    gui::Manager const &manager = gui::Manager::Instance();
    bool const isLine = manager.IsKeyModifierPressed(e_key_modifier_control);
    bool const isRectangle = manager.IsKeyModifierPressed(e_key_modifier_shift);
    if (!isLine && !isRectangle && state_->tool == eImageTool::e_pan)
        return eDrag::e_image;
    drawn_ = {};
    drawn_.isLine = isLine || (!isRectangle && state_->tool == eImageTool::e_line);
    return eDrag::e_measurement;
}

bool ImageView::CacheCursorHandles(gui::Manager &manager)
{
    dividerCursor_ = manager.GetCursor(widgets::CursorName_SplitHorizontal);
    return View::CacheCursorHandles(manager);
}

bool ImageView::OnMouseQueryCursor(gui::Cursor const *&cursor, gui::eCommandArea area, vec2 const &position)
{
    if (dividerCursor_ == nullptr || (drag_ == eDrag::e_none ? !IsOnDivider(position) : drag_ != eDrag::e_divider))
        return View::OnMouseQueryCursor(cursor, area, position);
    cursor = dividerCursor_;
    return true;
}

bool ImageView::OnMouseButton(bool down, eMouseButton button, bool doubleClick, unsigned int repeatCount,
                              vec2 const &position)
{
    if (down && doubleClick && button == e_mouse_button_left && state_->tool == eImageTool::e_pan)
        return ToggleFit(position);
    if (!down || repeatCount != 0 || drag_ != eDrag::e_none)
        return drag_ != eDrag::e_none;
    eDrag const drag = ChooseDrag(button, position);
    if (drag == eDrag::e_none || !RequestMouseCapture())
        return false;
    drag_ = drag;
    dragFrom_ = dragAt_ = position;
    return true;
}

bool ImageView::ToggleFit(vec2 const &position)
{
    std::optional<ImagePosition> const at = FindPosition(position);
    if (!at)
        return false;
    bool const isFit = state_->place.IsFit();
    state_->GetWorkspace().Run(isFit ? "zoom 1 -x=" + FormatNumber(at->x) + " -y=" + FormatNumber(at->y) : "zoom fit");
    return true;
}

bool ImageView::OnMouseCapture(bool begin)
{
    if (!begin && drag_ != eDrag::e_none)
        EndDrag();
    return true;
}

void ImageView::DragTo(vec2 const &position)
{
    vec2 const moved = position - dragAt_;
    dragAt_ = position;
    switch (drag_)
    {
    case eDrag::e_none:
        break;
    case eDrag::e_image:
        state_->place.Pan(static_cast<double>(moved.x), static_cast<double>(moved.y));
        state_->ChangePlace();
        break;
    case eDrag::e_divider:
        state_->comparison.settings.divider =
            std::clamp(static_cast<double>(position.x / std::max(GetSize().x, 1.0f)), 0.0, 1.0);
        state_->Change();
        break;
    case eDrag::e_measurement:
    {
        std::optional<ImagePosition> const from = FindPosition(dragFrom_), to = FindPosition(position);
        if (!from || !to)
            break;
        // Rectangles have whole samples; the ends of lines have no more digits than the mouse.
        double const parts = drawn_.isLine ? 10 : 1;
        auto const round = [parts](double value) { return std::floor(value * parts) / parts; };
        drawn_ = {drawn_.isLine, round(from->x), round(from->y), round(to->x), round(to->y)};
        state_->Measure(drawn_, false);
        break;
    }
    }
}

void ImageView::EndDrag()
{
    eDrag const drag = std::exchange(drag_, eDrag::e_none);
    if (dragAt_ == dragFrom_)
        return;
    Workspace &workspace = state_->GetWorkspace();
    switch (drag)
    {
    case eDrag::e_none:
        break;
    case eDrag::e_image:
        workspace.Echo("pan " + FormatNumber(static_cast<double>(dragAt_.x - dragFrom_.x)) + ' ' +
                       FormatNumber(static_cast<double>(dragAt_.y - dragFrom_.y)));
        break;
    case eDrag::e_divider:
        workspace.Echo("compare -divider=" + FormatNumber(state_->comparison.settings.divider, 3));
        break;
    case eDrag::e_measurement:
        state_->Measure(drawn_);
        workspace.Echo(drawn_.FormatCommand());
        break;
    }
}

bool ImageView::OnMouseMove(bool hover, double, vec2 const &position)
{
    if (hover)
        return false;
    mouse_ = position;
    if (drag_ != eDrag::e_none)
        DragTo(position);
    // The status line shows what is under the mouse.
    state_->GetWorkspace().Invalidate();
    return true;
}

bool ImageView::OnMouseEnterExit(bool enter, bool, vec2 const &position)
{
    mouse_.reset();
    if (enter)
        mouse_ = position;
    state_->GetWorkspace().Invalidate();
    return true;
}

bool ImageView::OnMouseWheel(int delta, vec2 const &position)
{
    int notches = TakeNotches(wheelRest_, delta);
    std::optional<ImagePosition> const at = FindPosition(position);
    if (notches == 0 || !at)
        return true;
    for (; notches > 0; --notches)
        state_->place.Step(true, at->x, at->y);
    for (; notches < 0; ++notches)
        state_->place.Step(false, at->x, at->y);
    wheelTime_ = 0;
    wheelLine_ = "zoom fit";
    if (!state_->place.IsFit())
    {
        wheelLine_ = "zoom " + FormatNumber(state_->place.Get().zoom) + " -x=" + FormatNumber(at->x) +
                     " -y=" + FormatNumber(at->y);
    }
    state_->ChangePlace();
    return true;
}

// Status.

string ImageView::FormatValues() const
{
    std::optional<ImagePosition> const at = mouse_ ? FindPosition(*mouse_) : std::nullopt;
    if (!at)
        return string();
    ImageBase const &image = at->pane->levels->GetLevel(0);
    bool const isInside = at->x >= 0 && at->y >= 0 && at->x < image.GetNumColumns() && at->y < image.GetNumRows();
    if (!isInside)
        return string();
    auto const column = static_cast<unsigned int>(at->x), row = static_cast<unsigned int>(at->y);
    auto const format = [&](ImageBase const &source)
    {
        bool const hasSample = column < source.GetNumColumns() && row < source.GetNumRows();
        return hasSample ? FormatSample(source.GetSampleFormat(), source.SampleB(row, column)) : string("-");
    };
    string text = '(' + FormatNumber(column) + ", " + FormatNumber(row) + ")   ";
    ImageLevelsPtr const other = state_->comparison.GetOther();
    if (other == nullptr)
        return text + format(image);
    text += format(*state_->GetImage()) + "  |  " + format(other->GetLevel(0));
    return state_->comparison.GetDifference() == at->pane->levels ? text + "  |  " + format(image) : text;
}

string ImageView::GetStatus() const
{
    ImageBase const *const image = state_->GetImage();
    if (image == nullptr)
        return string();
    string text = FormatValues();
    if (!text.empty())
        text += "   ";
    text += FormatZoom(state_->place.Get().zoom) + "   " + FormatNumber(image->GetNumColumns()) + " × " +
            FormatNumber(image->GetNumRows()) + ' ' + sampled_data::GetFormatName(image->GetSampleFormat());
    if (state_->level > 0)
        text += "   level " + FormatNumber(state_->level);
    return text;
}

} // namespace viewer
