// Console command that lets frames pass.
#ifndef QUILLMARSH_HOST_WAITCMD_H
#define QUILLMARSH_HOST_WAITCMD_H

#include <quillmarsh/host/consolelines.h>

#include <quillmarsh/basetools/command.h>

namespace quillmarsh::host
{

/// "wait": lets a number of frames pass before the next line runs, one by default. Console's thread.
class WaitCmd : public Command
{
public:
    static constexpr char const *s_szDefaultName = "wait";

    /// The lines are borrowed.
    explicit WaitCmd(ConsoleLines &lines);
    ~WaitCmd() override;

    bool ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &commandLine) override;
    void DumpHelp(ostream &out, CommandLineParser const &parser) override;

private:
    ConsoleLines &lines_;
};

} // namespace quillmarsh::host

#endif
