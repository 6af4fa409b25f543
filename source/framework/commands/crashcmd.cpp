#include <quillmarsh/framework/commands/crashcmd.h>

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/framework/kernelexecutionparams.h>

#include <array>

namespace quillmarsh::framework_commands
{
namespace
{

using Cmd = CrashCmd;

// The pointer is volatile too: a null pointer that the compiler knows of becomes a trap of another kind.
void ReadZeroPointer()
{
    int volatile *const volatile zero = nullptr;
    static_cast<void>(*zero);
}

void WriteZeroPointer()
{
    int volatile *const volatile zero = nullptr;
    *zero = 0;
}

void ForceAssert()
{
    QUILLMARSH_REPORT_FAILURE("Assert Failed", "Forced assert by crash-command.");
}

// The dialog bears the title of an assertion.
void ForceVerify()
{
    QUILLMARSH_REPORT_FAILURE("Assert Failed", "Forced verify by crash-command.");
}

void ForceThrow()
{
    QUILLMARSH_THROW(ApplicationException, "Forced throw by crash-command.");
}

/// A way to fail. The first one whose option is there acts.
struct Failure
{
    CommandWord word;
    void (*force)();
};

constexpr Failure s_failures[] = {
    {CommandWord::Option(Cmd::s_szOptionAssert, "force assert\n"), &ForceAssert},
    {CommandWord::Option(Cmd::s_szOptionVerify, "force verify\n"), &ForceVerify},
    {CommandWord::Option(Cmd::s_szOptionThrow, "throw exception\n"), &ForceThrow},
    {CommandWord::Option(Cmd::s_szOptionZeroPtrRead, "read-dereference zero-pointer\n"), &ReadZeroPointer},
    {CommandWord::Option(Cmd::s_szOptionZeroPtrWrite, "write-dereference zero-pointer\n"), &WriteZeroPointer},
};

/// A parameter of the kernel that an option sets. Of those that are there the last wins.
struct Switch
{
    CommandWord word;
    bool KernelExecutionParams::*param;
    bool value;
};

constexpr Switch s_switches[] = {
    {CommandWord::Option(Cmd::s_szOptionHardCleanup, "enable hard cleanup by kernel-config-loop\n"),
     &KernelExecutionParams::EnableHardCleanupConfigLoop, true},
    {CommandWord::Option(Cmd::s_szOptionNoHardCleanup, "disable hard cleanup by kernel-config-loop\n"),
     &KernelExecutionParams::EnableHardCleanupConfigLoop, false},
    {CommandWord::Option(Cmd::s_szOptionHardRethrow, "enable hard error rethrow at exit\n"),
     &KernelExecutionParams::EnableHardRethrowExit, true},
    {CommandWord::Option(Cmd::s_szOptionNoHardRethrow, "disable hard error rethrow at exit\n"),
     &KernelExecutionParams::EnableHardRethrowExit, false},
};

constexpr CommandWord s_logWinMsg =
    CommandWord::Assignment(Cmd::s_szAssignLogWinMsg, Cmd::s_szValueLogWinMsg,
                            "log windows-messages on main window cleanup\n", command_values::s_boolean);

constexpr auto s_words = []
{
    std::array<CommandWord, std::size(s_failures) + std::size(s_switches) + 1> words{};
    auto end = words.begin();
    for (Failure const &failure : s_failures)
        *end++ = failure.word;
    for (Switch const &option : s_switches)
        *end++ = option.word;
    *end = s_logWinMsg;
    return words;
}();

} // namespace

CrashCmd::CrashCmd()
{
    SetDefaultName(s_szDefaultName);
    SetShortDesc("Force application crash / setup kernel crash-parameters");
    SetDeveloperModeOnly(true);
}

CrashCmd::~CrashCmd() = default;

bool CrashCmd::ParseAndExecute(ostream &, CommandLineParser const &parser, string const &)
{
    CommandArguments const arguments(*this, parser, s_words);
    for (Failure const &failure : s_failures)
    {
        if (arguments.HasOption(failure.word.name))
        {
            failure.force();
            return true;
        }
    }

    KernelExecutionParams params(true);
    for (Switch const &option : s_switches)
    {
        if (arguments.HasOption(option.word.name))
            params.*option.param = option.value;
    }
    bool logWinMsg = false;
    if (arguments.ReadAssignment(s_logWinMsg.name, logWinMsg))
        params.LogWinMsgOnMainWindowCleanup = logWinMsg;
    params.SetKernelCurrent();
    return true;
}

void CrashCmd::DumpHelp(ostream &out, CommandLineParser const &parser)
{
    DumpCommandWords(out, parser, s_words, "print parameters");
}

std::span<CommandWord const> CrashCmd::GetWords() const
{
    return s_words;
}

} // namespace quillmarsh::framework_commands
