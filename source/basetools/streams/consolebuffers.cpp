#include <quillmarsh/basetools/consolebuffers.h>

#include <quillmarsh/basetools/diagnostics.h>

namespace quillmarsh
{

ConsoleBuffers::ConsoleBuffers() = default;

void ConsoleBuffers::SetDefaultOutputType(unsigned int type)
{
    defaultOutputType_ = type;
}

ConsoleBuffers::~ConsoleBuffers() = default;

void ConsoleBuffers::SetMaxOutputLines(unsigned int maxLines)
{
    outputBuffer_.SetLineLimit(maxLines);
}

unsigned int ConsoleBuffers::GetMaxOutputLines() const
{
    return outputBuffer_.GetLineLimit();
}

void ConsoleBuffers::SetOutputTabWidth(unsigned int width)
{
    outputBuffer_.SetTabWidth(width);
}

unsigned int ConsoleBuffers::GetOutputTabWidth() const
{
    return outputBuffer_.GetTabWidth();
}

void ConsoleBuffers::ClearOutput()
{
    outputBuffer_.Clear();
}

ConsoleOutputStream *ConsoleBuffers::CreateOutputStream()
{
    return new ConsoleOutputStream(outputBuffer_, defaultOutputType_);
}

void ConsoleBuffers::LockCommandHistory() const
{
    historyCriticalSection_.Enter();
}

void ConsoleBuffers::UnlockCommandHistory() const
{
    historyCriticalSection_.Leave();
}

void ConsoleBuffers::SetMaxCommandsInHistory(unsigned int maxCommands)
{
    CriticalSectionSentry const lock(historyCriticalSection_);
    maxCommandsInHistory_ = maxCommands;
    while (commandHistory_.size() > maxCommands)
        commandHistory_.pop_front();
}

unsigned int ConsoleBuffers::GetMaxCommandsInHistory() const
{
    return maxCommandsInHistory_;
}

void ConsoleBuffers::ClearCommandHistory()
{
    CriticalSectionSentry const lock(historyCriticalSection_);
    commandHistory_.clear();
}

void ConsoleBuffers::PushCommandInHistory(string const &command)
{
    if (command.empty())
        return;
    CriticalSectionSentry const lock(historyCriticalSection_);
    commandHistory_.push_back(command);
    if (commandHistory_.size() > maxCommandsInHistory_)
        commandHistory_.pop_front();
}

unsigned int ConsoleBuffers::GetNumCommandsInHistory() const
{
    return static_cast<unsigned int>(commandHistory_.size());
}

string const &ConsoleBuffers::GetCommandFromHistory(unsigned int index) const
{
    static string const noCommand;
    bool const isHeld = index < commandHistory_.size();
    QUILLMARSH_ASSERT(isHeld, "Input-command index out of range.");
    return isHeld ? commandHistory_[index] : noCommand;
}

} // namespace quillmarsh
