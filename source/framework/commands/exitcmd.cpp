#include <quillmarsh/framework/commands/exitcmd.h>

#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/kernelexecutionparams.h>

namespace quillmarsh::framework_commands
{
namespace
{

constexpr CommandWord s_words[] = {
    CommandWord::Option(ExitCmd::s_szOptionWait, "wait close confirmation at exit\n"),
};

} // namespace

ExitCmd::ExitCmd()
{
    SetDefaultName(s_szDefaultName);
    SetShortDesc("Request application shutdown");
}

ExitCmd::~ExitCmd() = default;

bool ExitCmd::ParseAndExecute(ostream &, CommandLineParser const &parser, string const &)
{
    CommandArguments const arguments(*this, parser, s_words);
    if (arguments.HasOption(s_szOptionWait))
    {
        KernelExecutionParams params(true);
        params.WaitCloseConfirmationOnExit = true;
        params.SetKernelCurrent();
    }
    Kernel::Instance().RequestExit();
    return true;
}

void ExitCmd::DumpHelp(ostream &out, CommandLineParser const &parser)
{
    DumpCommandWords(out, parser, s_words);
}

std::span<CommandWord const> ExitCmd::GetWords() const
{
    return s_words;
}

} // namespace quillmarsh::framework_commands
