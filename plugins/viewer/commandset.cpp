#include "commandset.h"

#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/dataobjects/dataexception.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/stdcommandinterpreter.h>

#include <ostream>

namespace viewer
{

using namespace quillmarsh;
using sampled_data::DataException;

/// Runs the function of a row.
class CommandSet::Entry : public TableCommand
{
public:
    Entry(CommandSet &set, char const *name, char const *shortDesc, std::span<CommandWord const> words,
          char const *plain, Run run)
        : set_(set),
          words_(words),
          plain_(plain),
          run_(std::move(run))
    {
        SetDefaultName(name);
        SetShortDesc(shortDesc);
    }

    std::span<CommandWord const> GetWords() const override { return words_; }

protected:
    bool Execute(ostream &out, CommandArguments const &arguments) override
    {
        try
        {
            run_(out, arguments);
            return true;
        }
        catch (DataException const &thrown)
        {
            Fail(out, thrown.GetMessage());
        }
        catch (NoMemoryException const &thrown)
        {
            Fail(out, thrown.GetMessage());
        }
        return false;
    }

    string GetDefaultBehavior() const override { return plain_; }

private:
    void Fail(ostream &out, string const &reason)
    {
        out << e_error << reason << std::endl << e_info;
        if (set_.fail_)
            set_.fail_(reason);
    }

    CommandSet &set_;
    std::span<CommandWord const> words_;
    char const *plain_;
    Run run_;
};

CommandSet::CommandSet(std::function<void(string const &)> fail) : fail_(std::move(fail)) {}

CommandSet::~CommandSet()
{
    std_command_interpreter::Interpreter &interpreter = *Kernel::Instance().GetCommandInterpreter();
    // Ignored for commands that the interpreter has deleted already.
    for (Entry *const entry : entries_)
        interpreter.DeleteExternalCommand(*entry);
}

void CommandSet::Add(char const *name, char const *shortDesc, std::span<CommandWord const> words, char const *plain,
                     Run run)
{
    entries_.push_back(new Entry(*this, name, shortDesc, words, plain, std::move(run)));
    Kernel::Instance().GetCommandInterpreter()->RegisterExternalCommand(entries_.back());
}

string const &RequireArgument(CommandArguments const &arguments, char const *what)
{
    if (string const *const argument = arguments.FindArgument(0))
        return *argument;
    throw DataException(string(what) + " is missing");
}

double RequireNumber(CommandArguments const &arguments, char const *what)
{
    string const &text = RequireArgument(arguments, what);
    double value = 0;
    if (!ToValue(text, value))
        throw DataException("not a number: " + text);
    return value;
}

} // namespace viewer
