// Console command that shows and gathers the statistics of the GUI renderer.
#ifndef QUILLMARSH_FRAMEWORK_COMMANDS_GUISTATSCMD_H
#define QUILLMARSH_FRAMEWORK_COMMANDS_GUISTATSCMD_H

#include <quillmarsh/framework/commandtable.h>
#include <quillmarsh/framework/guirendererstatscollector.h>

namespace quillmarsh::framework_commands
{

/// "gui-stats": prints the counters of the last frame, or gathers those of many frames and prints minimum, maximum and
/// average of a frame.
///
/// "reset", "run", "stop" and "dump" act in this order. Where a GUI renderer is needed, the command returns false while
/// no video renderer is active. For developers; console's thread, which is the frame thread.
class QUILLMARSH_API GUIStatsCmd : public Command, public CommandVocabulary
{
public:
    /// @name Words
    /// @{
    static constexpr char const *s_szDefaultName = "gui-stats";
    static constexpr char const *s_szOptionRun = "run";
    static constexpr char const *s_szOptionStop = "stop";
    static constexpr char const *s_szOptionReset = "reset";
    static constexpr char const *s_szOptionDump = "dump";
    /// @}

    GUIStatsCmd();
    ~GUIStatsCmd() override;

    GUIRendererStatsCollector const &GetCollector() const { return collector_; }

    bool ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &commandLine) override;
    void DumpHelp(ostream &out, CommandLineParser const &parser) override;
    std::span<CommandWord const> GetWords() const override;

private:
    void Dump(ostream &out);

    GUIRendererStatsCollector collector_;
};

} // namespace quillmarsh::framework_commands

#endif
