#include <quillmarsh/framework/stdcommandinterpreter.h>

#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/framework/commandtable.h>

#include <algorithm>

namespace quillmarsh::std_command_interpreter
{
namespace
{

using UnfinishedWord = CommandLineParser::UnfinishedWord;

char GetOptionCharacter(CommandLineParser const &parser)
{
    char quote = 0;
    char escape = 0;
    char scope = 0;
    char option = 0;
    char assign = 0;
    parser.GetSpecialCharacters(quote, escape, scope, option, assign);
    return option;
}

/// The words behind the one at the cursor, with the blank in front of them.
string GetNextWords(string const &line, std::size_t cursor)
{
    std::size_t const blank = line.find_first_of(" \t", cursor);
    return blank == string::npos ? string() : line.substr(blank);
}

/// Length that a text of candidates may have without cutting a character of UTF-8.
std::size_t GetCommonLength(std::vector<CompletionCandidate> const &candidates)
{
    string const &first = candidates.front().text;
    std::size_t length = first.size();
    for (CompletionCandidate const &candidate : candidates)
    {
        auto const end = std::mismatch(first.begin(), first.end(), candidate.text.begin(), candidate.text.end()).first;
        length = std::min(length, static_cast<std::size_t>(end - first.begin()));
    }
    while (length < first.size() && length > 0 && (static_cast<unsigned char>(first[length]) & 0xC0) == 0x80)
        --length;
    return length;
}

/// Writes each candidate as a word of the line.
void MakeReplacements(CommandLineParser const &parser, UnfinishedWord const &word, string const &prefix,
                      string const &typed, Completions &completions)
{
    for (CompletionCandidate &candidate : completions.candidates)
    {
        if (candidate.replacement.empty())
            candidate.replacement = parser.FormatWord(candidate.text, word.isQuoted, candidate.isWhole);
    }
    completions.commonReplacement = typed;
    if (completions.candidates.empty())
        return;
    CompletionCandidate const &first = completions.candidates.front();
    string const common = first.text.substr(0, GetCommonLength(completions.candidates));
    bool const isPlain = first.replacement == first.text;
    if (completions.candidates.size() == 1)
        completions.commonReplacement = first.replacement;
    else if (common.size() > prefix.size())
        completions.commonReplacement = isPlain ? common : parser.FormatWord(common, word.isQuoted, false);
}

} // namespace

Command *Interpreter::FindCommandOfLine(string const &line) const
{
    string trimmed;
    string expanded;
    TrimWhitespace(line, trimmed);
    ExpandAliasPrefix(trimmed, expanded);
    CommandLineParser parser(parser_);
    return parser.Parse(expanded) ? FindCommand(parser.GetCommand()) : nullptr;
}

Completions Interpreter::FindCompletions(string const &line, std::size_t cursor) const
{
    cursor = std::min(cursor, line.size());
    std::size_t const skipped = std::min(line.find_first_not_of(" \t"), cursor);
    string head = line.substr(skipped, cursor - skipped);
    // Index in the line of the head's first byte; an alias shifts it.
    auto origin = static_cast<std::ptrdiff_t>(skipped);
    std::size_t fixedLength = 0;
    auto const *const alias = FindAliasPrefix(head);
    if (alias != nullptr && alias->first.size() < head.size())
    {
        head.replace(0, alias->first.size(), alias->second);
        fixedLength = alias->second.size();
        origin += static_cast<std::ptrdiff_t>(alias->first.size()) - static_cast<std::ptrdiff_t>(fixedLength);
    }

    Completions completions;
    completions.begin = cursor;
    CommandLineParser ahead(parser_);
    UnfinishedWord word;
    // A word that begins inside an alias is not in the line.
    if (!ahead.ParseUnfinished(head, word) || word.begin < fixedLength)
        return completions;
    completions.begin = static_cast<std::size_t>(static_cast<std::ptrdiff_t>(word.begin) + origin);
    string const typed = line.substr(completions.begin, cursor - completions.begin);

    bool const isOption = word.kind == UnfinishedWord::eKind::e_option;
    CompletionOffers offers(isOption ? GetOptionCharacter(ahead) + word.text : word.text);
    if (word.kind == UnfinishedWord::eKind::e_command)
        OfferCommands(!word.isQuoted, offers);
    else
        OfferArguments(ahead, word, head.substr(0, word.begin) + GetNextWords(line, cursor), offers);
    completions.candidates = offers.GetCandidates();
    MakeReplacements(ahead, word, offers.GetPrefix(), typed, completions);
    return completions;
}

/// Offers all commands, sorted by name; aliases are compared with the raw line, and so never in quotes.
void Interpreter::OfferCommands(bool withAliases, CompletionOffers &offers) const
{
    std::map<string, std::pair<string, bool>> names;
    for (Register const *const commands : {&internalCommands_, &externalCommands_})
    {
        for (Command const *const command : *commands)
        {
            if (isDeveloperModeActive_ || !command->IsDeveloperModeOnly())
                names.emplace(command->GetName(), std::pair(command->GetShortDesc(), false));
        }
    }
    for (auto const &[alias, target] : aliases_)
    {
        if (withAliases)
            names.insert_or_assign(alias, std::pair("alias of '" + target + "'", true));
    }
    for (auto const &[name, entry] : names)
    {
        if (entry.second)
            offers.AddPlain(name, entry.first);
        else
            offers.Add(name, entry.first);
    }
}

/// `rest` is the line without the word.
void Interpreter::OfferArguments(CommandLineParser const &ahead, UnfinishedWord const &word, string const &rest,
                                 CompletionOffers &offers) const
{
    Command const *const command = FindCommand(ahead.GetCommand());
    if (command == nullptr)
        return;
    CommandLineParser all(parser_);
    bool const isWellFormed = all.Parse(rest) && all.GetCommand() == ahead.GetCommand();
    CommandLineParser const &parser = isWellFormed ? all : ahead;
    if (auto const *const vocabulary = dynamic_cast<CommandVocabulary const *>(command))
        CommandArguments(*command, parser, vocabulary->GetWords()).OfferWords(word, ahead, offers);
    if (globalHelpSwitch_.empty() || parser.GetOption(globalHelpSwitch_))
        return;
    auto const &candidates = offers.GetCandidates();
    bool const areOptions =
        std::all_of(candidates.begin(), candidates.end(),
                    [](CompletionCandidate const &candidate) { return !candidate.replacement.empty(); });
    bool const mayBecomeOption = word.kind == UnfinishedWord::eKind::e_string && word.text.empty() && !word.isQuoted;
    if (word.kind == UnfinishedWord::eKind::e_option || (mayBecomeOption && areOptions))
        offers.AddPlain(parser.FormatOptionHelp(globalHelpSwitch_, "", 0), "print the help of the command");
}

} // namespace quillmarsh::std_command_interpreter
