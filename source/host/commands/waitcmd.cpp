#include <quillmarsh/host/waitcmd.h>

namespace quillmarsh::host
{

namespace
{

constexpr CommandWord s_words[] = {
    CommandWord::Argument("0) uinteger", "number of frames that pass before the next line\n",
                          command_values::s_uinteger),
};

} // namespace

WaitCmd::WaitCmd(ConsoleLines &lines) : lines_(lines)
{
    SetDefaultName(s_szDefaultName);
    SetShortDesc("Let frames pass before the next line");
}

WaitCmd::~WaitCmd() = default;

std::span<CommandWord const> WaitCmd::GetWords() const
{
    return s_words;
}

bool WaitCmd::Execute(ostream &, CommandArguments const &arguments)
{
    unsigned int numFrames = 1;
    if (string const *const number = arguments.FindArgument(0))
        ToValue(*number, numFrames);
    lines_.Wait(numFrames);
    return true;
}

string WaitCmd::GetDefaultBehavior() const
{
    return "let one frame pass";
}

} // namespace quillmarsh::host
