// Console command that lets frames pass.
#ifndef QUILLMARSH_HOST_WAITCMD_H
#define QUILLMARSH_HOST_WAITCMD_H

#include <quillmarsh/host/consolelines.h>

#include <quillmarsh/framework/commandtable.h>

namespace quillmarsh::host
{

/// "wait": lets a number of frames pass before the next line runs, one by default. Console's thread only.
class WaitCmd : public TableCommand
{
public:
    static constexpr char const *s_szDefaultName = "wait";

    /// Borrows `lines`, which must outlive the command.
    explicit WaitCmd(ConsoleLines &lines);
    ~WaitCmd() override;

    std::span<CommandWord const> GetWords() const override;

protected:
    bool Execute(ostream &out, CommandArguments const &arguments) override;
    string GetDefaultBehavior() const override;

private:
    ConsoleLines &lines_;
};

} // namespace quillmarsh::host

#endif
