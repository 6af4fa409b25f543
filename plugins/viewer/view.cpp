#include "view.h"

#include "clip.h"

#include <quillmarsh/gui/gui_fonts.h>
#include <quillmarsh/gui/gui_renderer.h>
#include <quillmarsh/gui/gui_shaders.h>
#include <quillmarsh/widgets/measures.h>
#include <quillmarsh/widgets/textencoding.h>

#include <algorithm>
#include <cmath>

namespace viewer
{
namespace
{

using namespace quillmarsh;

/// Units around the text of a note.
constexpr vec2 s_noteMargin = {4, 1};

unsigned int ToPixels(float size)
{
    return static_cast<unsigned int>(std::max(std::lround(size), 1L));
}

} // namespace

View::View(gui::Component *parent)
{
    // Nothing is drawn by the shader: it tells the font of notes.
    SetShaderName(widgets::ShaderName_Hint);
    if (parent != nullptr)
        AttachTo(*parent);
}

View::~View() = default;

void View::Invalidate()
{
    isInvalid_ = true;
}

void View::DrawSelf(gui::Renderer &renderer)
{
    vec2 const &size = GetSize();
    if (size.x < 1 || size.y < 1)
        return;
    Clip const clip(renderer, gui::Rectangle(GetAbsolutePosition(), size));
    if (std::exchange(isInvalid_, false))
    {
        canvas_.Resize(ToPixels(size.x), ToPixels(size.y));
        Compose(canvas_.GetPicture());
        canvas_.Update();
    }
    canvas_.Draw(renderer, vec2::ZERO);
    DrawOver(renderer);
}

void View::OnVideoRendererChanged(VideoRenderer *renderer)
{
    canvas_.ReleaseTextures();
    Component::OnVideoRendererChanged(renderer);
}

void View::UpdateGeometryCache()
{
    // Position alone changes nothing, and the same size gives the same picture.
    ImageBase const &picture = canvas_.GetPicture();
    if (picture.GetNumColumns() != ToPixels(GetSize().x) || picture.GetNumRows() != ToPixels(GetSize().y))
        Invalidate();
}

void View::DrawOver(gui::Renderer &) {}

float View::DrawNote(gui::Renderer &renderer, vec2 const &position, string const &text, color4b color) const
{
    return DrawTextLine(renderer, position, text, color, true);
}

float View::DrawLabel(gui::Renderer &renderer, vec2 const &position, string const &text, color4b color) const
{
    return DrawTextLine(renderer, position, text, color, false);
}

float View::DrawTextLine(gui::Renderer &renderer, vec2 const &position, string const &text, color4b color,
                         bool onStrip) const
{
    gui::BaseShader const *const shader = GetBaseShader();
    gui::Font const *const font = shader != nullptr ? shader->GetFont() : nullptr;
    string const glyphs = widgets::ToGlyphs(text);
    if (font == nullptr || glyphs.empty())
        return 0;
    gui::DrawTextParams params;
    params.metrics = shader->GetTextMetricsL();
    params.position = {std::round(position.x), std::round(position.y)};
    params.color = color;
    float const width = std::ceil(font->CalcTextWidth(params.metrics, glyphs));
    if (onStrip)
    {
        vec2 const margin = widgets::Measures::Pixels(s_noteMargin);
        gui::Rectangle const strip(params.position - margin, vec2(width, params.metrics.Height) + margin * 2);
        renderer.DrawRectangle(gui::RectangleC(strip, color4b(0, 0, 0, static_cast<unsigned char>(color.a * 5 / 8))));
    }
    renderer.DrawText(*font, glyphs, params);
    return width;
}

} // namespace viewer
