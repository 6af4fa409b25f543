#include <quillmarsh/widgets/tooltips.h>

#include <quillmarsh/gui/gui_manager.h>
#include <quillmarsh/widgets/looknames.h>
#include <quillmarsh/widgets/measures.h>
#include <quillmarsh/widgets/textencoding.h>

#include <algorithm>
#include <cmath>

namespace quillmarsh::widgets
{

namespace
{

constexpr unsigned int s_highestLayer = ~0U;

/// Seconds without a tip after which the next one takes its time again.
constexpr double s_secondsOfHaste = 0.5;

/// In units: distance of the tip from the mouse, below which the cursor has its place, and greatest width of a line.
constexpr float s_cursorHeight = 20;
constexpr float s_wrapWidth = 320;

/// Asks a component for its tip, and its ancestors in turn. Returns whether one of them has one.
bool QueryParams(gui::Component &target, gui::ToolTipParams &params)
{
    gui::Watch<gui::Component> component(target);
    while (component.Get() != nullptr)
    {
        params.Show = false;
        params.ShowAtOnce = false;
        params.Text.clear();
        params.MousePosition = gui::Manager::Instance().GetMousePosition();
        params.ComponentPosition = component->GetAbsolutePosition();
        params.ComponentSize = component->GetSize();
        params.Offset = vec2(0, 0);
        gui::Message_ServiceCommand_ToolTip query(gui::ToolTipCommand_QueryParams, &params);
        if (component->DispatchMessage(query))
            return params.Show && !params.Text.empty();
        if (component.Get() != nullptr)
            component = component->GetParent();
    }
    return false;
}

} // namespace

ToolTips::ToolTips()
{
    SetVisible(false);
    SetGhost(true);
    SetLayer(s_highestLayer);
    SetShaderName(ShaderName_ToolTip);
    gui::Manager::Instance().CycleQueueRemove(*this);
    RegisterAsServiceProvider(gui::ToolTipServiceID);
}

ToolTips::~ToolTips() = default;

void ToolTips::SetDelay(double seconds)
{
    delay_ = seconds > 0 ? seconds : 0;
}

string ToolTips::GetCaption() const
{
    return text_;
}

void ToolTips::ServiceProviderPostEventDispatch(double timeDelta)
{
    gui::Manager const &manager = gui::Manager::Instance();
    idle_ += timeDelta;
    gui::Component &target = *manager.GetMouseOverTarget();
    bool const isPressed = manager.IsButtonDown() || manager.IsKeyDown() || manager.GetMouseWheelDelta() != 0 ||
                           manager.IsButtonPressed() || manager.IsCommandModeActive();
    if (!Follow(target, isPressed))
        return;
    bool const isShown = IsVisible();
    if (isShown)
        idle_ = 0;
    vec2 const mouse = manager.GetMousePosition();
    bool const hasMoved = mouse != lastMouse_;
    lastMouse_ = mouse;
    bool const hasRested = manager.GetMouseHoverTime() >= delay_ || idle_ < s_secondsOfHaste;
    if (hasMoved)
        wasAskedAtRest_ = false;
    bool const isAskedAgain = isShown ? hasMoved : hasRested && !wasAskedAtRest_;
    if (wasAsked_ && !isAskedAgain)
        return;
    wasAsked_ = true;
    wasAskedAtRest_ = hasRested;
    Ask(target, hasRested || isShown);
}

bool ToolTips::Follow(gui::Component &target, bool isPressed)
{
    // When the mouse has left the window, the component is still the target, but the mouse is no longer over it.
    gui::Component *const over = target.IsMouseOver() ? &target : nullptr;
    if (target_.Get() != over || over == nullptr)
    {
        HideTip();
        target_ = over;
        isDismissed_ = false;
        wasAsked_ = false;
        wasAskedAtRest_ = false;
    }
    if (isPressed)
    {
        HideTip();
        // A tip that was sent away makes the next one wait.
        idle_ = s_secondsOfHaste;
        isDismissed_ = true;
    }
    return over != nullptr && !isDismissed_;
}

void ToolTips::Ask(gui::Component &target, bool hasRested)
{
    gui::Watch<ToolTips> const self(*this);
    gui::Watch<gui::Component> const watch(target);
    gui::ToolTipParams params;
    bool const hasTip = QueryParams(target, params);
    if (self.Get() == nullptr)
        return;
    bool const isShown = hasTip && watch.Get() != nullptr && (hasRested || params.ShowAtOnce);
    if (isShown)
        ShowTip(params);
    else
        HideTip();
}

void ToolTips::ShowTip(gui::ToolTipParams const &params)
{
    bool const isSame = IsVisible() && params.Text == text_ && params.Offset == offset_;
    if (isSame)
        return;
    text_ = params.Text;
    anchor_ = params.MousePosition;
    offset_ = params.Offset;
    idle_ = 0;
    SetVisible(true);
    ReportDirtyGeometry();
}

void ToolTips::HideTip()
{
    if (!IsVisible())
        return;
    text_.clear();
    glyphs_.clear();
    SetVisible(false);
}

void ToolTips::RecalcSize()
{
    float const margin = Measures::Pixels(Measures::TextMargin);
    vec2 const margins(2 * margin, margin);
    float const room = gui::Manager::Instance().GetWindowSize().x - margins.x;
    glyphs_ = WrapText(*this, ToGlyphs(text_), std::min(Measures::Pixels(s_wrapWidth), room));
    SetSize(CalcTextSize(*this, glyphs_) + margins);
}

void ToolTips::RecalcLayout()
{
    vec2 const window = gui::Manager::Instance().GetWindowSize();
    vec2 place = anchor_ + offset_;
    float const below = place.y + Measures::Pixels(s_cursorHeight);
    bool const hasRoomBelow = below + GetSize().y <= window.y;
    place.y = hasRoomBelow ? below : place.y - GetSize().y - Measures::Pixels(Measures::Grid);
    auto const keepInside = [](float at, float size, float extent)
    { return std::round(std::max(std::min(at, extent - size), 0.0F)); };
    SetPosition(keepInside(place.x, GetSize().x, window.x), keepInside(place.y, GetSize().y, window.y));
}

} // namespace quillmarsh::widgets
