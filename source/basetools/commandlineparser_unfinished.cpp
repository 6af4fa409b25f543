#include <quillmarsh/basetools/commandlineparser.h>

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/basetools/texttools.h>

#include <algorithm>

namespace quillmarsh
{

bool CommandLineParser::ParseUnfinished(string const &line, UnfinishedWord &word)
{
    lastCommandLine_ = line;
    ClearLastResults();
    word = UnfinishedWord();
    try
    {
        if (FindUnfinishedWord(word))
            return true;
    }
    catch (CommandLineErrorException const &)
    {
        // A mistake in front of the word.
    }
    ClearLastResults();
    return false;
}

/// Parses word by word, until one of them runs to the end of the line. Throws where Parse() does.
bool CommandLineParser::FindUnfinishedWord(UnfinishedWord &word)
{
    std::size_t at = 0;
    string putBack;
    EatWhitespace(at);
    if (ReadUnfinishedText(at, word))
        return true;
    if (singleTokenCommand_)
        ParseCommand(at);
    else
        ParseObjectChain(at);

    while (at < lastCommandLine_.size())
    {
        bool const afterWhitespace = EatWhitespace(at);
        Argument &argument = NextArgument();
        std::size_t end = at;
        if (ExtractOption(end, argument.first_))
        {
            if (FindUnfinishedOption(at, end, argument.first_, word))
                return true;
            at = end;
            ParseOption(at, argument);
        }
        else if (afterWhitespace && ReadUnfinishedText(at, word))
        {
            bool const isMark = word.text.size() == 1 && word.text.front() == option_ && !word.isQuoted;
            word.kind = isMark ? UnfinishedWord::eKind::e_option : UnfinishedWord::eKind::e_string;
            word.text.erase(0, isMark ? 1 : 0);
            return true;
        }
        else
        {
            ParseString(at, afterWhitespace, argument, putBack);
        }
        ++numArguments_;
    }
    return false;
}

/// True when the option from `begin` to `end`, or the value behind it, runs to the end of the line.
bool CommandLineParser::FindUnfinishedOption(std::size_t begin, std::size_t end, string const &name,
                                             UnfinishedWord &word) const
{
    if (end == lastCommandLine_.size())
    {
        word.kind = UnfinishedWord::eKind::e_option;
        word.begin = begin;
        word.text = name;
        return true;
    }
    word.kind = UnfinishedWord::eKind::e_value;
    word.assignment = name;
    return IsNext(end, assign_) && ReadUnfinishedText(end + 1, word);
}

/// True when the text at `at`, in quotes or not, runs to the end of the line; also for an empty one.
bool CommandLineParser::ReadUnfinishedText(std::size_t at, UnfinishedWord &word) const
{
    string const &line = lastCommandLine_;
    word.begin = at;
    word.text.clear();
    word.isQuoted = IsNext(at, quote_);
    if (!word.isQuoted)
    {
        word.text = line.substr(at);
        return std::none_of(word.text.begin(), word.text.end(), IsBlank);
    }
    for (std::size_t i = at + 1; i < line.size(); ++i)
    {
        bool const isEscaped = line[i] == escape_;
        if (!isEscaped && line[i] == quote_)
            return false;
        // A lone escape character at the end waits for the next key.
        if (isEscaped && ++i == line.size())
            return true;
        if (isEscaped && line[i] != escape_ && line[i] != quote_)
            QUILLMARSH_THROW(CommandLineErrorException, "Bad escape sequence");
        word.text += line[i];
    }
    return true;
}

string CommandLineParser::FormatWord(string const &text, bool forceQuotes, bool isWhole) const
{
    bool const looksLikeOption =
        text.size() > 1 && text[0] == option_ && (IsLetter(text[1]) || text[1] == '_' || text[1] == '-');
    bool const needsQuotes = (text.empty() && isWhole) || MatchNext(text, quote_) || looksLikeOption ||
                             std::any_of(text.begin(), text.end(), IsBlank);
    if (!needsQuotes && !forceQuotes)
        return text;
    string word(1, quote_);
    for (char const c : text)
    {
        if (c == quote_ || c == escape_)
            word += escape_;
        word += c;
    }
    return isWhole ? word + quote_ : word;
}

} // namespace quillmarsh
