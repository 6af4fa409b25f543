#include <quillmarsh/framework/commands/guifontcmd.h>

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/basetools/streameffectors.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/basetools/windows/winutils.h>
#include <quillmarsh/gui/gui_fonts.h>

#include "guimanageruse.h"

#include <array>

namespace quillmarsh::framework_commands
{
namespace
{

using Cmd = GUIFontCmd;
using gui::FontTexture;
using gui::Manager;
using Params = FontTexture::CreationParams;

constexpr char const *s_szSelectionHeading = "Font-selection arguments:\n";
constexpr char const *s_szTextureHeading = "Texture arguments:\n";
constexpr char const *s_szFamilyHeading = "Font family:\n";
constexpr char const *s_szImageHeading = "Image generation:\n";
constexpr char const *s_szBoundaryHeading = "Glyph boundary auto-calculation:\n";
constexpr char const *s_szNotes = "Notes:\n\tUpdate must be explicitly specified,\n"
                                  "\totherwise updated parameters are just printed.\n";

std::vector<string> GetFontNames()
{
    std::vector<string> names;
    if (Manager::IsCreated())
        Manager::Instance().GetRegisteredFontNames(names);
    return names;
}

void OfferFontNumbers(CommandArguments const &, CompletionOffers &offers)
{
    std::vector<string> const names = GetFontNames();
    for (std::size_t i = 0; i < names.size(); ++i)
        offers.Add(MakeString(static_cast<unsigned int>(i)), names[i]);
}

void OfferFontNames(CommandArguments const &, CompletionOffers &offers)
{
    for (string const &name : GetFontNames())
        offers.Add(name);
}

void OfferFamilies(CommandArguments const &, CompletionOffers &offers)
{
    std::vector<string> names;
    win_utils::GdiplusGetFontFamilyNames(names);
    for (string const &name : names)
        offers.Add(name);
}

/// Assignment that changes a parameter of a font.
template<typename T>
struct Field
{
    CommandWord word;
    T Params::*value;
};

constexpr CommandWord Number(char const *name, char const *description, char const *heading)
{
    return CommandWord::Assignment(name, Cmd::s_szValueReal, description, command_values::s_real).Under(heading);
}

constexpr CommandWord Flag(char const *name, char const *value, char const *description, char const *heading)
{
    return CommandWord::Assignment(name, value, description, command_values::s_boolean).Under(heading);
}

constexpr CommandWord s_textureWidth = CommandWord::Assignment(Cmd::s_szAssignTextureWidth, Cmd::s_szValueUInteger,
                                                               "texture-width\n", command_values::s_uinteger)
                                           .Under(s_szTextureHeading);

constexpr CommandWord s_family =
    CommandWord::Assignment(Cmd::s_szAssignFamily, Cmd::s_szValueString, "font-family name\n",
                            {"a font-family", nullptr, &OfferFamilies})
        .Under(s_szFamilyHeading);

constexpr Field<bool> s_flags[] = {
    {Flag(Cmd::s_szAssignMultiLevel, Cmd::s_szValueString, "enable/disable resource multi-level\n", s_szTextureHeading),
     &Params::TextureMultiLevel},
    {Flag(Cmd::s_szAssignAsciiOnly, Cmd::s_szValueString, "enable/disable ascii-subset only\n", s_szTextureHeading),
     &Params::AsciiSubsetOnly},
    {Flag(Cmd::s_szAssignBold, Cmd::s_szValueBoolean, "enable/disable bold property\n", s_szFamilyHeading),
     &Params::Bold},
    {Flag(Cmd::s_szAssignItalic, Cmd::s_szValueBoolean, "enable/disable italic property\n", s_szFamilyHeading),
     &Params::Italic},
};

constexpr Field<float> s_numbers[] = {
    // The help does not mention the first two.
    {Number(Cmd::s_szAssignSpacing, nullptr, nullptr), &Params::DefaultSpacing},
    {Number(Cmd::s_szAssignSpacingMono, nullptr, nullptr), &Params::DefaultSpacingMono},
    {Number(Cmd::s_szAssignScaleHeight, "scale em-height\n", s_szImageHeading), &Params::IGScaleEmHeight},
    {Number(Cmd::s_szAssignOffsetH, "set horizontal glyph-offset in pixels\n", s_szImageHeading),
     &Params::IGGlyphOffsetH},
    {Number(Cmd::s_szAssignOffsetV, "set vertical glyph-offset in pixels\n", s_szImageHeading),
     &Params::IGGlyphOffsetV},
    {Number(Cmd::s_szAssignSizeH, "modify horizontal glyph-size in pixels\n", s_szImageHeading),
     &Params::IGGlyphSizeModifyH},
    {Number(Cmd::s_szAssignSizeV, "modify vertical glyph-size in pixels\n", s_szImageHeading),
     &Params::IGGlyphSizeModifyV},
    {Number(Cmd::s_szAssignWidthEmpty, "empty-glyph width\n", s_szBoundaryHeading), &Params::ACWidthEmptyGlyph},
    {Number(Cmd::s_szAssignAddLeft, "glyph's left-boundary additional extension in pixels\n", s_szBoundaryHeading),
     &Params::ACAddPixelsLeft},
    {Number(Cmd::s_szAssignAddRight, "glyph's right-boundary additional extension in pixels\n", s_szBoundaryHeading),
     &Params::ACAddPixelsRight},
    {Number(Cmd::s_szAssignAddTop, "glyph's top-boundary additional extension in pixels\n", s_szBoundaryHeading),
     &Params::ACAddPixelsTop},
    {Number(Cmd::s_szAssignAddBottom, "glyph's bottom-boundary additional extension in pixels\n", s_szBoundaryHeading),
     &Params::ACAddPixelsBottom},
};

/// All words in the order of the help.
constexpr auto s_words = []
{
    std::array<CommandWord, 6 + std::size(s_flags) + std::size(s_numbers)> words{};
    auto end = words.begin();
    *end++ = CommandWord::Option(Cmd::s_szOptionSystemFonts, "list installed system fonts\n");
    *end++ = CommandWord::Option(Cmd::s_szOptionUpdate, "update font-resource parameters\n");
    *end++ = CommandWord::Assignment(Cmd::s_szAssignFontNumber, Cmd::s_szValueUInteger, "select font by number\n",
                                     {"the number of a font-resource",
                                      [](CommandArguments const &, string const &text)
                                      { return command_values::IsUnsigned(text); },
                                      &OfferFontNumbers})
                 .Under(s_szSelectionHeading);
    *end++ =
        CommandWord::Assignment(Cmd::s_szAssignFontResource, Cmd::s_szValueString, "select font by resource-name\n",
                                {"the name of a font-resource", nullptr, &OfferFontNames})
            .Under(s_szSelectionHeading);
    *end++ = s_textureWidth;
    *end++ = s_flags[0].word;
    *end++ = s_flags[1].word;
    *end++ = s_family;
    *end++ = s_flags[2].word;
    *end++ = s_flags[3].word;
    for (Field<float> const &number : s_numbers)
        *end++ = number.word;
    return words;
}();

/// Returns the name of the font that the line selects; empty when it selects none that there is.
string SelectFont(CommandArguments const &arguments, Manager const &manager)
{
    if (string const *const number = arguments.FindAssignment(Cmd::s_szAssignFontNumber))
    {
        std::vector<string> const names = GetFontNames();
        unsigned int index = 0;
        if (command_values::IsUnsigned(*number) && ToValue(*number, index) && index < names.size())
            return names[index];
    }
    string name;
    if (string const *const resource = arguments.FindAssignment(Cmd::s_szAssignFontResource))
    {
        // The name under which it is registered, not its alias.
        if (gui::Font *const font = manager.GetFont(*resource))
            manager.IsRegisteredFont(*font, &name);
    }
    return name;
}

void ChangeParams(CommandArguments const &arguments, Params &params)
{
    string const *const width = arguments.FindAssignment(s_textureWidth.name);
    if (width != nullptr && command_values::IsUnsigned(*width))
        ToValue(*width, params.TextureWidth);
    arguments.ReadAssignment(s_family.name, params.Family);
    for (Field<bool> const &flag : s_flags)
        arguments.ReadAssignment(flag.word.name, params.*flag.value);
    for (Field<float> const &number : s_numbers)
        arguments.ReadAssignment(number.word.name, params.*number.value);
}

/// Puts a new font in the place of the old one. Returns false, and tells why, if it cannot be made.
bool UpdateFont(ostream &out, Manager &manager, string const &name, Params const &params)
{
    out << "Creating updated font-resource.\n";
    string reason;
    try
    {
        AutoPtr<FontTexture> font = FontTexture::CreateFontTexture(params);
        if (font != nullptr)
        {
            manager.RegisterFont(name, font);
            manager.SyncObjectStates();
            return true;
        }
    }
    catch (Exception const &thrown)
    {
        reason = '\t' + thrown.GetMessage() + '\n';
    }
    out << e_error << "Failed to create updated font-resource.\n" << reason << e_info;
    return false;
}

bool ShowFont(ostream &out, CommandArguments const &arguments, Manager &manager, string const &name)
{
    auto const *font = dynamic_cast<FontTexture const *>(manager.GetFont(name));
    if (font == nullptr)
    {
        out << e_error << "Font-resource " << name << " is no font-texture.\n" << e_info;
        return false;
    }
    Params params;
    font->GetCreationParameters(params);
    ChangeParams(arguments, params);
    bool succeeded = true;
    if (arguments.HasOption(Cmd::s_szOptionUpdate))
    {
        succeeded = UpdateFont(out, manager, name, params);
        // The old font has gone, and the new one may have got a substitute for its family.
        font = dynamic_cast<FontTexture const *>(manager.GetFont(name));
        if (font != nullptr)
            font->GetCreationParameters(params);
    }
    out << "Font-resource info: " << name << nl;
    params.Dump(out, 1);
    return succeeded;
}

void ListFonts(ostream &out, Manager const &manager)
{
    out << "GUI font-resources:\n";
    std::vector<string> const names = GetFontNames();
    for (std::size_t i = 0; i < names.size(); ++i)
    {
        gui::Font const *const font = manager.GetFont(names[i]);
        if (font == nullptr)
            continue;
        out << MakeString(static_cast<unsigned int>(i)) << ": " << names[i] << ", " << font->GetFamilyName()
            << (font->IsBold() ? " Bold" : "") << (font->IsItalic() ? " Italic" : "") << nl;
    }
}

void ListSystemFonts(ostream &out)
{
    out << "Installed system fonts:\n";
    std::vector<string> names;
    win_utils::GdiplusGetFontFamilyNames(names);
    for (string const &name : names)
        out << name << nl;
}

} // namespace

GUIFontCmd::GUIFontCmd()
{
    SetDefaultName(s_szDefaultName);
    SetShortDesc("Setup gui fonts");
    SetDeveloperModeOnly(true);
}

GUIFontCmd::~GUIFontCmd() = default;

bool GUIFontCmd::ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &)
{
    CommandArguments const arguments(*this, parser, s_words);
    if (arguments.HasOption(s_szOptionSystemFonts))
        ListSystemFonts(out);
    Manager *const manager = FindGUIManager(out);
    if (manager == nullptr)
        return false;
    string const name = SelectFont(arguments, *manager);
    if (!name.empty())
        return ShowFont(out, arguments, *manager, name);
    ListFonts(out, *manager);
    return true;
}

void GUIFontCmd::DumpHelp(ostream &out, CommandLineParser const &parser)
{
    DumpCommandWords(out, parser, s_words, "print font-resources registered with gui-manager");
    out << s_szNotes;
}

std::span<CommandWord const> GUIFontCmd::GetWords() const
{
    return s_words;
}

} // namespace quillmarsh::framework_commands
