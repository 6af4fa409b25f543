// Objects whose part in the video renderer comes and goes, and objects that use such.
#ifndef QUILLMARSH_GUI_GUI_VIDEORESOURCE_H
#define QUILLMARSH_GUI_GUI_VIDEORESOURCE_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh
{

class VideoRenderer;

namespace gui
{

class Manager;

/// Base of textures and fonts: describes something that a video renderer draws from. Its part in the renderer can be
/// created and released again and again. Frame thread only.
class QUILLMARSH_API VideoResource : NoCopy
{
public:
    virtual ~VideoResource();

    /// Creates the part in the renderer, in place of an older one. Throws GUIException when the renderer refuses it.
    virtual void CreateVideoRendererResource(VideoRenderer &renderer) = 0;
    /// Releases the part in the renderer, if there is one.
    virtual void ReleaseVideoRendererResource() = 0;

protected:
    VideoResource();
};

/// Base of what draws with tile textures and fonts that the GUI manager knows by name: components, shaders, cursors.
/// It keeps pointers to them, and the manager tells it when to look them up again. Frame thread only.
class QUILLMARSH_API VideoResourceUser
{
public:
    virtual ~VideoResourceUser();

    /// Another video renderer is there; null for none.
    virtual void OnVideoRendererChanged(VideoRenderer *renderer);
    /// Tile textures were registered, replaced or removed.
    virtual void OnTileTextureListChanged(Manager &manager);
    /// Fonts were registered, replaced or removed.
    virtual void OnFontListChanged(Manager &manager);
    /// Looks up the tile textures in use. Returns false when one is missing. By default there are none: true.
    virtual bool CacheTileTextureHandles(Manager &manager);
    /// Every user has looked up its tile textures.
    virtual void PostCacheTileTextureHandles();
    /// Looks up the fonts in use, likewise.
    virtual bool CacheFontHandles(Manager &manager);
    /// Every user has looked up its fonts.
    virtual void PostCacheFontHandles();

protected:
    VideoResourceUser() = default;
    VideoResourceUser(VideoResourceUser const &) = default;
    VideoResourceUser &operator=(VideoResourceUser const &) = default;
};

} // namespace gui

} // namespace quillmarsh

#endif
