#include "commands.h"
#include "progress.h"

#include <quillmarsh/basetools/texttools.h>

#include <iostream>
#include <limits>

namespace quillmarsh::tools
{
namespace
{

constexpr std::size_t s_any = std::numeric_limits<std::size_t>::max();

constexpr Command s_commands[] = {
    {"info", "FILE...", "Describes the contents of files", 1, s_any, false, "lia", &Info},
    {"convert", "IN... OUT", "Loads a file, changes its data, and saves them to another file; or many into a folder", 2,
     s_any, true, "cjzflrtsa", &Convert},
    {"mipmaps", "IN PREFIX", "Saves the levels of a mipmap chain as packages, PREFIX.0.qmdp.image and so on", 2, 2,
     false, "zflrsa", &Mipmaps},
    {"volume", "SLICE... OUT", "Builds a volume of equal images", 2, s_any, true, "lrtsa", &BuildVolume},
    {"slice", "IN LAYER OUT", "Saves a layer of a volume, counted from 0, as an image", 3, 3, true, "rtsa", &Slice},
    {"verify", "FILE...", "Reads whole files, and reports their faults", 1, s_any, false, "lia", &Verify},
    {"stats", "FILE...", "Measures the channels of files: minimum, maximum, mean, deviation", 1, s_any, false, "ifla",
     &Statistics},
    {"compare", "A B", "Measures how much two files differ; status 1 if by more than the tolerance", 2, 2, false,
     "idflsta", &CompareFiles},
    {"completion", "SHELL", "Prints the completion of a shell: bash, zsh or fish", 1, 1, false, "", &Completion},
    {"help", "[COMMAND]", "Prints the help of a command, or of the program", 0, 1, false, "", &Help},
};

} // namespace

std::span<Command const> GetCommands()
{
    return s_commands;
}

Command const &FindCommand(string const &name)
{
    for (Command const &command : s_commands)
    {
        if (name == command.name)
            return command;
    }
    throw WrongArgumentException("unknown command '" + name + "'");
}

bool Help(Arguments const &arguments)
{
    std::cout << GetUsage(arguments.operands.empty() ? nullptr : &FindCommand(arguments.operands.front()));
    return true;
}

string DescribeFailure(Exception const &thrown)
{
    auto const *const failed = dynamic_cast<DataException const *>(&thrown);
    switch (failed ? failed->GetFailure().kind : eCodecFailure::e_none)
    {
    case eCodecFailure::e_exists:
        return thrown.GetMessage() + " with --overwrite";
    case eCodecFailure::e_tooLarge:
        return thrown.GetMessage() + " (see --max-pixels)";
    default:
        return thrown.GetMessage();
    }
}

void PrintLine(string const &message)
{
    Progress::HideShown();
    std::cerr << MakePrintable(message) + '\n' << std::flush;
}

void PrintError(string const &message)
{
    PrintLine("qmdp: " + message);
}

bool ForEachFile(Arguments const &arguments, std::function<void(string const &fileName)> const &work,
                 void (*report)(string const &message))
{
    bool succeeded = true;
    for (string const &fileName : arguments.operands)
    {
        try
        {
            work(fileName);
        }
        catch (Exception const &thrown)
        {
            std::cout.flush();
            report(DescribeFailure(thrown));
            succeeded = false;
        }
    }
    return succeeded;
}

} // namespace quillmarsh::tools
