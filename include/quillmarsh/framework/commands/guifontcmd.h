// Console command for the fonts of the GUI.
#ifndef QUILLMARSH_FRAMEWORK_COMMANDS_GUIFONTCMD_H
#define QUILLMARSH_FRAMEWORK_COMMANDS_GUIFONTCMD_H

#include <quillmarsh/framework/commandtable.h>

namespace quillmarsh::framework_commands
{

/// "gui-font": lists the fonts of the system and of the GUI manager, prints what a font was made from with the changes
/// that the line asks for, or puts a new font made from that in its place.
///
/// A font is listed as "NUMBER: RESOURCE, FAMILY", with " Bold" and " Italic" behind it, and selected by number or by
/// name; the name may be an alias. Only a font that is a gui::FontTexture can be changed. When the new font cannot be
/// made, the command tells why, keeps the old one, and returns false. For developers; console's thread, which is the
/// frame thread.
class QUILLMARSH_API GUIFontCmd : public Command, public CommandVocabulary
{
public:
    /// @name Words
    /// @{
    static constexpr char const *s_szDefaultName = "gui-font";
    static constexpr char const *s_szOptionSystemFonts = "sysfonts";
    static constexpr char const *s_szOptionUpdate = "u";
    static constexpr char const *s_szAssignFontNumber = "fn";
    static constexpr char const *s_szAssignFontResource = "fr";
    static constexpr char const *s_szAssignTextureWidth = "texwidth";
    static constexpr char const *s_szAssignMultiLevel = "multilevel";
    static constexpr char const *s_szAssignAsciiOnly = "ascii-only";
    static constexpr char const *s_szAssignFamily = "family";
    static constexpr char const *s_szAssignBold = "bold";
    static constexpr char const *s_szAssignItalic = "italic";
    static constexpr char const *s_szAssignSpacing = "spacing";
    static constexpr char const *s_szAssignSpacingMono = "spacing-mono";
    static constexpr char const *s_szAssignScaleHeight = "ig-scale-height";
    static constexpr char const *s_szAssignOffsetH = "ig-offset-h";
    static constexpr char const *s_szAssignOffsetV = "ig-offset-v";
    static constexpr char const *s_szAssignSizeH = "ig-size-h";
    static constexpr char const *s_szAssignSizeV = "ig-size-v";
    static constexpr char const *s_szAssignWidthEmpty = "ac-width-empty";
    static constexpr char const *s_szAssignAddLeft = "ac-add-l";
    static constexpr char const *s_szAssignAddRight = "ac-add-r";
    static constexpr char const *s_szAssignAddTop = "ac-add-t";
    static constexpr char const *s_szAssignAddBottom = "ac-add-b";
    static constexpr char const *s_szValueUInteger = "uinteger";
    static constexpr char const *s_szValueString = "string";
    static constexpr char const *s_szValueBoolean = "boolean";
    static constexpr char const *s_szValueReal = "real";
    /// @}

    GUIFontCmd();
    ~GUIFontCmd() override;

    bool ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &commandLine) override;
    void DumpHelp(ostream &out, CommandLineParser const &parser) override;
    std::span<CommandWord const> GetWords() const override;
};

} // namespace quillmarsh::framework_commands

#endif
