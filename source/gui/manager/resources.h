// The four kinds of named resource, and the look-ups of their users.
#ifndef QUILLMARSH_SOURCE_GUI_MANAGER_RESOURCES_H
#define QUILLMARSH_SOURCE_GUI_MANAGER_RESOURCES_H

#include "source/gui/manager/namedresources.h"
#include "source/gui/manager/safelists.h"

namespace quillmarsh::gui::manager_parts
{

struct Parts;

/// Registries, aliases, and the lists of users that are to look their names up again. Reads the all-components queue.
class Resources : NoCopy
{
public:
    explicit Resources(Parts &parts) : parts_(parts) {}

    /// @name Changes
    /// They raise the flags of Pending.
    /// @{

    /// Throws the exceptions of Manager::RegisterTileTexture() and RegisterFont(); the object is taken only on success.
    void Register(string const &name, std::shared_ptr<TileTexture> texture);
    void Register(string const &name, std::shared_ptr<Font> font);
    void OnTileTexturesChanged();
    void OnFontsChanged();
    void OnCreated(BaseShader &shader);
    void OnCreated(Cursor &cursor);
    /// They also take the object from all components, which may have its handle, and from time and request lists.
    void OnDeleted(BaseShader &shader);
    void OnDeleted(Cursor &cursor);
    void OnRenamed(BaseShader &shader);
    void OnRenamed(Cursor &cursor);
    /// Takes a user from the request lists.
    void OnDeleted(VideoResourceUser &user);
    /// @}

    /// @name Steps of a synchronisation
    /// They do nothing if nothing is pending. Each throws GUIException when a user lacks its resource; the list keeps
    /// what was not looked up then.
    /// @{
    void NotifyListsChanged();
    void CacheTileTexturesAndFonts();
    void CacheShaders();
    void CacheCursors();
    /// @}

    /// Calls for all shaders, then all cursors, then all components.
    template<typename Call>
    void ForEachUser(Call &&call);

    TileTextures tileTextures;
    Fonts fonts;
    Shaders shaders;
    Cursors cursors;

    SafeList<VideoResourceUser> tileTextureRequests{e_list_tile_texture_requests};
    SafeList<VideoResourceUser> fontRequests{e_list_font_requests};
    SafeList<Component> shaderRequests{e_list_shader_requests};
    SafeList<Component> cursorRequests{e_list_cursor_requests};

private:
    Parts &parts_;
};

} // namespace quillmarsh::gui::manager_parts

#endif
