#include "turnpane.h"

#include <quillmarsh/gui/gui_renderer.h>
#include <quillmarsh/gui/gui_widgets.h>
#include <quillmarsh/widgets/measures.h>

#include <algorithm>
#include <cmath>
#include <sstream>

namespace viewer::volumes
{

using namespace quillmarsh;

namespace
{

/// Degrees for a pixel.
constexpr double s_turnStep = 0.4;
constexpr double s_wheelFactor = 1.15;

} // namespace

/// Stands in front of the area, and lets the mouse through.
class TurnPane::Notes : public gui::Component
{
public:
    explicit Notes(TurnPane &pane) : pane_(pane)
    {
        SetGhost(true);
        AttachTo(pane);
    }

    void DrawSelf(gui::Renderer &renderer) override { pane_.DrawNotes(renderer); }

private:
    TurnPane &pane_;
};

TurnPane::TurnPane(PaneContext &context)
    : Pane(context, ePane::e_turned, nullptr),
      area_(new gui::InterleavedRenderArea(this, s_areaCode)),
      notes_(new Notes(*this))
{
    area_->SetGhost(true);
    area_->SetVisible(false);
    notes_->SetVisible(false);
}

void TurnPane::SetDrawsArea(bool draws, string const &reason)
{
    reason_ = reason;
    if (draws == drawsArea_)
        return;
    drawsArea_ = draws;
    area_->SetVisible(draws);
    notes_->SetVisible(draws);
    ReportDirtyGeometry();
    GetScene().Changed();
}

void TurnPane::RecalcLayout()
{
    for (gui::Component *const child : {area_, notes_})
    {
        child->SetPosition(0, 0);
        child->SetSize(GetSize());
    }
}

bool TurnPane::FindPlace(vec2 const &, vec3 &) const
{
    return false;
}

string TurnPane::GetTitle() const
{
    RotationAngles const angles = FindAngles(GetScene().GetRotation());
    std::ostringstream title;
    title << "Volume " << std::lround(angles.yaw) << "°, " << std::lround(angles.pitch) << "°";
    return title.str();
}

void TurnPane::DrawSelf(gui::Renderer &renderer)
{
    if (!drawsArea_)
        View::DrawSelf(renderer);
}

void TurnPane::Compose(ImageBase &picture)
{
    if (GetScene().GetVolume() != nullptr && GetScene().ComposeTurned(picture, s_background))
        return;
    auto *const pixels = reinterpret_cast<Pixel *>(picture.GetSamplesB());
    std::fill(pixels, pixels + picture.GetNumSamples(), s_background);
}

void TurnPane::DrawOver(gui::Renderer &renderer)
{
    if (GetScene().GetVolume() == nullptr)
        return;
    DrawNotes(renderer);
    vec2 const place(widgets::Measures::Pixels(widgets::Measures::Gap),
                     GetSize().y - widgets::Measures::Pixels(widgets::Measures::RowHeight));
    DrawNote(renderer, place, "Greatest values. " + reason_, {200, 200, 200, 255});
}

void TurnPane::DrawNotes(gui::Renderer &renderer)
{
    if (GetScene().GetVolume() == nullptr)
        return;
    DrawFrame(renderer);
    if (GetScene().GetSmallVolume() == nullptr)
        DrawNote(renderer, GetSize() / 2.0F - vec2(widgets::Measures::Pixels(48), 0), "Preparing the volume…");
}

bool TurnPane::DragLeft(vec2 const &, vec2 const &distance)
{
    if (distance.x == 0 && distance.y == 0)
        return false;
    RotationAngles const angles = {-double(distance.x) * s_turnStep, -double(distance.y) * s_turnStep, 0};
    GetScene().SetRotation(Turn(GetScene().GetRotation(), angles));
    return true;
}

string TurnPane::GetLeftLine() const
{
    return MakeTurnLine(GetScene());
}

void TurnPane::DragMiddle(vec2 const &distance)
{
    GetScene().SetRotation(Turn(GetScene().GetRotation(), {0, 0, double(distance.x) * s_turnStep}));
}

string TurnPane::GetMiddleLine() const
{
    return MakeTurnLine(GetScene());
}

void TurnPane::Step(int count)
{
    ZoomAt(std::pow(s_wheelFactor, -count), GetSize() / 2.0F);
}

string TurnPane::GetStepLine() const
{
    return GetZoomLine();
}

void TurnPane::ZoomAt(double factor, vec2 const &)
{
    GetScene().SetTurnZoom(GetScene().GetTurnZoom() * factor);
}

string TurnPane::GetZoomLine() const
{
    std::ostringstream line;
    line << "turn-zoom " << std::round(GetScene().GetTurnZoom() * 1000) / 1000;
    return line.str();
}

} // namespace viewer::volumes
