#include <quillmarsh/framework/stdcommandinterpreter.h>

#include <quillmarsh/basetools/diagnostics.h>

#include <algorithm>

namespace quillmarsh::std_command_interpreter
{
namespace
{

using Register = std::vector<Command *>;

void DeleteAll(Register &commands)
{
    // A command may use its interpreter in its destructor.
    Register const gone = std::exchange(commands, {});
    for (Command *const command : gone)
        delete command;
}

Command *GetByIndex(Register const &commands, unsigned int index)
{
    bool const isThere = index < commands.size();
    QUILLMARSH_ASSERT(isThere, "Index out of range.");
    return isThere ? commands[index] : nullptr;
}

Command *FindByName(Register const &commands, string const &name)
{
    auto const found = std::find_if(commands.begin(), commands.end(),
                                    [&name](Command const *command) { return command->GetName() == name; });
    return found == commands.end() ? nullptr : *found;
}

void SortByName(Register &commands)
{
    std::stable_sort(commands.begin(), commands.end(),
                     [](Command const *a, Command const *b) { return a->GetName() < b->GetName(); });
}

} // namespace

void Interpreter::RegisterCommand(Register &commands, Command *command)
{
    if (command == nullptr)
        return;
    commands.push_back(command);
    Rehash();
}

bool Interpreter::RemoveCommand(Register &commands, Command &command, bool deleteIt)
{
    if (std::erase(commands, &command) == 0)
        return false;
    if (deleteIt)
        delete &command;
    Rehash();
    return true;
}

unsigned int Interpreter::RemoveCommands(Register &commands, string const &name, bool deleteThem)
{
    auto const firstGone = std::stable_partition(commands.begin(), commands.end(),
                                                 [&name](Command *command) { return command->GetName() != name; });
    Register gone(firstGone, commands.end());
    if (gone.empty())
        return 0;
    commands.erase(firstGone, commands.end());
    auto const numGone = static_cast<unsigned int>(gone.size());
    if (deleteThem)
        DeleteAll(gone);
    Rehash();
    return numGone;
}

void Interpreter::RegisterExternalCommand(Command *command)
{
    RegisterCommand(externalCommands_, command);
}

void Interpreter::UnregisterAllExternalCommands()
{
    externalCommands_.clear();
}

bool Interpreter::UnregisterExternalCommand(Command &command)
{
    return RemoveCommand(externalCommands_, command, false);
}

unsigned int Interpreter::UnregisterExternalCommand(string const &name)
{
    return RemoveCommands(externalCommands_, name, false);
}

void Interpreter::DeleteAllExternalCommands()
{
    DeleteAll(externalCommands_);
}

bool Interpreter::DeleteExternalCommand(Command &command)
{
    return RemoveCommand(externalCommands_, command, true);
}

unsigned int Interpreter::DeleteExternalCommand(string const &name)
{
    return RemoveCommands(externalCommands_, name, true);
}

unsigned int Interpreter::GetNumExternalCommands() const
{
    return static_cast<unsigned int>(externalCommands_.size());
}

Command *Interpreter::GetExternalCommand(unsigned int index) const
{
    return GetByIndex(externalCommands_, index);
}

Command *Interpreter::GetExternalCommand(string const &name) const
{
    return FindExternalCommand(name);
}

Command *Interpreter::FindExternalCommand(string const &name) const
{
    return FindByName(externalCommands_, name);
}

void Interpreter::RegisterInternalCommand(Command *command)
{
    RegisterCommand(internalCommands_, command);
}

void Interpreter::UnregisterAllInternalCommands()
{
    internalCommands_.clear();
}

bool Interpreter::UnregisterInternalCommand(Command &command)
{
    return RemoveCommand(internalCommands_, command, false);
}

unsigned int Interpreter::UnregisterInternalCommand(string const &name)
{
    return RemoveCommands(internalCommands_, name, false);
}

void Interpreter::DeleteAllInternalCommands()
{
    DeleteAll(internalCommands_);
}

bool Interpreter::DeleteInternalCommand(Command &command)
{
    return RemoveCommand(internalCommands_, command, true);
}

unsigned int Interpreter::DeleteInternalCommand(string const &name)
{
    return RemoveCommands(internalCommands_, name, true);
}

unsigned int Interpreter::GetNumInternalCommands() const
{
    return static_cast<unsigned int>(internalCommands_.size());
}

Command *Interpreter::GetInternalCommand(unsigned int index) const
{
    return GetByIndex(internalCommands_, index);
}

Command *Interpreter::GetInternalCommand(string const &name) const
{
    return FindInternalCommand(name);
}

Command *Interpreter::FindInternalCommand(string const &name) const
{
    return FindByName(internalCommands_, name);
}

Command *Interpreter::GetCommand(string const &name) const
{
    return FindCommand(name);
}

Command *Interpreter::FindCommand(string const &name) const
{
    Command *const command = FindInternalCommand(name);
    return command != nullptr ? command : FindExternalCommand(name);
}

Command *Interpreter::FindCommand(std::vector<Command *> const &commands, std::type_info const &type)
{
    auto const found = std::find_if(commands.begin(), commands.end(),
                                    [&type](Command const *command) { return typeid(*command) == type; });
    return found == commands.end() ? nullptr : *found;
}

void Interpreter::Rehash()
{
    SortByName(externalCommands_);
    SortByName(internalCommands_);
    MakeMessages();
}

} // namespace quillmarsh::std_command_interpreter
