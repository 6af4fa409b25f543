#include "hostcommands.h"

#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/basetools/variableregistry.h>

#include <algorithm>

namespace quillmarsh::host
{

namespace
{

constexpr CommandWord s_words[] = {
    CommandWord::Argument("0) word", "part of a name or description; upper and lower case are the same\n"),
};

/// A line of the answer.
struct Finding
{
    string name;
    string description;
};

/// Collects what has the word in its name or description.
class Search
{
public:
    explicit Search(string word) : word_(std::move(word)) { LowerCase(word_); }

    void Add(string const &name, string const &shown, string const &description)
    {
        if (Has(name) || Has(description))
            findings_.push_back({shown, description});
    }

    /// Prints the findings under a heading, and forgets them. Returns their number.
    std::size_t Print(ostream &out, char const *heading)
    {
        std::size_t width = 0;
        for (Finding const &finding : findings_)
            width = std::max(width, finding.name.size());
        if (!findings_.empty())
            out << heading << ":\n";
        for (Finding const &finding : findings_)
        {
            out << "  " << finding.name;
            if (!finding.description.empty())
                out << string(width + 2 - finding.name.size(), ' ') << finding.description;
            out << nl;
        }
        std::size_t const count = findings_.size();
        findings_.clear();
        return count;
    }

private:
    bool Has(string text) const
    {
        LowerCase(text);
        return text.find(word_) != string::npos;
    }

    string word_;
    std::vector<Finding> findings_;
};

} // namespace

FindCmd::FindCmd(HostKernel &kernel) : kernel_(kernel)
{
    SetDefaultName("find");
    SetShortDesc("Search commands, variables and aliases");
}

std::span<CommandWord const> FindCmd::GetWords() const
{
    return s_words;
}

bool FindCmd::Execute(ostream &out, CommandArguments const &arguments)
{
    string const *const word = arguments.FindArgument(0);
    if (word == nullptr || word->empty())
        return RefuseLine(out, "The word to search for is missing.");
    Search search(*word);

    std_command_interpreter::Interpreter const &interpreter = *kernel_.GetCommandInterpreter();
    CompletionOffers commands("");
    interpreter.OfferCommands(false, commands);
    for (CompletionCandidate const &command : commands.GetCandidates())
        search.Add(command.text, command.text, command.description);
    std::size_t count = search.Print(out, "Commands");

    VariableRegistry const &registry = *kernel_.GetVariableRegistry();
    for (unsigned int i = 0; i < registry.GetNumVariables(); ++i)
    {
        VariableProxy const &variable = registry.GetVariable(i);
        search.Add(variable.GetName(), variable.GetName() + " = " + variable.GetValueString(),
                   variable.GetVarDescription());
    }
    count += search.Print(out, "Variables");

    std::vector<std::pair<string, string>> aliases;
    interpreter.GetAliases(aliases);
    for (auto const &[alias, target] : aliases)
        search.Add(alias, alias, "'" + target + "'");
    count += search.Print(out, "Aliases");
    if (count == 0)
        out << "Nothing has '" << *word << "' in its name or description." << nl;
    return true;
}

} // namespace quillmarsh::host
