// Grammar of the console language: one line cut into a command and its arguments.
#ifndef QUILLMARSH_BASETOOLS_COMMANDLINEPARSER_H
#define QUILLMARSH_BASETOOLS_COMMANDLINEPARSER_H

#include <quillmarsh/platform/types.h>

#include <cstddef>
#include <vector>

namespace quillmarsh
{

/// Cuts a console line into a command and an ordered list of options, assignments and strings.
///
/// The parser does not know which commands exist. With the special characters that are set at first,
///
///     screenshot -overwrite -format=png 'my pictures/today'
///
/// is the command "screenshot" with an option, an assignment and a string. Blank and tab are the only whitespace. A
/// quoted string may hold whitespace; a quote or an escape character in it is written behind an escape character. A
/// parser keeps its storage between lines. It belongs to one thread at a time.
class QUILLMARSH_API CommandLineParser
{
public:
    /// Kind of an argument.
    enum eArgumentType
    {
        e_option = 0,
        e_assignment = 1,
        e_string = 2
    };

    /// Name and value of an assignment, by reference: good as long as the argument lives.
    class NameValueRef
    {
    public:
        NameValueRef(string const &name, string const &value) : name_(name), value_(value) {}

        /// Name in front of the assignment character.
        string const &Name() const { return name_; }
        /// Value behind the assignment character.
        string const &Value() const { return value_; }

    private:
        string const &name_;
        string const &value_;
    };

    /// One argument of a line.
    class QUILLMARSH_API Argument
    {
    public:
        /// Place among the arguments of the line, from 0.
        unsigned int GetCmdLinePosition() const { return cmdLinePosition_; }
        /// Kind of the argument. It says which of the texts below is meant.
        eArgumentType Type() const { return type_; }
        /// Name of an option.
        string const &Option() const { return first_; }
        /// Name and value of an assignment.
        NameValueRef Assignment() const { return NameValueRef(first_, second_); }
        /// Text of a string, without the quotes and escapes that it was written with.
        string const &String() const { return first_; }

        /// True when the argument is of that kind.
        bool operator==(eArgumentType type) const { return type_ == type; }
        /// True when the argument is of another kind.
        bool operator!=(eArgumentType type) const { return type_ != type; }

        /// Name of an option, text of a string, or "name=value" of an assignment; "=" stands there with every set of
        /// special characters.
        string MakeFullString() const;

    private:
        friend class CommandLineParser;

        unsigned int cmdLinePosition_ = 0;
        eArgumentType type_ = e_option;
        string first_;
        string second_;
    };

    /// Separators at which the values of packed assignments are usually cut.
    static constexpr char const *s_szDefaultPackedArgumentSeparators = ".,:;";

    CommandLineParser();
    CommandLineParser(CommandLineParser const &);
    CommandLineParser &operator=(CommandLineParser const &);
    ~CommandLineParser();

    /// @name Grammar
    /// @{

    /// Sets the special characters. By default they are `'`, `$`, `.`, `-` and `=`.
    void SetSpecialCharacters(char quote, char escape, char scope, char option, char assign);
    /// Hands out the special characters.
    void GetSpecialCharacters(char &quote, char &escape, char &scope, char &option, char &assign) const;
    /// Sets two rules, which are on by default. With `singleTokenCommand` the command is one word or one quoted string;
    /// without it, an object chain such as "object.object.command". With `trimQuotes` a command that is a single token
    /// loses a pair of equal quotes around it, single or double.
    void SetParseFlags(bool singleTokenCommand, bool trimQuotes);

    /// @}
    /// @name Parsing
    /// @{

    /// Cuts a line, and replaces all former results. For a line that is not well-formed there are no results, and the
    /// operation returns false or, with `throwOnError`, throws a CommandLineErrorException that tells what was left of
    /// the line.
    bool Parse(string const &line, bool throwOnError = false);
    /// Parses the words of a program's own command line, with a blank behind each word.
    bool Parse(int argc, char const **argv, bool throwOnError = false);
    /// Parses the words of a program's own command line, with a blank behind each word.
    bool Parse(int argc, char **argv, bool throwOnError = false);

    /// The word at the end of a line that somebody still types.
    struct UnfinishedWord
    {
        /// What a word can be.
        enum class eKind
        {
            /// The command itself.
            e_command,
            /// An option or the name of an assignment. The text is without the option character, which stands there.
            e_option,
            /// The value of an assignment.
            e_value,
            /// A string, which may still become an option if it is empty.
            e_string
        };

        /// What the word is.
        eKind kind = eKind::e_command;
        /// Index in the line of the word's first byte, of a quote character in front of it, or of a value.
        std::size_t begin = 0;
        /// What is typed of the word, without quotes and escapes.
        string text;
        /// Name of the assignment of a value.
        string assignment;
        /// True behind an opening quote.
        bool isQuoted = false;
    };

    /// Parses a line that somebody still types, up to its last word, which Parse() may refuse: the results are the
    /// command and the arguments in front of that word. Returns false, without results, when the line has a mistake in
    /// front of the word, and when no word can stand at its end.
    bool ParseUnfinished(string const &line, UnfinishedWord &word);
    /// Text as a word of a line: with quotes and escapes if it needs them or `forceQuotes` is set. Unless it `isWhole`,
    /// quotes stay open for the rest.
    string FormatWord(string const &text, bool forceQuotes = false, bool isWhole = true) const;

    /// Clears the line; the results stay.
    void ClearLastCommandLine();
    /// Clears the results; the line stays.
    void ClearLastResults();
    /// Clears the line and the results.
    void ClearAll();

