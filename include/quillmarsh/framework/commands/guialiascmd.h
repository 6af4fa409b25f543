// Console command for the aliases of the GUI's resources.
#ifndef QUILLMARSH_FRAMEWORK_COMMANDS_GUIALIASCMD_H
#define QUILLMARSH_FRAMEWORK_COMMANDS_GUIALIASCMD_H

#include <quillmarsh/framework/commandtable.h>

namespace quillmarsh::framework_commands
{

/// "gui-alias": lists, adds and clears the aliases of the GUI's tile textures, fonts, shaders and cursors.
///
/// The first kind that the line names counts, in this order. A line without a kind lists the aliases of all; to change
/// anything it has to name one. After a change, the aliases of the kind are listed. Returns false, and changes nothing,
/// if the line lacks what the change needs, or if there is no GUI manager. For developers; console's thread, which is
/// the frame thread.
class QUILLMARSH_API GUIAliasCmd : public Command, public CommandVocabulary
{
public:
    /// @name Words
    /// @{
    static constexpr char const *s_szDefaultName = "gui-alias";
    static constexpr char const *s_szOptionObjects = "objects";
    static constexpr char const *s_szOptionClearAll = "clear-all";
    static constexpr char const *s_szOptionClear = "clear";
    static constexpr char const *s_szOptionTile = "tile";
    static constexpr char const *s_szOptionFont = "font";
    static constexpr char const *s_szOptionShader = "shader";
    static constexpr char const *s_szOptionCursor = "cursor";
    static constexpr char const *s_szAssignReference = "ref";
    static constexpr char const *s_szAssignAlias = "alias";
    static constexpr char const *s_szValueString = "string";
    /// @}

    GUIAliasCmd();
    ~GUIAliasCmd() override;

    bool ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &commandLine) override;
    void DumpHelp(ostream &out, CommandLineParser const &parser) override;
    std::span<CommandWord const> GetWords() const override;
};

} // namespace quillmarsh::framework_commands

#endif
