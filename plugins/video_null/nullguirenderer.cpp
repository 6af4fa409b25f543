#include "nullguirenderer.h"

#include <quillmarsh/basetools/texttools.h>

#include <limits>

namespace video_null
{

using video_renderer_objects::Texture2D;

NullTexture::NullTexture(eSampleFormat format, bool mipmapped, unsigned int width, unsigned int height,
                         std::shared_ptr<unsigned int> numTextures)
    : Texture2D(format, mipmapped, width, height),
      numTextures_(std::move(numTextures))
{
    ++*numTextures_;
}

NullTexture::~NullTexture()
{
    --*numTextures_;
}

bool NullTexture::DoLoadLevel(unsigned int, ImageBase const &, unsigned int dataHeight, unsigned int dataWidth,
                              unsigned int, unsigned int, unsigned int, unsigned int, bool)
{
    numLoadedSamples_ += std::size_t(dataHeight) * dataWidth;
    return true;
}

NullGUIRenderer::NullGUIRenderer(VideoRenderer &parent, std::function<void(string const &)> report)
    : Renderer(parent),
      order_(Stats(), std::move(report))
{
}

// Life

void NullGUIRenderer::CreateVideoResources(bool)
{
    order_.Enter(eCall::e_createResources);
}

void NullGUIRenderer::ReleaseVideoResources(bool)
{
    order_.Enter(eCall::e_releaseResources);
    if (*numTextures_ != 0 && !areResourcesManaged_)
        order_.AddFault("ReleaseVideoResources() came while there were textures: " + MakeString(*numTextures_) + ".");
}

void NullGUIRenderer::DisconnectVideoSubsystem()
{
    order_.Enter(eCall::e_disconnect);
    if (*numTextures_ != 0)
        order_.AddFault("DisconnectVideoSubsystem() came while there were textures: " + MakeString(*numTextures_) +
                        ".");
}

void NullGUIRenderer::OnWindowResize(unsigned int width, unsigned int height)
{
    order_.Enter(eCall::e_windowResize);
    Renderer::OnWindowResize(width, height);
    viewport_ = ViewportParams(vec2::ZERO, GetWindowSize());
}

// Target

void NullGUIRenderer::ClearBuffers(ClearParams const &)
{
    order_.Enter(eCall::e_clearBuffers);
}

void NullGUIRenderer::SetViewport(ViewportParams const &params)
{
    order_.Enter(eCall::e_setViewport);
    viewport_ = params;
}

void NullGUIRenderer::SetClipRectangle(gui::Rectangle const &rectangle)
{
    if (!order_.Enter(eCall::e_setClipRectangle))
        return;
    clip_ = rectangle;
    isClipped_ = isClipNew_ = true;
}

void NullGUIRenderer::ResetClipRectangle()
{
    if (order_.Enter(eCall::e_resetClipRectangle))
        isClipped_ = false;
}

bool NullGUIRenderer::GetClipRectangle(gui::Rectangle &rectangle) const
{
    if (isClipped_)
        rectangle = clip_;
    return isClipped_;
}

void NullGUIRenderer::GetRendererParams(RendererParams &params) const
{
    params = RendererParams();
    params.MaxTextureSize = s_maxTextureSize;
}

AutoPtr<Texture2D> NullGUIRenderer::CreateTexture(unsigned int format, bool multiLevel, unsigned int height,
                                                  unsigned int width, bool)
{
    bool const hasSize = height > 0 && height <= s_maxTextureSize && width > 0 && width <= s_maxTextureSize;
    if (!order_.Enter(eCall::e_createTexture) || !hasSize)
        return nullptr;
    return std::make_unique<NullTexture>(static_cast<eSampleFormat>(format), multiLevel, width, height, numTextures_);
}

// Drawing

void NullGUIRenderer::Begin()
{
    order_.Enter(eCall::e_begin);
    frame_.Clear();
    transform_ = mat4::IDENTITY;
    isTransformNew_ = true;
    isClipped_ = false;
    texture_ = nullptr;
}

void NullGUIRenderer::End()
{
    order_.Enter(eCall::e_end);
    isClipped_ = false;
    std::swap(frame_, lastFrame_);
}

void NullGUIRenderer::SetDepthParams(DepthParams const &params)
{
    order_.Enter(eCall::e_setDepthParams);
    depth_ = params;
}

void NullGUIRenderer::SetTransform(mat4 const &transform)
{
    if (!order_.Enter(eCall::e_setTransform))
        return;
    transform_ = transform;
    isTransformNew_ = true;
}

void NullGUIRenderer::DrawPrimitive(gui::Texture const &texture, gui::VertexBufferCT &vertices, unsigned int type,
                                    unsigned int count, unsigned int first)
{
    if (!order_.Enter(eCall::e_drawTextured) ||
        !AddPrimitive(eDrawn::e_textured, &texture, type, count, first, vertices.GetCount()))
        return;
    Stats().NumPrimitivesTextured += count;
    gui::VertexCT const *const begin = vertices.GetVertices() + first;
    frame_.vertices.insert(frame_.vertices.end(), begin, begin + frame_.items.back().size);
}

void NullGUIRenderer::DrawPrimitive(gui::VertexBufferC &vertices, unsigned int type, unsigned int count,
                                    unsigned int first)
{
    if (!order_.Enter(eCall::e_drawColored) ||
        !AddPrimitive(eDrawn::e_colored, nullptr, type, count, first, vertices.GetCount()))
        return;
    Stats().NumPrimitivesColored += count;
    gui::VertexC const *const begin = vertices.GetVertices() + first;
    for (std::size_t index = 0; index < frame_.items.back().size; ++index)
        frame_.vertices.emplace_back(begin[index].position, begin[index].color, vec2::ZERO);
}

void NullGUIRenderer::DrawText(gui::FontTexture const &font, unsigned int length, char const *text,
                               gui::DrawTextParams const &params)
{
    if (!order_.Enter(eCall::e_drawText) || length == 0)
        return;
    Stats().NumTextGlyphs += length;
    AddItem(eDrawn::e_text, &font, gui::Renderer::e_triangleList, length, frame_.characters.size(), length);
    frame_.characters.append(text, length);
    frame_.texts.push_back(params);
}

bool NullGUIRenderer::AddPrimitive(eDrawn kind, void const *texture, unsigned int type, unsigned int count,
                                   unsigned int first, unsigned int numVertices)
{
    if (type > e_triangleFan)
    {
        order_.AddFault("DrawPrimitive() got the unknown primitive type " + MakeString(type) + ".");
        return false;
    }
    if (count == 0)
        return false;
    std::size_t const size = type == e_triangleList ? std::size_t(count) * 3 : std::size_t(count) + 2;
    if (first > numVertices || size > numVertices - first)
    {
        order_.AddFault("DrawPrimitive() needs the vertices from " + MakeString(first) + " to " +
                        MakeString(first + size - 1) + ", but there are " + MakeString(numVertices) + ".");
        return false;
    }
    AddItem(kind, texture, type, count, frame_.vertices.size(), size);
    return true;
}

void NullGUIRenderer::AddItem(eDrawn kind, void const *texture, unsigned int primitive, unsigned int count,
                              std::size_t first, std::size_t size)
{
    if (kind != eDrawn::e_colored)
        SelectTexture(texture);
    if (std::exchange(isTransformNew_, false) || frame_.transforms.empty())
        frame_.transforms.push_back(transform_);
    if (isClipped_ && (std::exchange(isClipNew_, false) || frame_.clips.empty()))
        frame_.clips.push_back(clip_);
    int const clip = isClipped_ ? static_cast<int>(frame_.clips.size()) - 1 : -1;
    frame_.items.push_back({kind, texture, primitive, count, first, size, frame_.transforms.size() - 1, clip,
                            kind == eDrawn::e_text ? frame_.texts.size() : 0});
}

void NullGUIRenderer::SelectTexture(void const *texture)
{
    if (texture == texture_)
        return;
    texture_ = texture;
    ++Stats().NumTextureChanges;
}

} // namespace video_null
