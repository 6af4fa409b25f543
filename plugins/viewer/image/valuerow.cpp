#include "valuerow.h"

#include "numbers.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace viewer
{

using namespace quillmarsh;

namespace
{

constexpr float s_titleWidth = 68;
constexpr float s_sliderLength = 92;
constexpr float s_fieldWidth = 64;
constexpr unsigned int s_numDigits = 3;

} // namespace

TitleLabel::TitleLabel(gui::Component &parent, char const *text) : Label(&parent, text) {}

TitleLabel::~TitleLabel() = default;

void TitleLabel::RecalcSize()
{
    Label::RecalcSize();
    SetSizeX(std::max(GetSize().x, widgets::Measures::Pixels(s_titleWidth)));
}

ValueRow::ValueRow(widgets::Grid &grid, Params const &params)
    : shown_(std::numeric_limits<double>::quiet_NaN()),
      step_(params.step)
{
    new TitleLabel(grid, params.title);
    slider_ = new widgets::Slider(false, &grid, s_sliderLength);
    slider_->SetRange(params.minimum, params.maximum, params.step);
    slider_->SetToolTipText(params.tip);
    slider_->SetAction([drag = params.drag](float value) { drag(static_cast<double>(value)); });
    slider_->SetEndAction([dragEnd = params.dragEnd](float value) { dragEnd(static_cast<double>(value)); });
    field_ = new widgets::TextField(&grid, string(), s_fieldWidth);
    field_->SetToolTipText(params.tip);
    field_->SetEnterAction(params.type);
}

void ValueRow::Show(double value)
{
    if (!slider_->IsGrabbed())
        slider_->SetValue(static_cast<float>(value));
    // What is typed stays until it is entered.
    bool const isShown = value == shown_ || (field_->IsFocused() && !slider_->IsGrabbed());
    if (isShown)
        return;
    shown_ = value;
    field_->SetText(FormatNumber(value, s_numDigits));
}

void ValueRow::SetRange(double minimum, double maximum)
{
    if (slider_->IsGrabbed())
        return;
    auto const low = static_cast<float>(minimum), high = static_cast<float>(maximum);
    if (low != slider_->GetMinimum() || high != slider_->GetMaximum())
        slider_->SetRange(low, high, step_);
}

} // namespace viewer
