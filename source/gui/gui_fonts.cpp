#include <quillmarsh/gui/gui_fonts.h>

namespace quillmarsh::gui
{

Font::Font() = default;

Font::~Font() = default;

float Font::CalcSpacingWidth(TextMetrics const &metrics) const
{
    float const spacing = metrics.UseDefaultSpacing ? GetDefaultSpacing(metrics.Mono) : metrics.Spacing;
    return metrics.SpacingScale * metrics.Height * spacing;
}

void Font::SetAsciiSubsetOnly(bool asciiSubsetOnly)
{
    asciiSubsetOnly_ = asciiSubsetOnly;
    numGlyphs_ = asciiSubsetOnly ? 128 : 256;
}

void Font::DrawText(Renderer &renderer, string const &text, DrawTextParams const &params) const
{
    DrawText(renderer, static_cast<unsigned int>(text.length()), text.data(), params);
}

float Font::CalcTextWidth(TextMetrics const &metrics, string const &text) const
{
    return CalcTextWidth(metrics, static_cast<unsigned int>(text.length()), text.data());
}

void Font::CalcTextWidths(std::vector<float> &widths, TextMetrics const &metrics, string const &text) const
{
    CalcTextWidths(widths, metrics, static_cast<unsigned int>(text.length()), text.data());
}

void Font::CalcMaxVisibleText(unsigned int &count, float &width, float maxWidth, TextMetrics const &metrics,
                              string const &text) const
{
    CalcMaxVisibleText(count, width, maxWidth, metrics, static_cast<unsigned int>(text.length()), text.data());
}

} // namespace quillmarsh::gui
