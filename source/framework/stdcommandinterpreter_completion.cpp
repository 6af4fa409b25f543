#include <quillmarsh/framework/stdcommandinterpreter.h>

#include <quillmarsh/basetools/texttools.h>

#include <algorithm>

namespace quillmarsh::std_command_interpreter
{
namespace
{

constexpr std::size_t s_listLineLength = 60;

/// Lines of names. A line ends with the name that reaches its length.
string FormatList(std::vector<string> const &names)
{
    string text;
    string piece;
    for (std::size_t i = 0; i < names.size(); ++i)
    {
        piece += names[i];
        if (i + 1 == names.size())
            break;
        piece += ", ";
        if (piece.size() >= s_listLineLength)
        {
            text += piece + '\n';
            piece.clear();
        }
    }
    return text + piece;
}

string GetCommonPrefix(std::vector<string> const &names)
{
    string prefix = names.front();
    for (string const &name : names)
    {
        auto const end = std::mismatch(prefix.begin(), prefix.end(), name.begin(), name.end()).first;
        prefix.erase(end, prefix.end());
    }
    return prefix;
}

} // namespace

bool Interpreter::CompleteCommandLine(string const &line, string &completed, ostream &out)
{
    if (line == lastCompletionInput_)
        return false;
    lastCompletionInput_ = line;
    if (line.empty())
        return false;

    bool const isCommandWord = parser_.Parse(line, false) && parser_.GetNumArguments() == 0;
    parser_.ClearAll();
    if (!isCommandWord)
        return false;

    std::vector<string> const matches = CollectCompletions(line);
    if (matches.empty())
        return false;
    if (matches.size() == 1)
    {
        bool const isLonger = matches.front().size() > line.size();
        if (isLonger)
            completed = matches.front();
        return isLonger;
    }
    out << "Matching commands/aliases: " + FormatList(matches) << std::endl;
    completed = GetCommonPrefix(matches);
    return true;
}

/// Names that begin with the prefix: internal commands, external ones, aliases.
std::vector<string> Interpreter::CollectCompletions(string const &prefix) const
{
    std::vector<string> matches;
    auto const addMatch = [&matches, &prefix](string const &name)
    {
        if (MatchPrefix(name, prefix))
            matches.push_back(name);
    };
    for (Command const *const command : internalCommands_)
        addMatch(command->GetName());
    for (Command const *const command : externalCommands_)
        addMatch(command->GetName());
    for (auto const &[alias, target] : aliases_)
        addMatch(alias);
    return matches;
}

} // namespace quillmarsh::std_command_interpreter