    /// @}
    /// @name Results
    /// Names and texts are compared exactly, case included. If several arguments fit, the first one counts.
    /// @{

    /// The line that was parsed last.
    string const &GetLastCommandLine() const { return lastCommandLine_; }
    /// The command, without its object chain; empty when there are no results.
    string const &GetCommand() const { return command_; }
    /// Hands out the object chain, which is empty for a single token, and the command.
    void GetCommand(std::vector<string> &chain, string &command) const;

    /// Number of arguments.
    unsigned int GetNumArguments() const { return numArguments_; }
    /// Argument by index, in the order of the line. Asserts "Index out of range." past the end, and gives an empty
    /// option then.
    Argument const &GetArgument(unsigned int index) const;
    /// Copies out the option of that name. Returns false, and leaves `argument` alone, when there is none.
    bool GetOptionArgument(string const &name, Argument &argument) const;
    /// Copies out the assignment of that name, likewise.
    bool GetAssignmentArgument(string const &name, Argument &argument) const;
    /// Copies out the string of that text, likewise.
    bool GetStringArgument(string const &text, Argument &argument) const;

    /// True when there is an option of that name.
    bool GetOption(string const &name) const;
    /// True when there is a string of that text.
    bool GetString(string const &text) const;
    /// Copies out the value of the assignment of that name. Returns false, and leaves `value` alone, when there is
    /// none.
    bool GetAssignment(string const &name, string &value) const;

    /// @}
    /// @name Values of assignments
    /// Each returns true when there is an assignment of that name and its value converts (see ToValue()). Otherwise the
    /// output is the default.
    /// @{

    bool ExtractArgumentPointer(string const &name, void *&value, void *defaultValue = nullptr) const;
    bool ExtractArgumentInteger(string const &name, int &value, int defaultValue = 0) const;
    bool ExtractArgumentUInteger(string const &name, unsigned int &value, unsigned int defaultValue = 0) const;
    bool ExtractArgumentDouble(string const &name, double &value, double defaultValue = 0) const;
    bool ExtractArgumentBool(string const &name, bool &value, bool defaultValue = false) const;

    /// Cuts the value at every character of `separators`, and drops empty pieces. Returns false, and gives no pieces,
    /// when there is no such assignment.
    bool GetPackedAssignment(string const &name, std::vector<string> &pieces,
                             string const &separators = s_szDefaultPackedArgumentSeparators) const;
    /// Gives the same pieces as numbers. Returns false at the first piece that does not convert; `values` then holds
    /// the numbers before it.
    bool ExtractPackedUIntegers(string const &name, std::vector<unsigned int> &values,
                                string const &separators = s_szDefaultPackedArgumentSeparators) const;

    /// @}
    /// @name Text
    /// @{

    /// Writes the object chain (unless commands are single tokens), the command and the arguments, each on a line.
    void DumpLastResults(ostream &out) const;

    /// Line of a help text on an option, with the special characters that are set and without a line end: `tabs` tabs,
    /// what the user types, and ", " with the description unless that is empty.
    string FormatOptionHelp(string const &name, string const &desc, unsigned int tabs = 1) const;
    /// Line of a help text on an assignment, likewise.
    string FormatAssignmentHelp(string const &name, string const &value, string const &desc,
                                unsigned int tabs = 1) const;
    /// Line of a help text on a string, likewise.
    string FormatStringHelp(string const &text, string const &desc, unsigned int tabs = 1) const;

    /// @}

private:
    // The steps of a parse work on the last command line, and advance `at`, the index where the rest of it begins.
    bool ExtractIdentifier(std::size_t &at, string &out, bool allowLeadingDigit, bool allowLeadingUnderscore,
                           bool allowLeadingDash) const;
    bool ExtractOption(std::size_t &at, string &name) const;
    bool ExtractQuotedString(std::size_t &at, string &out) const;
    bool ExtractString(std::size_t &at, string &out) const;
    bool EatWhitespace(std::size_t &at) const;
    bool IsNext(std::size_t at, char wanted) const;
    bool IsWordEnd(std::size_t at) const;

    bool FindUnfinishedWord(UnfinishedWord &word);
    bool FindUnfinishedOption(std::size_t begin, std::size_t end, string const &name, UnfinishedWord &word) const;
    bool ReadUnfinishedText(std::size_t at, UnfinishedWord &word) const;

    void ParseLine(std::size_t &at, string &putBack);
    void ParseCommand(std::size_t &at);
    void ParseObjectChain(std::size_t &at);
    void ParseOption(std::size_t &at, Argument &argument) const;
    bool ParseString(std::size_t &at, bool afterWhitespace, Argument &argument, string &putBack) const;

    Argument &NextArgument();
    Argument const *FindArgument(eArgumentType type, string const &text) const;
    bool CopyArgument(eArgumentType type, string const &text, Argument &argument) const;
    template<typename T>
    bool ExtractArgument(string const &name, T &value, T defaultValue) const;

    char quote_ = '\'';
    char escape_ = '$';
    char scope_ = '.';
    char option_ = '-';
    char assign_ = '=';
    bool singleTokenCommand_ = true;
    bool trimQuotes_ = true;
    string lastCommandLine_;
    std::vector<string> objectChain_;
    string command_;
    // Only the first numArguments_ are results; the others keep their storage for the next line.
    std::vector<Argument> arguments_;
    unsigned int numArguments_ = 0;
};

/// Writes "option: name", "assign: name = value" or "string: text", without an end of line.
QUILLMARSH_API ostream &operator<<(ostream &out, CommandLineParser::Argument const &argument);

} // namespace quillmarsh

#endif
