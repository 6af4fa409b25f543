// The manager's operations of aliases.
#include "source/gui/manager/parts.h"

#include <quillmarsh/gui/gui_manager.h>

namespace quillmarsh::gui
{

namespace
{

using manager_parts::Pending;

/// @name Consequences of a change of aliases
/// @{
void OnTileTextureAliasesChanged(Pending &pending)
{
    pending.tileTextureListChanged = true;
    pending.recacheAllTileTextures = true;
}

void OnFontAliasesChanged(Pending &pending)
{
    pending.fontListChanged = true;
    pending.recacheAllFonts = true;
}

void OnShaderAliasesChanged(Pending &pending)
{
    pending.shaderListChanged = true;
}

void OnCursorAliasesChanged(Pending &pending)
{
    pending.cursorListChanged = true;
}
/// @}

} // namespace

void Manager::AddTileTextureAlias(string const &alias, string const &name)
{
    if (parts_->resources.tileTextures.aliases.Add(alias, name))
        OnTileTextureAliasesChanged(parts_->pending);
}

void Manager::ClearTileTextureAlias(string const &alias)
{
    if (parts_->resources.tileTextures.aliases.Clear(alias))
        OnTileTextureAliasesChanged(parts_->pending);
}

void Manager::ClearAllTileTextureAliases()
{
    parts_->resources.tileTextures.aliases.ClearAll();
    OnTileTextureAliasesChanged(parts_->pending);
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
        OnFontAliasesChanged(parts_->pending);
}

void Manager::ClearFontAlias(string const &alias)
{
    if (parts_->resources.fonts.aliases.Clear(alias))
        OnFontAliasesChanged(parts_->pending);
}

void Manager::ClearAllFontAliases()
{
    parts_->resources.fonts.aliases.ClearAll();
    OnFontAliasesChanged(parts_->pending);
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
        OnShaderAliasesChanged(parts_->pending);
}

void Manager::ClearShaderAlias(string const &alias)
{
    if (parts_->resources.shaders.aliases.Clear(alias))
        OnShaderAliasesChanged(parts_->pending);
}

void Manager::ClearAllShaderAliases()
{
    parts_->resources.shaders.aliases.ClearAll();
    OnShaderAliasesChanged(parts_->pending);
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
        OnCursorAliasesChanged(parts_->pending);
}

void Manager::ClearCursorAlias(string const &alias)
{
    if (parts_->resources.cursors.aliases.Clear(alias))
        OnCursorAliasesChanged(parts_->pending);
}

void Manager::ClearAllCursorAliases()
{
    parts_->resources.cursors.aliases.ClearAll();
    OnCursorAliasesChanged(parts_->pending);
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
