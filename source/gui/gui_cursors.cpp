#include <quillmarsh/gui/gui_cursors.h>

#include <quillmarsh/gui/gui_manager.h>
#include <quillmarsh/gui/gui_renderer.h>
#include <quillmarsh/gui/gui_textures.h>

#include <algorithm>

namespace quillmarsh::gui
{
namespace
{

/// Returns a size of at least one pixel along each axis.
vec2 LimitSize(vec2 const &size)
{
    return {std::max(1.0f, size.x), std::max(1.0f, size.y)};
}

/// Returns a point of the unit square; a coordinate that is no number becomes 0.
vec2 LimitHotSpot(vec2 const &hotSpot)
{
    return {std::min(1.0f, std::max(0.0f, hotSpot.x)), std::min(1.0f, std::max(0.0f, hotSpot.y))};
}

} // namespace

vec2 Cursor::s_globalSize = {16, 16};
color4b Cursor::s_globalColor = {255, 255, 255, 255};

Cursor::Cursor(string const &name, vec2 const &hotSpot, vec2 const &size, color4b color)
    : name_(name),
      hotSpot_(LimitHotSpot(hotSpot)),
      privateSize_(LimitSize(size)),
      privateColor_(color)
{
    if (Manager *const manager = Manager::InstancePtr())
        manager->NotifyObjectCreateDelete(*this, true);
}

Cursor::~Cursor()
{
    if (Manager *const manager = Manager::InstancePtr())
        manager->NotifyObjectCreateDelete(*this, false);
}

void Cursor::DrawSelf(Renderer &renderer) const
{
    constexpr float wing = 0.7f;
    vec2 const &size = GetActiveSize();
    color4b const color = GetActiveColor();
    // Kept, so that a frame allocates nothing.
    static VertexBufferC vertices(3);
    vertices[0] = VertexC({0, 0, 0}, color);
    vertices[1] = VertexC({wing * size.x, size.y, 0}, color);
    vertices[2] = VertexC({size.x, wing * size.y, 0}, color);
    renderer.DrawPrimitive(vertices, Renderer::e_triangleList, 1, 0);
}

void Cursor::OnTimeDelta(double) {}

void Cursor::UpdateColorCache() {}

void Cursor::UpdateGeometryCache() {}

void Cursor::SetName(string const &name)
{
    name_ = name;
    if (Manager *const manager = Manager::InstancePtr())
        manager->NotifyNameChanged(*this);
}

void Cursor::SetHotSpot(vec2 const &hotSpot)
{
    hotSpot_ = LimitHotSpot(hotSpot);
    UpdateGeometryCache();
}

void Cursor::SetPrivateSize(bool use, vec2 const &size)
{
    privateSize_ = LimitSize(size);
    activeSize_ = use ? &privateSize_ : &s_globalSize;
    UpdateGeometryCache();
}

void Cursor::SetPrivateColor(bool use, color4b color)
{
    privateColor_ = color;
    activeColor_ = use ? &privateColor_ : &s_globalColor;
    UpdateColorCache();
}

void Cursor::SetGlobalSize(vec2 const &size)
{
    s_globalSize = LimitSize(size);
    if (Manager *const manager = Manager::InstancePtr())
        manager->NotifyGlobalCursorParamsChanged();
}

void Cursor::SetGlobalColor(color4b color)
{
    s_globalColor = color;
    if (Manager *const manager = Manager::InstancePtr())
        manager->NotifyGlobalCursorParamsChanged();
}

ImageCursor::ImageCursor(string const &name, TileParams const &tile, vec2 const &hotSpot, vec2 const &size,
                         color4b color)
    : Cursor(name, hotSpot, size, color),
      tile_(tile),
      rectangle_(Rectangle(vec2::ZERO, GetActiveSize()), GetActiveColor())
{
}

ImageCursor::~ImageCursor() = default;

bool ImageCursor::CacheTileTextureHandles(Manager &manager)
{
    tileTexture_ = manager.GetTileTexture(tile_.tileTextureName);
    return tileTexture_ != nullptr;
}

void ImageCursor::PostCacheTileTextureHandles()
{
    if (tileTexture_ == nullptr)
        return;
    tileTexture_->GetTileCoords(static_cast<float>(tile_.tileRow), static_cast<float>(tile_.tileColumn), rectangle_);
    rectangle_.SetTexTransform(tile_.texTransform);
}

void ImageCursor::DrawSelf(Renderer &renderer) const
{
    if (tileTexture_ != nullptr)
        renderer.DrawRectangle(*tileTexture_, rectangle_);
}

void ImageCursor::UpdateColorCache()
{
    rectangle_.SetColor(GetActiveColor());
}

void ImageCursor::UpdateGeometryCache()
{
    rectangle_.Set(vec2::ZERO, GetActiveSize());
}

void ImageCursor::InvalidateTileTextureHandles()
{
    tileTexture_ = nullptr;
}

void ImageCursor::SetTileParams(TileParams const &tile)
{
    tile_ = tile;
    RequestTileTextureRecache();
}

} // namespace quillmarsh::gui
