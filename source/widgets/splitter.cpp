#include <quillmarsh/widgets/splitter.h>

#include <quillmarsh/widgets/looknames.h>
#include <quillmarsh/widgets/measures.h>

#include "source/widgets/dragthumb.h"
#include "source/widgets/inputhelp.h"
#include "source/widgets/units.h"

#include <algorithm>
#include <cmath>

namespace quillmarsh::widgets
{

namespace
{

/// Ghosts draw nothing, and let the mouse through to what is behind.
gui::Component *AddGhost(gui::Component &parent)
{
    auto *const ghost = new gui::Component;
    ghost->SetGhost(true);
    ghost->AttachTo(parent);
    return ghost;
}

} // namespace

class Splitter::SplitterThumb : public DragThumb
{
public:
    explicit SplitterThumb(Splitter &splitter) : DragThumb(splitter.vertical_, &splitter), splitter_(splitter)
    {
        SetShaderName(ShaderName_SplitterThumb);
        SetClientAreaCursorName(splitter.vertical_ ? CursorName_SplitVertical : CursorName_SplitHorizontal);
        SetCanFocus(true);
    }

    /// A program without a look has no such cursor, and does without.
    bool CacheCursorHandles(gui::Manager &manager) override
    {
        DragThumb::CacheCursorHandles(manager);
        return true;
    }

    void OnDragBegin() override { startExtent_ = splitter_.CalcFirstExtent(splitter_.fraction_); }

    void OnThumbMoved(float distance) override { MoveTo(startExtent_ + distance); }

    void OnThumbReleased() override {}

    using DragThumb::OnMouseButton;
    bool OnMouseButton(bool down, eMouseButton button, bool doubleClick, unsigned int repeatCount,
                       vec2 const &position) override
    {
        if (!down || !doubleClick || button != GetActionButton())
            return DragThumb::OnMouseButton(down, button, doubleClick, repeatCount, position);
        splitter_.ChangeByUser(splitter_.firstFraction_);
        return true;
    }

    using DragThumb::OnKeyboardQueryFocus;
    bool OnKeyboardQueryFocus(bool byMouse, eMouseButton button, bool &wantFocus, bool &needCharacterData) override
    {
        DefaultProcessQueryFocus(byMouse, button, wantFocus, needCharacterData);
        return true;
    }

    using DragThumb::OnKeyboardKey;
    bool OnKeyboardKey(bool down, eKey key, unsigned int, char) override
    {
        if (!down || IsControlPressed() || IsAltPressed())
            return false;
        bool const vertical = splitter_.vertical_;
        float const extent = splitter_.CalcFirstExtent(splitter_.fraction_);
        float const step = Measures::Pixels(Measures::Gap);
        if (key == (vertical ? e_key_arrow_up : e_key_arrow_left))
            MoveTo(extent - step);
        else if (key == (vertical ? e_key_arrow_down : e_key_arrow_right))
            MoveTo(extent + step);
        else if (key == e_key_home)
            splitter_.ChangeByUser(0);
        else if (key == e_key_end)
            splitter_.ChangeByUser(1);
        else
            return false;
        return true;
    }

private:
    void MoveTo(float extent)
    {
        float const room = splitter_.CalcRoom();
        if (room > 0)
            splitter_.ChangeByUser(std::clamp(extent / room, 0.0F, 1.0F));
    }

    Splitter &splitter_;
    float startExtent_ = 0;
};

Splitter::Splitter(bool vertical, gui::Component *parent, vec2 const &size)
    : vertical_(vertical),
      sizeInUnits_(LimitUnits(size)),
      first_(AddGhost(*this)),
      second_(AddGhost(*this)),
      thumb_(nullptr)
{
    SetGhost(true);
    thumb_ = new SplitterThumb(*this);
    if (parent != nullptr)
        AttachTo(*parent);
}

Splitter::~Splitter() = default;

void Splitter::SetFraction(float fraction)
{
    if (std::isnan(fraction))
        return;
    fraction_ = firstFraction_ = std::clamp(fraction, 0.0F, 1.0F);
    ReportDirtyGeometry();
}

void Splitter::SetMinSizes(float first, float second)
{
    minFirst_ = LimitUnits(first);
    minSecond_ = LimitUnits(second);
    ReportDirtyGeometry();
}

void Splitter::ChangeByUser(float fraction)
{
    float const room = CalcRoom();
    float const oldExtent = CalcFirstExtent(fraction_);
    float const extent = CalcFirstExtent(fraction);
    if (room <= 0 || extent == oldExtent)
        return;
    // A bar that stops at a limit does not go on beyond it.
    fraction_ = extent / room;
    ReportDirtyGeometry();
    action_(fraction_);
}

float Splitter::CalcRoom() const
{
    float const extent = vertical_ ? GetSize().y : GetSize().x;
    return std::max(0.0F, extent - Measures::Pixels(Measures::SplitterWidth));
}

float Splitter::CalcFirstExtent(float fraction) const
{
    float const room = CalcRoom();
    float const minFirst = Measures::Pixels(minFirst_);
    float const minSecond = Measures::Pixels(minSecond_);
    if (minFirst + minSecond > room)
        return std::round(room * minFirst / (minFirst + minSecond));
    return std::clamp(std::round(room * fraction), minFirst, std::max(minFirst, std::floor(room - minSecond)));
}

void Splitter::RecalcSize()
{
    SetSize(Measures::Pixels(sizeInUnits_));
}

void Splitter::RecalcLayout()
{
    vec2 const size = GetSize();
    float const extent = vertical_ ? size.y : size.x;
    float const first = CalcFirstExtent(fraction_);
    float const bar = std::max(0.0F, std::min(Measures::Pixels(Measures::SplitterWidth), extent));
    auto const place = [&](gui::Component &component, float begin, float length)
    {
        component.SetPosition(vertical_ ? vec2(0, begin) : vec2(begin, 0));
        component.SetSize(vertical_ ? vec2(size.x, length) : vec2(length, size.y));
    };
    place(*first_, 0, first);
    place(*thumb_, first, bar);
    place(*second_, first + bar, std::max(0.0F, CalcRoom() - first));
}

} // namespace quillmarsh::widgets
