#include <quillmarsh/framework/commands/guialiascmd.h>

#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/basetools/streameffectors.h>
#include <quillmarsh/gui/gui_manager.h>

#include "guimanageruse.h"

#include <algorithm>

namespace quillmarsh::framework_commands
{
namespace
{

using Cmd = GUIAliasCmd;
using gui::Manager;

/// One kind of resource, and its operations of the manager.
struct Kind
{
    CommandWord word;
    char const *aliasHeading;
    char const *objectHeading;
    void (Manager::*getAliases)(std::vector<string> &aliases) const;
    bool (Manager::*resolve)(string const &alias, string &name) const;
    void (Manager::*add)(string const &alias, string const &name);
    void (Manager::*clear)(string const &alias);
    void (Manager::*clearAll)();
    void (Manager::*dumpObjects)(ostream &out, unsigned int tabs) const;
};

constexpr Kind s_kinds[] = {
    {CommandWord::Option(Cmd::s_szOptionTile, "specify tile-texture object-type\n"), "Tile-texture aliases:\n",
     "Tile-texture objects:\n", &Manager::GetTileTextureAliases, &Manager::ResolveTileTextureAlias,
     &Manager::AddTileTextureAlias, &Manager::ClearTileTextureAlias, &Manager::ClearAllTileTextureAliases,
     &Manager::DumpRegisteredTileTextures},
    {CommandWord::Option(Cmd::s_szOptionFont, "specify font object-type\n"), "Font aliases:\n", "Font objects:\n",
     &Manager::GetFontAliases, &Manager::ResolveFontAlias, &Manager::AddFontAlias, &Manager::ClearFontAlias,
     &Manager::ClearAllFontAliases, &Manager::DumpRegisteredFonts},
    {CommandWord::Option(Cmd::s_szOptionShader, "specify shader object-type\n"), "Shader aliases:\n",
     "Shader objects:\n", &Manager::GetShaderAliases, &Manager::ResolveShaderAlias, &Manager::AddShaderAlias,
     &Manager::ClearShaderAlias, &Manager::ClearAllShaderAliases, &Manager::DumpRegisteredShaders},
    {CommandWord::Option(Cmd::s_szOptionCursor, "specify cursor object-type\n"), "Cursor aliases:\n",
     "Cursor objects:\n", &Manager::GetCursorAliases, &Manager::ResolveCursorAlias, &Manager::AddCursorAlias,
     &Manager::ClearCursorAlias, &Manager::ClearAllCursorAliases, &Manager::DumpRegisteredCursors},
};

Kind const *FindKind(CommandArguments const &arguments)
{
    auto const isNamed = [&arguments](Kind const &kind) { return arguments.HasOption(kind.word.name); };
    auto const found = std::find_if(std::begin(s_kinds), std::end(s_kinds), isNamed);
    return found != std::end(s_kinds) ? found : nullptr;
}

/// Offers the aliases of the kind that the line names, or of all.
void OfferAliases(CommandArguments const &line, CompletionOffers &offers)
{
    if (!Manager::IsCreated())
        return;
    Kind const *const named = FindKind(line);
    for (Kind const &kind : s_kinds)
    {
        if (named != nullptr && named != &kind)
            continue;
        std::vector<string> aliases;
        (Manager::Instance().*kind.getAliases)(aliases);
        for (string const &alias : aliases)
            offers.Add(alias);
    }
}

constexpr CommandWord s_words[] = {
    CommandWord::Option(Cmd::s_szOptionObjects, "list all objects of referenced type\n"),
    CommandWord::Option(Cmd::s_szOptionClearAll, "clear all aliases referenced by object-type\n"),
    CommandWord::Option(Cmd::s_szOptionClear, "clear alias referenced by object-type & alias-name\n"),
    s_kinds[0].word,
    s_kinds[1].word,
    s_kinds[2].word,
    s_kinds[3].word,
    CommandWord::Assignment(Cmd::s_szAssignReference, Cmd::s_szValueString, "reference-name\n"),
    CommandWord::Assignment(Cmd::s_szAssignAlias, Cmd::s_szValueString, "alias-name\n",
                            {"an alias-name", nullptr, &OfferAliases}),
};

void List(ostream &out, Manager const &manager, Kind const &kind, bool withObjects)
{
    out << kind.aliasHeading;
    std::vector<string> aliases;
    (manager.*kind.getAliases)(aliases);
    for (string const &alias : aliases)
    {
        string name;
        (manager.*kind.resolve)(alias, name);
        out << alias << " ==> " << name << nl;
    }
    if (!withObjects)
        return;
    out << kind.objectHeading;
    (manager.*kind.dumpObjects)(out, 0);
}

void Change(CommandArguments const &arguments, Manager &manager, Kind const &kind)
{
    if (arguments.HasOption(Cmd::s_szOptionClearAll))
        (manager.*kind.clearAll)();
    string const *const alias = arguments.FindAssignment(Cmd::s_szAssignAlias);
    if (alias == nullptr)
        return;
    if (arguments.HasOption(Cmd::s_szOptionClear))
        (manager.*kind.clear)(*alias);
    if (string const *const name = arguments.FindAssignment(Cmd::s_szAssignReference))
        (manager.*kind.add)(*alias, *name);
}

} // namespace

GUIAliasCmd::GUIAliasCmd()
{
    SetDefaultName(s_szDefaultName);
    SetShortDesc("Setup gui object aliases");
    SetDeveloperModeOnly(true);
}

GUIAliasCmd::~GUIAliasCmd() = default;

bool GUIAliasCmd::ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &)
{
    Manager *const manager = FindGUIManager(out);
    if (manager == nullptr)
        return false;
    CommandArguments const arguments(*this, parser, s_words);
    Kind const *const named = FindKind(arguments);
    if (named != nullptr)
        Change(arguments, *manager, *named);
    for (Kind const &kind : s_kinds)
    {
        if (named == nullptr || named == &kind)
            List(out, *manager, kind, arguments.HasOption(s_szOptionObjects));
    }
    return true;
}

void GUIAliasCmd::DumpHelp(ostream &out, CommandLineParser const &parser)
{
    DumpCommandWords(out, parser, s_words);
}

std::span<CommandWord const> GUIAliasCmd::GetWords() const
{
    return s_words;
}

} // namespace quillmarsh::framework_commands
