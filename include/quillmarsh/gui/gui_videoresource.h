// Objects whose part in the video renderer comes and goes, and objects that use such.
#ifndef QUILLMARSH_GUI_GUI_VIDEORESOURCE_H
#define QUILLMARSH_GUI_GUI_VIDEORESOURCE_H

#include <quillmarsh/platform/types.h>

#include <array>
#include <cstdint>

namespace quillmarsh
{

class VideoRenderer;

namespace gui
{

class Manager;
namespace manager_parts
{
struct Membership;
} // namespace manager_parts

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

    /// @name Requests to the manager
    /// At its next synchronisation it calls the two operations of that kind.
    /// @{
    void RequestTileTextureRecache();
    void RequestFontRecache();
    /// @}

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

private:
    friend struct manager_parts::Membership;

    /// Places in the manager's lists, so that a user leaves them in constant time. They belong to the object: a copy
    /// stands in no list, and an assignment changes none.
    struct ListPlaces
    {
        /// Number of lists that the manager keeps of users.
        static constexpr unsigned int s_numLists = 15;
        /// Place in no list.
        static constexpr std::uint32_t s_none = 0xFFFFFFFF;

        ListPlaces() { places.fill(s_none); }
        ListPlaces(ListPlaces const &) : ListPlaces() {}
        ListPlaces &operator=(ListPlaces const &) { return *this; }

        std::array<std::uint32_t, s_numLists> places;
        /// Bits for the short lists that have no places: set when the user enters one.
        std::uint8_t marks = 0;
    };

    ListPlaces listPlaces_;
};

} // namespace gui

} // namespace quillmarsh

#endif
