// The four kinds of named resource, and the look-ups of their users.
#ifndef QUILLMARSH_SOURCE_GUI_MANAGER_RESOURCES_H
#define QUILLMARSH_SOURCE_GUI_MANAGER_RESOURCES_H

#include "source/gui/manager/namedresources.h"
#include "source/gui/manager/safelists.h"

#include <functional>

namespace quillmarsh::gui::manager_parts
{

struct Parts;

/// Users that are to look up one kind of resource: each looks up, and later, when all have, each is told so. A user that
/// asks anew meanwhile stays on the list for the next time.
template<typename T>
class LookUps : NoCopy
{
public:
    LookUps(eList requests, eList lookedUp) : requests_(requests), lookedUp_(lookedUp) {}

    void Append(T &user) { requests_.Append(user); }
    /// A user is being destroyed.
    void Erase(T &user);
    /// Nobody waits to look up.
    bool IsEmpty() const { return requests_.IsEmpty(); }
    /// Appends users by a call. Those that wait already come behind them: some may be in no list of users.
    template<typename Collect>
    void CollectAhead(Collect &&collect)
    {
        requests_.WorkOff([this](T &user) { lookedUp_.Append(user); });
        collect();
        lookedUp_.WorkOff([this](T &user) { requests_.Append(user); });
    }

    /// Calls for each user that waits. Throws GUIException, `failure` and the object name, when a call returns false.
    template<typename Call>
    void LookUp(char const *failure, Call &&call);
    /// Calls for each user that has looked up.
    template<typename Call>
    void Tell(Call &&call)
    {
        lookedUp_.WorkOff(call);
    }
    /// Lets all that have looked up, and were not told, look up again.
    void TakeBack();

private:
    SafeList<T> requests_;
    SafeList<T> lookedUp_;
};

/// Registries, aliases, and the lists of users that are to look their names up again. Reads the all-components queue.
class Resources : NoCopy
{
public:
    explicit Resources(Parts &parts) : parts_(parts) {}

    /// @name Changes
    /// They raise the flags of Pending.
    /// @{

    /// Throw the exceptions of Manager::RegisterTileTexture() and RegisterFont(); the object is taken only on success.
    void Register(string const &name, TileTexture *texture);
    void Register(string const &name, Font *font);
    /// An object was registered or removed.
    void OnTileTexturesChanged();
    void OnFontsChanged();
    void OnTileTextureAliasesChanged();
    void OnFontAliasesChanged();
    /// Also of a shader's or cursor's aliases.
    void OnShadersChanged();
    void OnCursorsChanged();
    void OnCreated(BaseShader &shader);
    void OnCreated(Cursor &cursor);
    /// They also take the object from all components that have its handle, and from the time list.
    void OnDeleted(BaseShader &shader);
    void OnDeleted(Cursor &cursor);
    void OnRenamed(BaseShader &shader);
    void OnRenamed(Cursor &cursor);
    /// Takes a user from the lists of users.
    void OnDeleted(VideoResourceUser &user);
    /// @}

    /// @name Steps of a synchronisation
    /// They do nothing if nothing is pending. When a user lacks its resource, they throw GUIException, and the next
    /// synchronisation repeats the step.
    /// @{
    void NotifyListsChanged();
    void CacheTileTexturesAndFonts();
    void CacheShaders();
    void CacheCursors();
    /// @}

    /// Calls for all shaders, then all cursors, then all components.
    void ForEachUser(std::function<void(VideoResourceUser &)> const &call);

    TileTextures tileTextures;
    Fonts fonts;
    Shaders shaders;
    Cursors cursors;

    LookUps<VideoResourceUser> tileTextureRequests{e_list_tile_texture_requests, e_list_tile_textures_looked_up};
    LookUps<VideoResourceUser> fontRequests{e_list_font_requests, e_list_fonts_looked_up};
    LookUps<Component> shaderRequests{e_list_shader_requests, e_list_shaders_looked_up};
    LookUps<Component> cursorRequests{e_list_cursor_requests, e_list_cursors_looked_up};

private:
    /// Lets all users look up, if the flag is set, which falls. Returns whether the step is needed.
    template<typename Kind>
    bool CollectUsers(bool &recacheAll, Kind &kind, LookUps<VideoResourceUser> &requests);
    /// Lets all components look up, likewise.
    bool CollectComponents(bool &all, LookUps<Component> &requests);
    /// Takes an object that is being deleted from all components.
    template<typename T>
    void ForgetInComponents(T const &object);

    Parts &parts_;
};

} // namespace quillmarsh::gui::manager_parts

#endif
