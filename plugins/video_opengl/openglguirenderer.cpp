#include "openglguirenderer.h"

#include "openglsubsystem.h"

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/basetools/exception.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace video_opengl
{
namespace
{

/// Edges of textures and windows are far from these bounds, and what is beyond them still fits into an integer.
constexpr float s_maxPixel = 1e6f;

GLint RoundToPixel(float coordinate)
{
    // In this order, no number at all gives the upper bound.
    return static_cast<GLint>(std::floor(std::max(-s_maxPixel, std::min(s_maxPixel, coordinate)) + 0.5f));
}

GLint ToMinFilter(gui::Texture::eFilter filter, bool hasLevels)
{
    if (!hasLevels || filter == gui::Texture::e_filter_none)
        return GL_LINEAR;
    return filter == gui::Texture::e_filter_nearest ? GL_LINEAR_MIPMAP_NEAREST : GL_LINEAR_MIPMAP_LINEAR;
}

bool IsSame(gui::Renderer::DepthParams const &a, gui::Renderer::DepthParams const &b)
{
    return a.Near == b.Near && a.Far == b.Far && a.RangeFrom == b.RangeFrom && a.RangeTo == b.RangeTo &&
           a.DepthTest == b.DepthTest && a.DepthWrite == b.DepthWrite && a.ClearAtBegin == b.ClearAtBegin;
}

} // namespace

// Life

void OpenGLGUIRenderer::ConnectVideoSubsystem(VideoSubsystem &subsystem)
{
    subsystem_ = dynamic_cast<OpenGLSubsystem *>(&subsystem);
    if (subsystem_ == nullptr)
        QUILLMARSH_THROW(VideoRendererException, "The renderer needs the video subsystem of its own library.");
}

void OpenGLGUIRenderer::DisconnectVideoSubsystem()
{
    subsystem_ = nullptr;
}

void OpenGLGUIRenderer::CreateVideoResources(bool)
{
    std::shared_ptr<Device> const &device = subsystem_ != nullptr ? subsystem_->GetDevice() : nullptr;
    if (device == nullptr)
        QUILLMARSH_THROW(VideoRendererException, "The video subsystem has no device.");
    batch_ = std::make_unique<Batch>(device);
    device->SetGatherer(this);
    viewport_ = ViewportParams(vec2::ZERO, GetWindowSize());
    ApplyViewport();
}

void OpenGLGUIRenderer::ReleaseVideoResources(bool)
{
    if (batch_ != nullptr)
        batch_->GetDevice().SetGatherer(nullptr);
    batch_.reset();
    isDrawing_ = isInterleaved_ = false;
    selected_ = nullptr;
}

void OpenGLGUIRenderer::OnWindowResize(unsigned int width, unsigned int height)
{
    Flush();
    Renderer::OnWindowResize(width, height);
    viewport_ = ViewportParams(vec2::ZERO, GetWindowSize());
    if (batch_ != nullptr)
        ApplyViewport();
    if (CanDraw())
        ApplyProjection();
}

// State

void OpenGLGUIRenderer::EnterState()
{
    OpenGLFunctions const &gl = batch_->GetDevice().gl;
    for (GLenum const feature : {GL_CULL_FACE, GL_STENCIL_TEST, GL_COLOR_LOGIC_OP, GL_FRAMEBUFFER_SRGB,
                                 GL_RASTERIZER_DISCARD, GL_SAMPLE_ALPHA_TO_COVERAGE, GL_POLYGON_OFFSET_FILL})
        gl.Disable(feature);
    gl.PolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    gl.ColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    gl.Enable(GL_BLEND);
    gl.BlendEquation(GL_FUNC_ADD);
    gl.BlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    // The depth buffer is written only while the test is on.
    if (depth_.DepthTest || depth_.DepthWrite)
        gl.Enable(GL_DEPTH_TEST);
    else
        gl.Disable(GL_DEPTH_TEST);
    gl.DepthFunc(depth_.DepthTest ? GL_LEQUAL : GL_ALWAYS);
    gl.DepthMask(depth_.DepthWrite ? GL_TRUE : GL_FALSE);
    ApplyViewport();
    batch_->BindState();
    batch_->GetProgram().SetTransform(isInProgram_ ? transform_ : mat4::IDENTITY);
    ApplyProjection();
}

void OpenGLGUIRenderer::LeaveState()
{
    OpenGLFunctions const &gl = batch_->GetDevice().gl;
    gl.Disable(GL_BLEND);
    gl.BlendFunc(GL_ONE, GL_ZERO);
    gl.Disable(GL_DEPTH_TEST);
    gl.DepthFunc(GL_LESS);
    gl.DepthMask(GL_TRUE);
    gl.Disable(GL_SCISSOR_TEST);
    gl.BindTexture(GL_TEXTURE_2D, 0);
    gl.BindVertexArray(0);
    gl.UseProgram(0);
}

void OpenGLGUIRenderer::ApplyViewport()
{
    OpenGLFunctions const &gl = batch_->GetDevice().gl;
    PixelArea const area = ToPixels({viewport_.Position, viewport_.Size});
    gl.Viewport(area.x, area.y, area.width, area.height);
    gl.DepthRange(static_cast<double>(viewport_.MinDepth), static_cast<double>(viewport_.MaxDepth));
}

void OpenGLGUIRenderer::ApplyProjection()
{
    // OpenGL's cube reaches from -1 to 1 in each direction, with y upward.
    float const width = std::max(viewport_.Size.x, 1.0f);
    float const height = std::max(viewport_.Size.y, 1.0f);
    float const range = depth_.Far - depth_.Near;
    float const depthOfUnit = range != 0 ? (depth_.RangeTo - depth_.RangeFrom) / range : 0;
    float const depthOfZero = depth_.RangeFrom - depth_.Near * depthOfUnit;
    batch_->GetProgram().SetProjection({2 / width, -2 / height, 2 * depthOfUnit}, {-1, 1, 2 * depthOfZero - 1});
}

PixelArea OpenGLGUIRenderer::ToPixels(gui::Rectangle const &rectangle) const
{
    GLint const left = RoundToPixel(rectangle.x);
    GLint const right = RoundToPixel(rectangle.x + rectangle.width);
    GLint const top = RoundToPixel(rectangle.y);
    GLint const bottom = RoundToPixel(rectangle.y + rectangle.height);
    auto const height = static_cast<GLint>(subsystem_->GetTargetHeight());
    return {left, height - bottom, std::max(right - left, 0), std::max(bottom - top, 0)};
}

// Target

void OpenGLGUIRenderer::ClearBuffers(ClearParams const &params)
{
    ++Stats().NumClearBuffers;
    if (batch_ == nullptr)
        return;
    Flush();
    // The application may have left another one.
    subsystem_->BeginDrawing();
    OpenGLFunctions const &gl = batch_->GetDevice().gl;
    if (params.ClearRectangleOnly)
    {
        PixelArea const area = ToPixels(params.Rectangle);
        gl.Enable(GL_SCISSOR_TEST);
        gl.Scissor(area.x, area.y, area.width, area.height);
    }
    else
        gl.Disable(GL_SCISSOR_TEST);
    GLbitfield const buffers = (params.ClearColor ? GL_COLOR_BUFFER_BIT : 0u) |
                               (params.ClearDepth ? GL_DEPTH_BUFFER_BIT : 0u) |
                               (params.ClearStencil ? GL_STENCIL_BUFFER_BIT : 0u);
    auto const toFloat = [](unsigned char channel) { return static_cast<float>(channel) / 255; };
    color4b const &color = params.Color;
    video_opengl::ClearBuffers(
        gl, {{toFloat(color.r), toFloat(color.g), toFloat(color.b), toFloat(color.a)}, params.Depth, params.Stencil},
        buffers);
    gl.Disable(GL_SCISSOR_TEST);
    if (isDrawing_)
        gl.DepthMask(depth_.DepthWrite ? GL_TRUE : GL_FALSE);
}

void OpenGLGUIRenderer::SetViewport(ViewportParams const &params)
{
    ++Stats().NumSetViewport;
    Flush();
    viewport_ = params;
    if (batch_ != nullptr)
        ApplyViewport();
    if (CanDraw())
        ApplyProjection();
}

void OpenGLGUIRenderer::SetClipRectangle(gui::Rectangle const &rectangle)
{
    clip_ = rectangle;
    if (batch_ != nullptr)
        batch_->SetClipArea(ToPixels(rectangle));
}

void OpenGLGUIRenderer::ResetClipRectangle()
{
    clip_.reset();
    if (batch_ != nullptr)
        batch_->SetClipArea(std::nullopt);
}

bool OpenGLGUIRenderer::GetClipRectangle(gui::Rectangle &rectangle) const
{
    if (clip_)
        rectangle = *clip_;
    return clip_.has_value();
}

void OpenGLGUIRenderer::GetRendererParams(RendererParams &params) const
{
    params = RendererParams();
    if (batch_ == nullptr)
        return;
    params.MaxTextureSize = batch_->GetDevice().GetDriverInfo().maxTextureSize;
    params.NumSamples = subsystem_->GetNumSamples();
}

AutoPtr<video_renderer_objects::Texture2D>
OpenGLGUIRenderer::CreateTexture(unsigned int format, bool multiLevel, unsigned int height, unsigned int width, bool)
{
    return batch_ != nullptr ? CreateTexture2D(subsystem_->GetDevice(), format, multiLevel, height, width) : nullptr;
}

// Frame

void OpenGLGUIRenderer::Begin()
{
    ++Stats().NumBegin;
    isDrawing_ = true;
    transform_ = mat4::IDENTITY;
    isTranslation_ = true;
    isInProgram_ = false;
    if (batch_ == nullptr)
        return;
    subsystem_->BeginDrawing();
    ResetClipRectangle();
    if (depth_.ClearAtBegin)
    {
        OpenGLFunctions const &gl = batch_->GetDevice().gl;
        gl.Disable(GL_SCISSOR_TEST);
        video_opengl::ClearBuffers(gl, ClearValues(), GL_DEPTH_BUFFER_BIT);
    }
    EnterState();
}

void OpenGLGUIRenderer::End()
{
    ++Stats().NumEnd;
    Flush();
    if (CanDraw())
        LeaveState();
    ResetClipRectangle();
    isDrawing_ = isInterleaved_ = false;
}

void OpenGLGUIRenderer::Flush()
{
    // Textures may change while the application has the device: nothing was gathered then.
    if (!CanGather())
        return;
    batch_->Draw();
    selected_ = nullptr;
}

void OpenGLGUIRenderer::BeginInterleaved()
{
    ++Stats().NumBeginInterleaved;
    Flush();
    if (!CanDraw())
        return;
    LeaveState();
    isInterleaved_ = true;
    if (!clip_)
        return;
    PixelArea const area = ToPixels(*clip_);
    OpenGLFunctions const &gl = batch_->GetDevice().gl;
    gl.Enable(GL_SCISSOR_TEST);
    gl.Scissor(area.x, area.y, area.width, area.height);
}

void OpenGLGUIRenderer::EndInterleaved()
{
    ++Stats().NumEndInterleaved;
    isInterleaved_ = false;
    if (!CanDraw())
        return;
    subsystem_->BeginDrawing();
    EnterState();
}

void OpenGLGUIRenderer::SetDepthParams(DepthParams const &params)
{
    ++Stats().NumSetDepthParams;
    if (IsSame(params, depth_))
        return;
    Flush();
    depth_ = params;
    if (CanDraw())
        EnterState();
}

void OpenGLGUIRenderer::SetTransform(mat4 const &transform)
{
    ++Stats().NumSetTransform;
    vec4 const &row0 = transform.Row0(), &row1 = transform.Row1(), &row2 = transform.Row2(), &row3 = transform.Row3();
    bool const isAffine = row0.w == 0 && row1.w == 0 && row2.w == 0 && row3.w == 1;
    if (isInProgram_ || !isAffine)
    {
        Flush();
        if (CanDraw())
            batch_->GetProgram().SetTransform(isAffine ? mat4::IDENTITY : transform);
    }
    isInProgram_ = !isAffine;
    isTranslation_ = isAffine && row0.x == 1 && row0.y == 0 && row0.z == 0 && row1.x == 0 && row1.y == 1 &&
                     row1.z == 0 && row2.x == 0 && row2.y == 0 && row2.z == 1;
    transform_ = transform;
}

// Drawing

bool OpenGLGUIRenderer::SelectTexture(gui::Texture const &texture)
{
    video_renderer_objects::Texture2D *const resource = texture.GetVideoRendererResource();
    gui::Texture::eFilter const filter = texture.GetMipFilter();
    if (resource == selected_ && filter == selectedFilter_ && resource != nullptr)
        return true;
    auto *const ours = dynamic_cast<OpenGLTexture2D *>(resource);
    // A texture of another device would not tell this renderer when it goes.
    if (ours == nullptr || &ours->GetObject().GetDevice() != &batch_->GetDevice())
        return false;
    selected_ = resource;
    selectedFilter_ = filter;
    if (batch_->SelectTexture(ours->GetObject(), ToMinFilter(filter, ours->GetNumLevels() > 1)))
        ++Stats().NumTextureChanges;
    return true;
}

vec3 OpenGLGUIRenderer::Transformed(vec3 const &position) const
{
    if (isTranslation_)
    {
        vec4 const &move = transform_.Row3();
        return {position.x + move.x, position.y + move.y, position.z + move.z};
    }
    if (isInProgram_)
        return position;
    vec4 const sum = transform_.Row0() * position.x + transform_.Row1() * position.y + transform_.Row2() * position.z +
                     transform_.Row3();
    return {sum.x, sum.y, sum.z};
}

void OpenGLGUIRenderer::WriteCorners(gui::VertexCT *vertices, gui::RectangleC const &rectangle) const
{
    float const left = rectangle.x, right = left + rectangle.width;
    float const top = rectangle.y, bottom = top + rectangle.height;
    vertices[0].color = rectangle.colorTopLeft;
    vertices[1].color = rectangle.colorBottomLeft;
    vertices[2].color = rectangle.colorBottomRight;
    vertices[3].color = rectangle.colorTopRight;
    if (isTranslation_)
    {
        vec4 const &move = transform_.Row3();
        vertices[0].position = {left + move.x, top + move.y, move.z};
        vertices[1].position = {left + move.x, bottom + move.y, move.z};
        vertices[2].position = {right + move.x, bottom + move.y, move.z};
        vertices[3].position = {right + move.x, top + move.y, move.z};
        return;
    }
    vertices[0].position = Transformed({left, top, 0});
    vertices[1].position = Transformed({left, bottom, 0});
    vertices[2].position = Transformed({right, bottom, 0});
    vertices[3].position = Transformed({right, top, 0});
}

void OpenGLGUIRenderer::DrawRectangle(gui::Texture const &texture, gui::RectangleCT const &rectangle)
{
    Statistics &statistics = Stats();
    ++statistics.NumDrawRectangleTextured;
    ++statistics.NumDrawPrimitiveTextured;
    statistics.NumPrimitivesTextured += 2;
    if (!CanGather() || !SelectTexture(texture))
        return;
    gui::VertexCT *const vertices = batch_->AddQuads(1);
    WriteCorners(vertices, rectangle);
    if (rectangle.TexTransform != gui::RectangleCT::e_tex_none)
    {
        for (int corner = 0; corner < 4; ++corner)
            vertices[corner].texCoord = vec2::ZERO;
        rectangle.FillTransformedTexCoords(vertices[0], vertices[3], vertices[1], vertices[2]);
        return;
    }
    vertices[0].texCoord = {rectangle.uMin, rectangle.vMin};
    vertices[1].texCoord = {rectangle.uMin, rectangle.vMax};
    vertices[2].texCoord = {rectangle.uMax, rectangle.vMax};
    vertices[3].texCoord = {rectangle.uMax, rectangle.vMin};
}

void OpenGLGUIRenderer::DrawRectangle(gui::RectangleC const &rectangle)
{
    Statistics &statistics = Stats();
    ++statistics.NumDrawRectangleColored;
    ++statistics.NumDrawPrimitiveColored;
    statistics.NumPrimitivesColored += 2;
    if (!CanGather())
        return;
    gui::VertexCT *const vertices = batch_->AddQuads(1);
    WriteCorners(vertices, rectangle);
    for (int corner = 0; corner < 4; ++corner)
        vertices[corner].texCoord = {s_untextured, 0};
}

template<typename Vertices>
void OpenGLGUIRenderer::AddPrimitive(Vertices const &vertices, unsigned int type, unsigned int count,
                                     unsigned int first)
{
    std::uint64_t const numNeeded =
        type == e_triangleList ? std::uint64_t{count} * 3 : std::uint64_t{count} + (count > 0 ? 2 : 0);
    bool const isInRange = type <= e_triangleFan && first + numNeeded <= vertices.GetCount();
    QUILLMARSH_ASSERT(isInRange, "Primitive-type or vertex-range out of range.");
    if (!isInRange || count == 0)
        return;
    auto const *const source = vertices.GetVertices() + first;
    auto const make = [&](std::size_t index) -> gui::VertexCT
    {
        if constexpr (requires { source[index].texCoord; })
            return {Transformed(source[index].position), source[index].color, source[index].texCoord};
        else
            return {Transformed(source[index].position), source[index].color, {s_untextured, 0}};
    };
    if (type == e_triangleList)
    {
        gui::VertexCT *to = batch_->AddQuads(count);
        for (std::size_t i = 0; i < numNeeded; i += 3, to += 4)
        {
            for (std::size_t corner = 0; corner < 3; ++corner)
                to[corner] = make(i + corner);
            to[3] = to[2];
        }
        return;
    }
    // Two triangles that follow each other are a quad: those of a fan around the first vertex, those of a strip around
    // the edge that they share.
    gui::VertexCT *to = batch_->AddQuads((count + 1) / 2);
    for (std::size_t i = 0; i < count; i += 2, to += 4)
    {
        bool const isStrip = type == e_triangleStrip;
        to[0] = make(isStrip ? i + 1 : 0);
        to[1] = make(isStrip ? i : i + 1);
        to[2] = make(i + 2);
        to[3] = i + 1 < count ? make(i + 3) : to[2];
    }
}

void OpenGLGUIRenderer::DrawPrimitive(gui::Texture const &texture, gui::VertexBufferCT &vertices, unsigned int type,
                                      unsigned int count, unsigned int first)
{
    ++Stats().NumDrawPrimitiveTextured;
    Stats().NumPrimitivesTextured += count;
    if (CanGather() && SelectTexture(texture))
        AddPrimitive(vertices, type, count, first);
}

void OpenGLGUIRenderer::DrawPrimitive(gui::VertexBufferC &vertices, unsigned int type, unsigned int count,
                                      unsigned int first)
{
    ++Stats().NumDrawPrimitiveColored;
    Stats().NumPrimitivesColored += count;
    if (CanGather())
        AddPrimitive(vertices, type, count, first);
}

void OpenGLGUIRenderer::DrawText(gui::FontTexture const &font, unsigned int length, char const *text,
                                 gui::DrawTextParams const &params)
{
    ++Stats().NumDrawText;
    Stats().NumTextGlyphs += length;
    if (length == 0 || !CanGather() || !SelectTexture(font))
        return;
    float const widthOfTile = font.CalcGlyphWidthMultiplier(params.metrics);
    float const spacing = font.CalcSpacingWidth(params.metrics);
    gui::RectangleCT box;
    box.SetColor(params.color);
    box.SetPosition(params.position);
    box.height = params.metrics.Height;
    for (unsigned int i = 0; i < length; ++i)
    {
        auto const glyph = static_cast<unsigned char>(text[i]);
        box.width = widthOfTile * (params.metrics.Mono ? font.GetGlyphWidthMono() : font.GetGlyphWidth(glyph));
        // The sheet may not have all codes.
        if (glyph < font.GetNumGlyphs())
        {
            params.metrics.Mono ? font.GetGlyphCoordsMono(glyph, box) : font.GetGlyphCoords(glyph, box);
            gui::VertexCT *const vertices = batch_->AddQuads(1);
            WriteCorners(vertices, box);
            vertices[0].texCoord = {box.uMin, box.vMin};
            vertices[1].texCoord = {box.uMin, box.vMax};
            vertices[2].texCoord = {box.uMax, box.vMax};
            vertices[3].texCoord = {box.uMax, box.vMin};
        }
        box.x += box.width + spacing;
    }
}

} // namespace video_opengl
