// The manager's operations of aliases.
#include "source/gui/manager/parts.h"

#include <quillmarsh/gui/gui_manager.h>

namespace quillmarsh::gui
{

void Manager::AddTileTextureAlias(string const &alias, string const &name)
{
    if (parts_->resources.tileTextures.aliases.Add(alias, name))
        parts_->resources.OnTileTextureAliasesChanged();
}

void Manager::ClearTileTextureAlias(string const &alias)
{
    if (parts_->resources.tileTextures.aliases.Clear(alias))
        parts_->resources.OnTileTextureAliasesChanged();
}

void Manager::ClearAllTileTextureAliases()
{
    parts_->resources.tileTextures.aliases.ClearAll();
    parts_->resources.OnTileTextureAliasesChanged();
}

void Manager::GetTileTextureAliases(std::vector<string> &aliases) const
{
    parts_->resources.tileTextures.aliases.GetAll(aliases);
}

bool Manager::ResolveTileTextureAlias(string const &alias, string &name) const
{
    return parts_->resources.tileTextures.aliases.Resolve(alias, name);
}

void Manager::AddFontAlias(string const &alias, string const &name)
{
    if (parts_->resources.fonts.aliases.Add(alias, name))
        parts_->resources.OnFontAliasesChanged();
}

void Manager::ClearFontAlias(string const &alias)
{
    if (parts_->resources.fonts.aliases.Clear(alias))
        parts_->resources.OnFontAliasesChanged();
}

void Manager::ClearAllFontAliases()
{
    parts_->resources.fonts.aliases.ClearAll();
    parts_->resources.OnFontAliasesChanged();
}

void Manager::GetFontAliases(std::vector<string> &aliases) const
{
    parts_->resources.fonts.aliases.GetAll(aliases);
}

bool Manager::ResolveFontAlias(string const &alias, string &name) const
{
    return parts_->resources.fonts.aliases.Resolve(alias, name);
}

void Manager::AddShaderAlias(string const &alias, string const &name)
{
    if (parts_->resources.shaders.aliases.Add(alias, name))
        parts_->resources.OnShadersChanged();
}

void Manager::ClearShaderAlias(string const &alias)
{
    if (parts_->resources.shaders.aliases.Clear(alias))
        parts_->resources.OnShadersChanged();
}

void Manager::ClearAllShaderAliases()
{
    parts_->resources.shaders.aliases.ClearAll();
    parts_->resources.OnShadersChanged();
}

void Manager::GetShaderAliases(std::vector<string> &aliases) const
{
    parts_->resources.shaders.aliases.GetAll(aliases);
}

bool Manager::ResolveShaderAlias(string const &alias, string &name) const
{
    return parts_->resources.shaders.aliases.Resolve(alias, name);
}

void Manager::AddCursorAlias(string const &alias, string const &name)
{
    if (parts_->resources.cursors.aliases.Add(alias, name))
        parts_->resources.OnCursorsChanged();
}

void Manager::ClearCursorAlias(string const &alias)
{
    if (parts_->resources.cursors.aliases.Clear(alias))
        parts_->resources.OnCursorsChanged();
}

void Manager::ClearAllCursorAliases()
{
    parts_->resources.cursors.aliases.ClearAll();
    parts_->resources.OnCursorsChanged();
}

void Manager::GetCursorAliases(std::vector<string> &aliases) const
{
    parts_->resources.cursors.aliases.GetAll(aliases);
}

bool Manager::ResolveCursorAlias(string const &alias, string &name) const
{
    return parts_->resources.cursors.aliases.Resolve(alias, name);
}

} // namespace quillmarsh::gui
