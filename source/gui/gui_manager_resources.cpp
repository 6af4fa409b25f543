// The manager's operations of named resources.
#include "source/gui/manager/parts.h"

#include <quillmarsh/gui/gui_cursors.h>
#include <quillmarsh/gui/gui_fonts.h>
#include <quillmarsh/gui/gui_manager.h>
#include <quillmarsh/gui/gui_shaders.h>
#include <quillmarsh/gui/gui_textures.h>

#include <utility>

namespace quillmarsh::gui
{

namespace
{

template<typename Registered, typename T>
bool IsRegistered(Registered const &registered, T const &object, string *name)
{
    string const *const found = registered.FindName(object);
    if (found != nullptr && name != nullptr)
        *name = *found;
    return found != nullptr;
}

/// Deletes all; what their destructors make meanwhile stays out of the registry.
template<typename Objects>
void DeleteAll(Objects &objects, bool &insertSwitch)
{
    bool const formerly = std::exchange(insertSwitch, false);
    objects.DeleteAll();
    insertSwitch = formerly;
}

} // namespace

void Manager::RegisterTileTexture(string const &name, TileTexture *texture)
{
    parts_->resources.Register(name, texture);
}

void Manager::RegisterTileTexture(string const &name, AutoPtr<TileTexture> &texture)
{
    RegisterTileTexture(name, texture.get());
    static_cast<void>(texture.release());
}

void Manager::UnregisterTileTexture(string const &name)
{
    if (parts_->resources.tileTextures.objects.Unregister(name))
        parts_->resources.OnTileTexturesChanged();
}

void Manager::UnregisterAllTileTextures()
{
    parts_->resources.tileTextures.objects.UnregisterAll();
    parts_->resources.OnTileTexturesChanged();
}

void Manager::GetRegisteredTileTextureNames(std::vector<string> &names) const
{
    parts_->resources.tileTextures.objects.GetNames(names);
}

bool Manager::IsRegisteredTileTexture(TileTexture &texture, string *name) const
{
    return IsRegistered(parts_->resources.tileTextures.objects, texture, name);
}

TileTexture *Manager::GetTileTexture(string const &name) const
{
    return parts_->resources.tileTextures.Get(name);
}

void Manager::RequestTileTextureRecache(VideoResourceUser &user)
{
    parts_->resources.tileTextureRequests.Append(user);
}

void Manager::DumpRegisteredTileTextures(ostream &out, unsigned int tabs) const
{
    parts_->resources.tileTextures.objects.Dump(out, tabs);
}

void Manager::RegisterFont(string const &name, Font *font)
{
    parts_->resources.Register(name, font);
}

void Manager::RegisterFont(string const &name, AutoPtr<Font> &font)
{
    RegisterFont(name, font.get());
    static_cast<void>(font.release());
}

void Manager::RegisterFont(string const &name, AutoPtr<FontTexture> &font)
{
    RegisterFont(name, font.get());
    static_cast<void>(font.release());
}

void Manager::UnregisterFont(string const &name)
{
    if (parts_->resources.fonts.objects.Unregister(name))
        parts_->resources.OnFontsChanged();
}

void Manager::UnregisterAllFonts()
{
    parts_->resources.fonts.objects.UnregisterAll();
    parts_->resources.OnFontsChanged();
}

void Manager::GetRegisteredFontNames(std::vector<string> &names) const
{
    parts_->resources.fonts.objects.GetNames(names);
}

bool Manager::IsRegisteredFont(Font &font, string *name) const
{
    return IsRegistered(parts_->resources.fonts.objects, font, name);
}

Font *Manager::GetFont(string const &name) const
{
    return parts_->resources.fonts.Get(name);
}

void Manager::RequestFontRecache(VideoResourceUser &user)
{
    parts_->resources.fontRequests.Append(user);
}

void Manager::DumpRegisteredFonts(ostream &out, unsigned int tabs) const
{
    parts_->resources.fonts.objects.Dump(out, tabs);
}

unsigned int Manager::GetNumShaders() const
{
    return parts_->resources.shaders.objects.GetSize();
}

BaseShader *Manager::GetShader(unsigned int index) const
{
    return parts_->resources.shaders.objects.Get(index);
}

BaseShader *Manager::GetShader(string const &name) const
{
    return parts_->resources.shaders.Get(name);
}

void Manager::DeleteShader(string const &name)
{
    delete parts_->resources.shaders.objects.Find(name);
}

void Manager::DeleteAllShaders()
{
    DeleteAll(parts_->resources.shaders.objects, parts_->pending.shaderInsert);
}

void Manager::RequestShaderRecache(Component &component)
{
    parts_->resources.shaderRequests.Append(component);
}

void Manager::DumpRegisteredShaders(ostream &out, unsigned int tabs) const
{
    parts_->resources.shaders.objects.Dump(out, tabs);
}

unsigned int Manager::GetNumCursors() const
{
    return parts_->resources.cursors.objects.GetSize();
}

Cursor *Manager::GetCursor(unsigned int index) const
{
    return parts_->resources.cursors.objects.Get(index);
}

Cursor *Manager::GetCursor(string const &name) const
{
    return parts_->resources.cursors.Get(name);
}

void Manager::DeleteCursor(string const &name)
{
    delete parts_->resources.cursors.objects.Find(name);
}

void Manager::DeleteAllCursors()
{
    DeleteAll(parts_->resources.cursors.objects, parts_->pending.cursorInsert);
}

void Manager::RequestCursorRecache(Component &component)
{
    parts_->resources.cursorRequests.Append(component);
}

void Manager::DumpRegisteredCursors(ostream &out, unsigned int tabs) const
{
    parts_->resources.cursors.objects.Dump(out, tabs);
}

Cursor const *Manager::GetActiveCursor() const
{
    return parts_->cursorDisplay.GetActive();
}

void Manager::ShowGUICursor(bool show)
{
    parts_->cursorDisplay.showGUICursor = show;
}

bool Manager::IsShownGUICursor() const
{
    return parts_->cursorDisplay.showGUICursor;
}

void Manager::ShowSystemCursor(bool show)
{
    parts_->cursorDisplay.ShowSystemCursor(show);
}

bool Manager::IsShownSystemCursor() const
{
    return parts_->cursorDisplay.IsShownSystemCursor();
}

void Manager::DispatchGlobalCursorParams()
{
    parts_->cursorDisplay.DispatchGlobalParams();
}

} // namespace quillmarsh::gui
