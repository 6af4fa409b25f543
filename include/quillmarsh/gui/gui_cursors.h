// Cursors that the GUI draws at the position of the mouse.
#ifndef QUILLMARSH_GUI_GUI_CURSORS_H
#define QUILLMARSH_GUI_GUI_CURSORS_H

#include <quillmarsh/gui/gui_drawparams.h>
#include <quillmarsh/gui/gui_videoresource.h>
#include <quillmarsh/mathtools/color4b.h>
#include <quillmarsh/mathtools/vector2.h>

namespace quillmarsh::gui
{

class Renderer;
class TileTexture;

/// Picture at the position of the mouse, known by its name; this class draws a plain arrow.
///
/// Made by plain `new`, while the manager exists. It registers itself with the manager, which owns it from then on; it
/// may also be deleted directly. Frame thread only.
class QUILLMARSH_API Cursor : public VideoResourceUser
{
public:
    /// Stores all four, see the setters. The cursor has the global size and colour until SetPrivateSize() and
    /// SetPrivateColor().
    Cursor(string const &name, vec2 const &hotSpot, vec2 const &size, color4b color);
    ~Cursor() override;
    Cursor(Cursor const &) = delete;
    Cursor &operator=(Cursor const &) = delete;

    /// Draws the cursor with its top left corner at (0, 0).
    virtual void DrawSelf(Renderer &renderer) const;
    /// Called in each frame for a cursor that registered by Manager::TimeNotifyRegister(). By default it does nothing.
    virtual void OnTimeDelta(double seconds);
    /// The active colour has changed. By default it does nothing.
    virtual void UpdateColorCache();
    /// The active size or the hot spot has changed. By default it does nothing.
    virtual void UpdateGeometryCache();

    /// @name Name and hot spot
    /// @{
    string const &GetName() const { return name_; }
    /// Sets the name; users look their cursors up again at the next synchronisation.
    void SetName(string const &name);
    vec2 const &GetHotSpot() const { return hotSpot_; }
    /// Sets the point that stands at the position of the mouse, as a part of the size: between 0 and 1.
    void SetHotSpot(vec2 const &hotSpot);
    /// @}

    /// @name Size in pixels, and colour
    /// The private ones are stored in any case, and active only if `use` is true. Sizes are at least 1.
    /// @{
    vec2 const &GetPrivateSize() const { return privateSize_; }
    void SetPrivateSize(bool use, vec2 const &size);
    bool IsUsingPrivateSize() const { return activeSize_ == &privateSize_; }
    color4b GetPrivateColor() const { return privateColor_; }
    void SetPrivateColor(bool use, color4b color);
    bool IsUsingPrivateColor() const { return activeColor_ == &privateColor_; }
    vec2 const &GetActiveSize() const { return *activeSize_; }
    color4b GetActiveColor() const { return *activeColor_; }
    /// @}

    /// @name Global size and colour
    /// Of all cursors without private ones: (16, 16) and white at first. A change reaches the cursors at the next
    /// synchronisation.
    /// @{
    static vec2 const &GetGlobalSize() { return s_globalSize; }
    static void SetGlobalSize(vec2 const &size);
    static color4b GetGlobalColor() { return s_globalColor; }
    static void SetGlobalColor(color4b color);
    /// @}

private:
    static vec2 s_globalSize;
    static color4b s_globalColor;

    string name_;
    vec2 hotSpot_;
    vec2 privateSize_;
    color4b privateColor_;
    vec2 const *activeSize_ = &s_globalSize;
    color4b const *activeColor_ = &s_globalColor;
};

/// Cursor that is a tile of a texture.
class QUILLMARSH_API ImageCursor : public Cursor
{
public:
    ImageCursor(string const &name, TileParams const &tile, vec2 const &hotSpot, vec2 const &size, color4b color);
    ~ImageCursor() override;

    bool CacheTileTextureHandles(Manager &manager) override;
    void PostCacheTileTextureHandles() override;
    void DrawSelf(Renderer &renderer) const override;
    void UpdateColorCache() override;
    void UpdateGeometryCache() override;

    /// Forgets the texture until the next look-up; nothing is drawn without it.
    virtual void InvalidateTileTextureHandles();

    TileParams const &GetTileParams() const { return tile_; }
    /// Sets the tile, which is looked up at the next synchronisation.
    void SetTileParams(TileParams const &tile);

private:
    TileParams tile_;
    TileTexture const *tileTexture_ = nullptr;
    RectangleCT rectangle_;
};

} // namespace quillmarsh::gui

#endif
