#include <quillmarsh/gui/gui_renderer.h>

#include <quillmarsh/gui/gui_fonts.h>

#include <algorithm>

namespace quillmarsh::gui
{

Renderer::ClearParams::ClearParams(bool clearColor, color4b color, bool clearDepth, float depth, bool clearStencil,
                                   unsigned int stencil, bool clearRectangleOnly, gui::Rectangle const &rectangle)
    : ClearColor(clearColor),
      Color(color),
      ClearDepth(clearDepth),
      Depth(depth),
      ClearStencil(clearStencil),
      Stencil(stencil),
      ClearRectangleOnly(clearRectangleOnly),
      Rectangle(rectangle)
{
}

Renderer::Renderer(VideoRenderer &parent) : parent_(parent), vertices_(10), texturedVertices_(4)
{
    ClearStats();
}

Renderer::~Renderer() = default;

void Renderer::OnWindowResize(unsigned int width, unsigned int height)
{
    windowWidth_ = std::max(width, 1u);
    windowHeight_ = std::max(height, 1u);
}

// A fan begins at the top left corner, and goes around against the clock.

void Renderer::DrawRectangle(Texture const &texture, RectangleCT const &rectangle)
{
    ++statistics_.NumDrawRectangleTextured;
    float const right = rectangle.x + rectangle.width;
    float const bottom = rectangle.y + rectangle.height;
    VertexBufferCT &vertices = texturedVertices_;
    vertices[0] = {{rectangle.x, rectangle.y, 0}, rectangle.colorTopLeft, vec2::ZERO};
    vertices[1] = {{rectangle.x, bottom, 0}, rectangle.colorBottomLeft, vec2::ZERO};
    vertices[2] = {{right, bottom, 0}, rectangle.colorBottomRight, vec2::ZERO};
    vertices[3] = {{right, rectangle.y, 0}, rectangle.colorTopRight, vec2::ZERO};
    rectangle.FillTransformedTexCoords(vertices[0], vertices[3], vertices[1], vertices[2]);
    DrawPrimitive(texture, vertices, e_triangleFan, 2, 0);
}

void Renderer::DrawRectangle(RectangleC const &rectangle)
{
    ++statistics_.NumDrawRectangleColored;
    float const right = rectangle.x + rectangle.width;
    float const bottom = rectangle.y + rectangle.height;
    VertexBufferC &vertices = vertices_;
    vertices[0] = {{rectangle.x, rectangle.y, 0}, rectangle.colorTopLeft};
    vertices[1] = {{rectangle.x, bottom, 0}, rectangle.colorBottomLeft};
    vertices[2] = {{right, bottom, 0}, rectangle.colorBottomRight};
    vertices[3] = {{right, rectangle.y, 0}, rectangle.colorTopRight};
    DrawPrimitive(vertices, e_triangleFan, 2, 0);
}

void Renderer::DrawRectangleFrame(RectangleC const &rectangle, float thickness)
{
    ++statistics_.NumDrawRectangleFrameColored;
    float const t = std::min(thickness, std::min(rectangle.width * 0.5f, rectangle.height * 0.5f));
    float const x0 = rectangle.x, x1 = x0 + t, x3 = x0 + rectangle.width, x2 = x3 - t;
    float const y0 = rectangle.y, y1 = y0 + t, y3 = y0 + rectangle.height, y2 = y3 - t;
    VertexBufferC &vertices = vertices_;
    vertices[0] = {{x0, y0, 0}, rectangle.colorTopLeft};
    vertices[1] = {{x1, y1, 0}, rectangle.colorTopLeft};
    vertices[2] = {{x3, y0, 0}, rectangle.colorTopRight};
    vertices[3] = {{x2, y1, 0}, rectangle.colorTopRight};
    vertices[4] = {{x3, y3, 0}, rectangle.colorBottomRight};
    vertices[5] = {{x2, y2, 0}, rectangle.colorBottomRight};
    vertices[6] = {{x0, y3, 0}, rectangle.colorBottomLeft};
    vertices[7] = {{x1, y2, 0}, rectangle.colorBottomLeft};
    vertices[8] = vertices[0];
    vertices[9] = vertices[1];
    DrawPrimitive(vertices, e_triangleStrip, 8, 0);
}

void Renderer::DrawText(Font const &font, string const &text, DrawTextParams const &params)
{
    font.DrawText(*this, text, params);
}

void Renderer::DrawText(Font const &font, unsigned int length, char const *text, DrawTextParams const &params)
{
    font.DrawText(*this, length, text, params);
}

void Renderer::DrawText(FontTexture const &font, string const &text, DrawTextParams const &params)
{
    DrawText(font, static_cast<unsigned int>(text.length()), text.data(), params);
}

Renderer::DepthParamsSentry::DepthParamsSentry(Renderer &renderer, DepthParams const &params) : renderer_(renderer)
{
    renderer_.GetDepthParams(saved_);
    renderer_.SetDepthParams(params);
}

Renderer::DepthParamsSentry::~DepthParamsSentry()
{
    renderer_.SetDepthParams(saved_);
}

Renderer::TransformSentry::TransformSentry(Renderer &renderer, mat4 const &transform, bool concat) : renderer_(renderer)
{
    renderer_.GetTransform(saved_);
    renderer_.SetTransform(concat ? transform * saved_ : transform);
}

Renderer::TransformSentry::~TransformSentry()
{
    renderer_.SetTransform(saved_);
}

} // namespace quillmarsh::gui
