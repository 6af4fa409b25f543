#include "quad.h"

#include <algorithm>
#include <sstream>

namespace viewer::volumes
{

using namespace quillmarsh;

namespace
{

/// Least width and height of a pane, in units.
constexpr float s_minPane = 96;
/// Part of a pane that a volume fills.
constexpr double s_fitPart = 0.94;

} // namespace

/// A ghost as large as its parent, whose children are as large as itself.
class Quad::Place : public gui::Component
{
public:
    explicit Place(gui::Component &parent)
    {
        SetGhost(true);
        AttachTo(parent);
    }

    void RecalcLayout() override
    {
        SetPosition(0, 0);
        SetSize(GetParentSize());
        for (gui::Component *const child : GetChildren())
        {
            child->SetPosition(0, 0);
            child->SetSize(GetSize());
        }
    }
};

Quad::Quad(PaneContext &context, gui::Component &parent) : context_(context)
{
    SetGhost(true);
    AttachTo(parent);
    columns_ = new widgets::Splitter(false, this);
    columns_->SetMinSizes(s_minPane, s_minPane);
    rows_[0] = new widgets::Splitter(true, new Place(columns_->GetFirst()));
    rows_[1] = new widgets::Splitter(true, new Place(columns_->GetSecond()));
    columns_->SetAction([this](float) { context_.workspace.Invalidate(); });
    for (std::size_t i = 0; i < rows_.size(); ++i)
    {
        rows_[i]->SetMinSizes(s_minPane, s_minPane);
        // The borders of both columns stay side by side.
        rows_[i]->SetAction(
            [this, i](float fraction)
            {
                rows_[1 - i]->SetFraction(fraction);
                context_.workspace.Invalidate();
            });
    }
    whole_ = new Place(*this);
    places_ = {new Place(rows_[0]->GetFirst()), new Place(rows_[0]->GetSecond()), new Place(rows_[1]->GetSecond()),
               new Place(rows_[1]->GetFirst())};
    turned_ = new TurnPane(context);
    panes_ = {new SlicePane(context, eSliceAxis::e_layer), new SlicePane(context, eSliceAxis::e_row),
              new SlicePane(context, eSliceAxis::e_column), new ObliquePane(context), turned_};
    Arrange();
}

void Quad::MovePane(Pane &pane, Place &place, bool isVisible)
{
    if (pane.GetParent() != &place)
        pane.AttachTo(place);
    pane.SetVisible(isVisible);
}

void Quad::Arrange()
{
    bool const showsTurned = context_.scene.Settings().showsTurned;
    for (std::size_t i = 0; i < panes_.size(); ++i)
    {
        auto const pane = static_cast<ePane>(i);
        bool const isInFourth =
            pane != ePane::e_oblique && pane != ePane::e_turned ? true : showsTurned == (pane == ePane::e_turned);
        if (context_.whole)
            MovePane(*panes_[i], *whole_, context_.whole == pane);
        else
            MovePane(*panes_[i], *places_[std::min<std::size_t>(i, 3)], isInFourth);
    }
    columns_->SetVisible(!context_.whole);
    whole_->SetVisible(context_.whole.has_value());
    ReportDirtyGeometry();
    InvalidatePanes();
    context_.workspace.Invalidate();
}

void Quad::InvalidatePanes()
{
    for (Pane *const pane : panes_)
        pane->Invalidate();
}

void Quad::SetFractions(float x, float y)
{
    columns_->SetFraction(x);
    for (widgets::Splitter *const rows : rows_)
        rows->SetFraction(y);
    context_.workspace.Invalidate();
}

vec2 Quad::GetFractions() const
{
    return {columns_->GetFraction(), rows_[0]->GetFraction()};
}

Pane const *Quad::FindPaneUnderMouse() const
{
    for (Pane const *const pane : panes_)
    {
        if (pane->IsBranchVisible() && pane->IsMouseOver())
            return pane;
    }
    return nullptr;
}

void Quad::RecalcLayout()
{
    columns_->SetPosition(0, 0);
    columns_->SetSize(GetSize());
}

double Quad::CalcFitZoom() const
{
    double zoom = 0;
    for (std::size_t i = 0; i < 3; ++i)
    {
        Pane const &pane = *panes_[i];
        std::array<std::size_t, 3> const axes = GetPaneAxes(static_cast<ePane>(i));
        double const width = context_.scene.GetSize(axes[0]);
        double const height = context_.scene.GetSize(axes[1]);
        if (!pane.IsBranchVisible() || width <= 0)
            continue;
        double const fitting = std::min(double(pane.GetSize().x) / width, double(pane.GetSize().y) / height);
        zoom = zoom == 0 ? fitting : std::min(zoom, fitting);
    }
    if (zoom == 0)
    {
        // Only an oblique slice or the turned volume shows.
        vec3 const size = context_.scene.GetSize();
        zoom = std::min(double(GetSize().x), double(GetSize().y)) / std::max(double(size.Length()), 1.0);
    }
    return std::clamp(zoom * s_fitPart, Scene::s_minZoom, Scene::s_maxZoom);
}

void Quad::UpdateGeometryCache()
{
    context_.scene.SetFitZoom(CalcFitZoom());
}

} // namespace viewer::volumes
