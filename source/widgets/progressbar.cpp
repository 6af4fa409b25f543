#include <quillmarsh/widgets/progressbar.h>

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

constexpr double s_secondsOfPhase = 2;

/// Height in units, unless the text is higher.
constexpr float s_height = 5 * Measures::Grid;

constexpr float s_unknownEnd = -1;

} // namespace

ProgressBar::ProgressBar(gui::Component *parent, float width) : width_(width)
{
    SetShaderName(ShaderName_ProgressBar);
    if (parent != nullptr)
        AttachTo(*parent);
}

ProgressBar::~ProgressBar() = default;

void ProgressBar::SetValue(float value)
{
    bool const wasKnown = IsEndKnown();
    value_ = value >= 0 ? std::min(value, 1.0F) : s_unknownEnd;
    if (IsEndKnown() == wasKnown)
        return;
    phase_ = 0;
    gui::Manager::Instance().TimeNotifyRegister(*this, !IsEndKnown());
}

void ProgressBar::SetText(string const &text)
{
    if (text == text_)
        return;
    text_ = text;
    glyphs_ = ToGlyphs(text);
    ReportDirtyGeometry();
}

string ProgressBar::GetCaption() const
{
    return text_;
}

void ProgressBar::RecalcSize()
{
    float height = Measures::Pixels(s_height);
    if (!glyphs_.empty())
        height = std::max(height, GetTextHeight(*this) + Measures::Pixels(Measures::Grid));
    SetSize(Measures::Pixels(width_), height);
}

void ProgressBar::OnTimeDelta(double seconds)
{
    double const phase = static_cast<double>(phase_) + seconds / s_secondsOfPhase;
    phase_ = std::isfinite(phase) ? static_cast<float>(phase - std::floor(phase)) : 0;
}

} // namespace quillmarsh::widgets
