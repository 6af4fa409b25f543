#include "source/gui/manager/resources.h"

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/framework/kernel.h>

#include "source/gui/branchwalk.h"
#include "source/gui/manager/parts.h"

#include <utility>

namespace quillmarsh::gui::manager_parts
{
namespace
{

/// Words of the failures of registration.
struct KindWords
{
    char const *name;
    char const *object;
};
constexpr KindWords s_textureWords = {"texture-name", "texture-object"};
constexpr KindWords s_fontWords = {"font-name", "font-object"};

/// Throws for what cannot be registered. `objects` are all registries: an object that is a font and a tile texture
/// belongs to one of them.
void CheckRegistration(KindWords const &words, string const &name, VideoResource const *object,
                       Resources const &resources)
{
    if (name.empty())
        QUILLMARSH_THROW(GUIException, string("Invalid argument: passed empty string for ") + words.name + '.');
    if (object == nullptr)
        QUILLMARSH_THROW(GUIException, string("Invalid argument: passed null for ") + words.object + '.');
    string const *other = resources.tileTextures.objects.FindName(*object);
    if (other == nullptr)
        other = resources.fonts.objects.FindName(*object);
    if (other != nullptr)
        QUILLMARSH_THROW(GUIException, name + ": " + words.object + " already registered under name: " + *other);
}

void LogDebug(char const *line)
{
    GetLogOut() << e_debug << line << e_info;
}

} // namespace

template<typename T>
void LookUps<T>::Erase(T &user)
{
    requests_.Erase(user);
    lookedUp_.Erase(user);
}

template<typename T>
template<typename Call>
void LookUps<T>::LookUp(char const *failure, Call &&call)
{
    requests_.WorkOff(
        [&](T &user)
        {
            lookedUp_.Append(user);
            // The call may delete the user.
            std::type_info const &type = typeid(user);
            if (!call(user))
                QUILLMARSH_THROW(GUIException, failure + FormatObjectName(GetTypeName(type), &user));
        });
}

template<typename T>
void LookUps<T>::TakeBack()
{
    // Those that have looked up stood ahead of the others.
    requests_.WorkOff([this](T &user) { lookedUp_.Append(user); });
    lookedUp_.WorkOff([this](T &user) { requests_.Append(user); });
}

template class LookUps<VideoResourceUser>;
template class LookUps<Component>;

void Resources::Register(string const &name, TileTexture *texture)
{
    CheckRegistration(s_textureWords, name, texture, *this);
    tileTextures.objects.Register(name, *texture);
    OnTileTexturesChanged();
}

void Resources::Register(string const &name, Font *font)
{
    CheckRegistration(s_fontWords, name, font, *this);
    fonts.objects.Register(name, *font);
    OnFontsChanged();
}

void Resources::OnTileTexturesChanged()
{
    // Once now, for users of what was removed, and once more when the part in the renderer is there: it may come late.
    parts_.pending.tileTexturesToCreate = true;
    OnTileTextureAliasesChanged();
}

void Resources::OnFontsChanged()
{
    parts_.pending.fontsToCreate = true;
    OnFontAliasesChanged();
}

void Resources::OnTileTextureAliasesChanged()
{
    parts_.pending.recacheAllTileTextures = true;
    parts_.pending.tileTextureListChanged = true;
}

void Resources::OnFontAliasesChanged()
{
    parts_.pending.recacheAllFonts = true;
    parts_.pending.fontListChanged = true;
}

void Resources::OnShadersChanged()
{
    parts_.pending.shaderListChanged = true;
}

void Resources::OnCursorsChanged()
{
    parts_.pending.cursorListChanged = true;
}

void Resources::OnCreated(BaseShader &shader)
{
    OnShadersChanged();
    if (!parts_.pending.shaderInsert)
        return;
    shaders.objects.Insert(shader);
    tileTextureRequests.Append(shader);
    fontRequests.Append(shader);
}

void Resources::OnCreated(Cursor &cursor)
{
    OnCursorsChanged();
    if (!parts_.pending.cursorInsert)
        return;
    cursors.objects.Insert(cursor);
    tileTextureRequests.Append(cursor);
    fontRequests.Append(cursor);
}

void Resources::OnDeleted(BaseShader &shader)
{
    shaders.objects.Erase(shader);
    parts_.timeNotices.shaders.Erase(shader);
    ForgetInComponents(shader);
    OnShadersChanged();
}

void Resources::OnDeleted(Cursor &cursor)
{
    cursors.objects.Erase(cursor);
    parts_.timeNotices.cursors.Erase(cursor);
    ForgetInComponents(cursor);
    parts_.cursorDisplay.OnDeleted(cursor);
    OnCursorsChanged();
}

template<typename T>
void Resources::ForgetInComponents(T const &object)
{
    // The tree itself, as the queues may lack components that have got their handles already.
    auto const forget = [&object](Component &component)
    {
        Membership::Forget(component, object);
        return true;
    };
    parts_.queues.topLevel.ForEach([&forget](Component &top) { WalkBranch(top, forget); });
}

void Resources::OnRenamed(BaseShader &shader)
{
    shaders.objects.Reorder(shader);
    OnShadersChanged();
}

void Resources::OnRenamed(Cursor &cursor)
{
    cursors.objects.Reorder(cursor);
    OnCursorsChanged();
}

void Resources::OnDeleted(VideoResourceUser &user)
{
    tileTextureRequests.Erase(user);
    fontRequests.Erase(user);
}

void Resources::NotifyListsChanged()
{
    Manager &manager = parts_.manager;
    if (std::exchange(parts_.pending.tileTextureListChanged, false))
        ForEachUser([&](VideoResourceUser &user) { user.OnTileTextureListChanged(manager); });
    if (std::exchange(parts_.pending.fontListChanged, false))
        ForEachUser([&](VideoResourceUser &user) { user.OnFontListChanged(manager); });
}

void Resources::CacheTileTexturesAndFonts()
{
    Manager &manager = parts_.manager;
    Pending &pending = parts_.pending;
    bool const allTileTextures = pending.recacheAllTileTextures;
    bool const allFonts = pending.recacheAllFonts;
    try
    {
        if (CollectUsers(pending.recacheAllTileTextures, tileTextures, tileTextureRequests))
        {
            LogDebug("Caching tile-texture handles\n");
            tileTextureRequests.LookUp("Missing tile-texture for: ",
                                       [&](VideoResourceUser &user) { return user.CacheTileTextureHandles(manager); });
        }
        if (CollectUsers(pending.recacheAllFonts, fonts, fontRequests))
        {
            LogDebug("Caching font handles\n");
            fontRequests.LookUp("Missing font for: ",
                                [&](VideoResourceUser &user) { return user.CacheFontHandles(manager); });
        }
        tileTextureRequests.Tell([](VideoResourceUser &user) { user.PostCacheTileTextureHandles(); });
        fontRequests.Tell([](VideoResourceUser &user) { user.PostCacheFontHandles(); });
    }
    catch (...)
    {
        // A handler may have called this in the middle of another synchronisation, which then goes on and must not
        // release what was condemned: users that are taken back still have it.
        pending.recacheAllTileTextures |= tileTextures.objects.Pardon() || allTileTextures;
        pending.recacheAllFonts |= fonts.objects.Pardon() || allFonts;
        tileTextureRequests.TakeBack();
        fontRequests.TakeBack();
        throw;
    }
    tileTextures.objects.ReleaseCondemned();
    fonts.objects.ReleaseCondemned();
}

template<typename Kind>
bool Resources::CollectUsers(bool &recacheAll, Kind &kind, LookUps<VideoResourceUser> &requests)
{
    if (!std::exchange(recacheAll, false))
        return !requests.IsEmpty();
    kind.objects.CondemnRetired();
    parts_.pending.allGeometryDirty = true;
    requests.CollectAhead([&] { ForEachUser([&](VideoResourceUser &user) { requests.Append(user); }); });
    return true;
}

void Resources::CacheShaders()
{
    Manager &manager = parts_.manager;
    bool &isChanged = parts_.pending.shaderListChanged;
    bool const all = isChanged;
    try
    {
        if (all)
            parts_.queues.all.ForEach([&](Component &component) { component.OnShaderListChanged(manager); });
        if (!CollectComponents(isChanged, shaderRequests))
            return;
        LogDebug("Caching shader handles\n");
        shaderRequests.LookUp("Missing shader for: ",
                              [&](Component &component) { return component.CacheShaderHandles(manager); });
        shaderRequests.Tell([](Component &component) { component.PostCacheShaderHandles(); });
    }
    catch (...)
    {
        isChanged |= all;
        shaderRequests.TakeBack();
        throw;
    }
}

void Resources::CacheCursors()
{
    Manager &manager = parts_.manager;
    bool &isChanged = parts_.pending.cursorListChanged;
    bool const all = isChanged;
    try
    {
        if (all)
            parts_.queues.all.ForEach([&](Component &component) { component.OnCursorListChanged(manager); });
        if (!CollectComponents(isChanged, cursorRequests))
            return;
        parts_.pending.internalCursorsDirty = true;
        LogDebug("Caching cursor handles\n");
        cursorRequests.LookUp("Missing cursor for: ",
                              [&](Component &component) { return component.CacheCursorHandles(manager); });
        cursorRequests.Tell([](Component &component) { component.PostCacheCursorHandles(); });
    }
    catch (...)
    {
        isChanged |= all;
        cursorRequests.TakeBack();
        throw;
    }
}

bool Resources::CollectComponents(bool &all, LookUps<Component> &requests)
{
    if (!std::exchange(all, false))
        return !requests.IsEmpty();
    parts_.pending.allGeometryDirty = true;
    requests.CollectAhead([&]
                          { parts_.queues.all.ForEach([&](Component &component) { requests.Append(component); }); });
    return true;
}

void Resources::ForEachUser(std::function<void(VideoResourceUser &)> const &call)
{
    shaders.objects.ForEach(call);
    cursors.objects.ForEach(call);
    parts_.queues.all.ForEach(call);
}

} // namespace quillmarsh::gui::manager_parts
