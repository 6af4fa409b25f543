#include <quillmarsh/basetools/commandlineparser.h>

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/basetools/texttools.h>

#include <ostream>

namespace quillmarsh
{
namespace
{

string FormatHelp(string const &words, string const &desc, unsigned int tabs)
{
    string line(tabs, '\t');
    line += words;
    if (!desc.empty())
        line += ", " + desc;
    return line;
}

bool IsIdentifierPart(char c)
{
    return IsLetter(c) || IsDigit(c) || c == '-' || c == '_';
}

} // namespace

string CommandLineParser::Argument::MakeFullString() const
{
    switch (type_)
    {
    case e_option:
    case e_string:
        return first_;
    case e_assignment:
        return first_ + "=" + second_;
    }
    return string();
}

CommandLineParser::CommandLineParser() = default;
CommandLineParser::CommandLineParser(CommandLineParser const &) = default;
CommandLineParser &CommandLineParser::operator=(CommandLineParser const &) = default;
CommandLineParser::~CommandLineParser() = default;

void CommandLineParser::SetSpecialCharacters(char quote, char escape, char scope, char option, char assign)
{
    quote_ = quote;
    escape_ = escape;
    scope_ = scope;
    option_ = option;
    assign_ = assign;
}

void CommandLineParser::GetSpecialCharacters(char &quote, char &escape, char &scope, char &option, char &assign) const
{
    quote = quote_;
    escape = escape_;
    scope = scope_;
    option = option_;
    assign = assign_;
}

void CommandLineParser::SetParseFlags(bool singleTokenCommand, bool trimQuotes)
{
    singleTokenCommand_ = singleTokenCommand;
    trimQuotes_ = trimQuotes;
}

bool CommandLineParser::Parse(string const &line, bool throwOnError)
{
    // Copied first: the line may be a text of the former results.
    lastCommandLine_ = line;
    ClearLastResults();

    std::size_t at = 0;
    string putBack;
    try
    {
        ParseLine(at, putBack);
        return true;
    }
    catch (CommandLineErrorException &exception)
    {
        ClearLastResults();
        if (!throwOnError)
            return false;
        exception.SetMessage(exception.GetMessage() + " at: " + putBack + lastCommandLine_.substr(at) +
                             "\nFull command-line was: " + lastCommandLine_);
        throw;
    }
}

bool CommandLineParser::Parse(int argc, char const **argv, bool throwOnError)
{
    string line;
    for (int i = 0; i < argc; ++i)
        line.append(argv[i]).push_back(' ');
    return Parse(line, throwOnError);
}

bool CommandLineParser::Parse(int argc, char **argv, bool throwOnError)
{
    return Parse(argc, const_cast<char const **>(argv), throwOnError);
}

void CommandLineParser::ClearLastCommandLine()
{
    lastCommandLine_.clear();
}

void CommandLineParser::ClearLastResults()
{
    objectChain_.clear();
    command_.clear();
    numArguments_ = 0;
}

void CommandLineParser::ClearAll()
{
    ClearLastCommandLine();
    ClearLastResults();
}

void CommandLineParser::GetCommand(std::vector<string> &chain, string &command) const
{
    chain = objectChain_;
    command = command_;
}

CommandLineParser::Argument const &CommandLineParser::GetArgument(unsigned int index) const
{
    static Argument const s_none;
    QUILLMARSH_ASSERT(index < numArguments_, "Index out of range.");
    return index < numArguments_ ? arguments_[index] : s_none;
}

bool CommandLineParser::GetOptionArgument(string const &name, Argument &argument) const
{
    return CopyArgument(e_option, name, argument);
}

bool CommandLineParser::GetAssignmentArgument(string const &name, Argument &argument) const
{
    return CopyArgument(e_assignment, name, argument);
}

bool CommandLineParser::GetStringArgument(string const &text, Argument &argument) const
{
    return CopyArgument(e_string, text, argument);
}

bool CommandLineParser::GetOption(string const &name) const
{
    return FindArgument(e_option, name) != nullptr;
}

bool CommandLineParser::GetString(string const &text) const
{
    return FindArgument(e_string, text) != nullptr;
}

bool CommandLineParser::GetAssignment(string const &name, string &value) const
{
    Argument const *const assignment = FindArgument(e_assignment, name);
    if (assignment == nullptr)
        return false;
    value = assignment->second_;
    return true;
}

bool CommandLineParser::ExtractArgumentPointer(string const &name, void *&value, void *defaultValue) const
{
    return ExtractArgument(name, value, defaultValue);
}

bool CommandLineParser::ExtractArgumentInteger(string const &name, int &value, int defaultValue) const
{
    return ExtractArgument(name, value, defaultValue);
}

bool CommandLineParser::ExtractArgumentUInteger(string const &name, unsigned int &value,
                                                unsigned int defaultValue) const
{
    return ExtractArgument(name, value, defaultValue);
}

bool CommandLineParser::ExtractArgumentDouble(string const &name, double &value, double defaultValue) const
{
    return ExtractArgument(name, value, defaultValue);
}

bool CommandLineParser::ExtractArgumentBool(string const &name, bool &value, bool defaultValue) const
{
    return ExtractArgument(name, value, defaultValue);
}

bool CommandLineParser::GetPackedAssignment(string const &name, std::vector<string> &pieces,
                                            string const &separators) const
{
    pieces.clear();
    Argument const *const assignment = FindArgument(e_assignment, name);
    if (assignment == nullptr)
        return false;

    string const &value = assignment->second_;
    for (std::size_t begin = value.find_first_not_of(separators); begin != string::npos;)
    {
        std::size_t const end = value.find_first_of(separators, begin);
        pieces.push_back(value.substr(begin, end - begin));
        begin = value.find_first_not_of(separators, end);
    }
    return true;
}

bool CommandLineParser::ExtractPackedUIntegers(string const &name, std::vector<unsigned int> &values,
                                               string const &separators) const
{
    values.clear();
    std::vector<string> pieces;
    if (!GetPackedAssignment(name, pieces, separators))
        return false;
    for (string const &piece : pieces)
    {
        unsigned int value = 0;
        if (!ToValue(piece, value))
            return false;
        values.push_back(value);
    }
    return true;
}

void CommandLineParser::DumpLastResults(ostream &out) const
{
    // The labels are fixed texts, which take no width that was left on the stream.
    out.width(0);
    if (!singleTokenCommand_)
    {
        out << "Object-chain: ";
        char const *separator = "";
        for (string const &object : objectChain_)
        {
            out << separator << object;
            separator = ".";
        }
        out << std::endl;
    }
    out << "Command: " << command_ << std::endl;
    for (unsigned int i = 0; i < numArguments_; ++i)
        out << "Argument " << i << ": " << arguments_[i] << std::endl;
}

string CommandLineParser::FormatOptionHelp(string const &name, string const &desc, unsigned int tabs) const
{
    return FormatHelp(option_ + name, desc, tabs);
}

string CommandLineParser::FormatAssignmentHelp(string const &name, string const &value, string const &desc,
                                               unsigned int tabs) const
{
    return FormatHelp(option_ + name + assign_ + value, desc, tabs);
}

string CommandLineParser::FormatStringHelp(string const &text, string const &desc, unsigned int tabs) const
{
    return FormatHelp(text, desc, tabs);
}

bool CommandLineParser::IsNext(std::size_t at, char wanted) const
{
    return at < lastCommandLine_.size() && lastCommandLine_[at] == wanted;
}

bool CommandLineParser::IsWordEnd(std::size_t at) const
{
    return at == lastCommandLine_.size() || IsBlank(lastCommandLine_[at]);
}

bool CommandLineParser::EatWhitespace(std::size_t &at) const
{
    std::size_t const begin = at;
    while (at < lastCommandLine_.size() && IsBlank(lastCommandLine_[at]))
        ++at;
    return at != begin;
}

bool CommandLineParser::ExtractIdentifier(std::size_t &at, string &out, bool allowLeadingDigit,
                                          bool allowLeadingUnderscore, bool allowLeadingDash) const
{
    string const &line = lastCommandLine_;
    if (at == line.size())
        return false;
    char const first = line[at];
    bool const isStart = IsLetter(first) || (allowLeadingDigit && IsDigit(first)) ||
                         (allowLeadingUnderscore && first == '_') || (allowLeadingDash && first == '-');
    if (!isStart)
        return false;

    std::size_t const begin = at++;
    while (at < line.size() && IsIdentifierPart(line[at]))
        ++at;
    out.assign(line, begin, at - begin);
    return true;
}

bool CommandLineParser::ExtractOption(std::size_t &at, string &name) const
{
    std::size_t behindMark = at + 1;
    if (!IsNext(at, option_) || !ExtractIdentifier(behindMark, name, false, true, true))
        return false;
    at = behindMark;
    return true;
}

bool CommandLineParser::ExtractQuotedString(std::size_t &at, string &out) const
{
    if (!IsNext(at, quote_))
        return false;

    string const &line = lastCommandLine_;
    out.clear();
    std::size_t plainBegin = at + 1;
    for (std::size_t i = plainBegin; i < line.size(); ++i)
    {
        if (line[i] == escape_)
        {
            out.append(line, plainBegin, i - plainBegin);
            // The character behind the escape begins the next plain piece, and is not tested again.
            plainBegin = ++i;
            if (i < line.size() && line[i] != escape_ && line[i] != quote_)
                QUILLMARSH_THROW(CommandLineErrorException, "Bad escape sequence");
        }
        else if (line[i] == quote_)
        {
            out.append(line, plainBegin, i - plainBegin);
            at = i + 1;
            return true;
        }
    }
    QUILLMARSH_THROW(CommandLineErrorException, "Quote not closed");
}

bool CommandLineParser::ExtractString(std::size_t &at, string &out) const
{
    if (IsWordEnd(at))
        return false;
    std::size_t const begin = at;
    while (!IsWordEnd(at))
        ++at;
    out.assign(lastCommandLine_, begin, at - begin);
    return true;
}

void CommandLineParser::ParseLine(std::size_t &at, string &putBack)
{
    EatWhitespace(at);
    if (singleTokenCommand_)
        ParseCommand(at);
    else
        ParseObjectChain(at);

    while (at < lastCommandLine_.size())
    {
        bool const afterWhitespace = EatWhitespace(at);
        Argument &argument = NextArgument();
        if (ExtractOption(at, argument.first_))
            ParseOption(at, argument);
        else if (!ParseString(at, afterWhitespace, argument, putBack))
            continue;
        ++numArguments_;
    }
}

void CommandLineParser::ParseCommand(std::size_t &at)
{
    if (!ExtractQuotedString(at, command_) && !ExtractString(at, command_))
        QUILLMARSH_THROW(CommandLineErrorException, "Expected command");
    if (trimQuotes_)
        TrimQuotes(command_);
}

void CommandLineParser::ParseObjectChain(std::size_t &at)
{
    for (;;)
    {
        if (!ExtractIdentifier(at, command_, false, false, false))
            QUILLMARSH_THROW(CommandLineErrorException, "Expected identifier");
        if (IsWordEnd(at))
            return;
        if (!IsNext(at, scope_))
            QUILLMARSH_THROW(CommandLineErrorException, "Expected scope specifier");
        ++at;
        objectChain_.push_back(command_);
    }
}

void CommandLineParser::ParseOption(std::size_t &at, Argument &argument) const
{
    argument.type_ = e_option;
    argument.second_.clear();
    if (IsNext(at, assign_))
    {
        ++at;
        argument.type_ = e_assignment;
        // Both may be missing: the value is empty then.
        if (!ExtractQuotedString(at, argument.second_))
            ExtractString(at, argument.second_);
    }
    else if (!IsWordEnd(at))
        QUILLMARSH_THROW(CommandLineErrorException, "Expected whitespace or assignment");
}

bool CommandLineParser::ParseString(std::size_t &at, bool afterWhitespace, Argument &argument, string &putBack) const
{
    argument.type_ = e_string;
    argument.second_.clear();
    bool const isQuoted = ExtractQuotedString(at, argument.first_);
    if (!isQuoted && !ExtractString(at, argument.first_))
        return false;
    if (afterWhitespace)
        return true;

    if (isQuoted)
        putBack = quote_ + argument.first_ + quote_;
    else
        putBack = argument.first_;
    QUILLMARSH_THROW(CommandLineErrorException, "Expected whitespace before string");
}

CommandLineParser::Argument &CommandLineParser::NextArgument()
{
    if (numArguments_ == arguments_.size())
        arguments_.emplace_back();
    Argument &argument = arguments_[numArguments_];
    argument.cmdLinePosition_ = numArguments_;
    return argument;
}

CommandLineParser::Argument const *CommandLineParser::FindArgument(eArgumentType type, string const &text) const
{
    for (unsigned int i = 0; i < numArguments_; ++i)
    {
        if (arguments_[i] == type && arguments_[i].first_ == text)
            return &arguments_[i];
    }
    return nullptr;
}

bool CommandLineParser::CopyArgument(eArgumentType type, string const &text, Argument &argument) const
{
    Argument const *const found = FindArgument(type, text);
    if (found == nullptr)
        return false;
    argument = *found;
    return true;
}

template<typename T>
bool CommandLineParser::ExtractArgument(string const &name, T &value, T defaultValue) const
{
    Argument const *const assignment = FindArgument(e_assignment, name);
    if (assignment != nullptr && ToValue(assignment->second_, value))
        return true;
    value = defaultValue;
    return false;
}

ostream &operator<<(ostream &out, CommandLineParser::Argument const &argument)
{
    switch (argument.Type())
    {
    case CommandLineParser::e_option:
        return out << "option: " << argument.Option();
    case CommandLineParser::e_assignment:
        return out << "assign: " << argument.Assignment().Name() << " = " << argument.Assignment().Value();
    case CommandLineParser::e_string:
        return out << "string: " << argument.String();
    }
    return out;
}

} // namespace quillmarsh
