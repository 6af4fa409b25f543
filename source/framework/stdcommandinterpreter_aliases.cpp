#include <quillmarsh/framework/stdcommandinterpreter.h>

#include <quillmarsh/basetools/texttools.h>

#include <algorithm>
#include <string_view>

namespace quillmarsh::std_command_interpreter
{
namespace
{

std::size_t GetCommonLength(std::string_view a, std::string_view b)
{
    auto const end = std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first;
    return static_cast<std::size_t>(end - a.begin());
}

} // namespace

void Interpreter::RegisterAlias(string const &alias, string const &target)
{
    if (alias.empty())
        return;
    if (target.empty())
        UnregisterAlias(alias);
    else
        aliases_.insert_or_assign(alias, target);
}

void Interpreter::UnregisterAlias(string const &alias)
{
    aliases_.erase(alias);
}

void Interpreter::UnregisterAllAliases()
{
    aliases_.clear();
}

bool Interpreter::FindAlias(string const &alias, string &target) const
{
    auto const found = aliases_.find(alias);
    bool const isFound = found != aliases_.end();
    target = isFound ? found->second : string();
    return isFound;
}

void Interpreter::GetAliases(std::vector<std::pair<string, string>> &aliases) const
{
    aliases.assign(aliases_.begin(), aliases_.end());
}

/// Finds the longest alias that the line begins with, as a whole word; null without one.
///
/// Take the greatest text of the map that is not above `head`. Either it is the longest alias that `head` begins with,
/// or every shorter such alias lies within the characters that it has in common with `head`. So each lookup ends the
/// search or shortens `head`.
std::pair<string const, string> const *Interpreter::FindAliasPrefix(string const &line) const
{
    std::string_view head = line;
    while (!head.empty())
    {
        auto next = aliases_.upper_bound(head);
        if (next == aliases_.begin())
            break;
        auto const &[alias, target] = *--next;
        std::size_t const numCommon = GetCommonLength(alias, head);
        bool const isPrefix = numCommon == alias.size();
        if (isPrefix && (alias.size() == line.size() || IsBlank(line[alias.size()])))
            return &*next;
        head = head.substr(0, isPrefix ? numCommon - 1 : numCommon);
    }
    return nullptr;
}

/// Replaces such an alias by its target.
bool Interpreter::ExpandAliasPrefix(string const &line, string &expanded) const
{
    auto const *const found = FindAliasPrefix(line);
    if (found == nullptr)
    {
        expanded = line;
        return false;
    }
    auto const &[alias, target] = *found;
    expanded.reserve(target.size() + line.size() - alias.size());
    expanded.assign(target).append(line, alias.size());
    return true;
}

} // namespace quillmarsh::std_command_interpreter
