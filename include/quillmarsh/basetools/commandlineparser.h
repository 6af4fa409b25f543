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
/// It knows nothing of what commands there are. With the characters that it starts with,
///
///     screenshot -overwrite -format=png 'my pictures/today'
///
/// is the command "screenshot" with an option, an assignment and a string. Blank and tab are the only whitespace; a
/// quoted string may hold them, and holds a quote or escape character behind an escape character. A parser keeps its
/// storage between lines. It belongs to one thread at a time.
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
        /// Kind of the argument, which says which of the texts is meant.
        eArgumentType Type() const { return type_; }
        /// Name of an option.
        string const &Option() const { return first_; }
        /// Name and value of an assignment.
        NameValueRef Assignment() const { return NameValueRef(first_, second_); }
        /// Text of a string, without the quotes and escapes that it was written with.
        string const &String() const { return first_; }

        bool operator==(eArgumentType type) const { return type_ == type; }
        bool operator!=(eArgumentType type) const { return type_ != type; }

        /// Name of an option, text of a string, "name=value" of an assignment, whatever the special characters are.
        string MakeFullString() const;

    private:
        friend class CommandLineParser;

        unsigned int cmdLinePosition_ = 0;
        eArgumentType type_ = e_option;
        string first_;
        string second_;
    };

    /// Separators that the values of packed assignments are usually cut at.
    static constexpr char const *s_szDefaultPackedArgumentSeparators = ".,:;";

    CommandLineParser();
    CommandLineParser(CommandLineParser const &);
    CommandLineParser &operator=(CommandLineParser const &);
    ~CommandLineParser();

    /// @name Grammar
    /// @{

    /// By default `'`, `$`, `.`, `-` and `=`.
    void SetSpecialCharacters(char quote, char escape, char scope, char option, char assign);
    void GetSpecialCharacters(char &quote, char &escape, char &scope, char &option, char &assign) const;
    /// Both on by default. `singleTokenCommand`: the command is one word or quoted string; otherwise it is an object
    /// chain, "object.object.command". `trimQuotes`: a command that is a single token loses a pair of equal quotes
    /// around it, single or double.
    void SetParseFlags(bool singleTokenCommand, bool trimQuotes);

    /// @}
    /// @name Parsing
    /// @{

    /// Cuts a line; replaces all former results, and on failure there are none. A line that is not well-formed is
    /// false or, with `throwOnError`, a CommandLineErrorException that tells what was left of the line.
    bool Parse(string const &line, bool throwOnError = false);
    /// The same for the words of a program's own command line, joined with a blank behind each.
    bool Parse(int argc, char const **argv, bool throwOnError = false);
    bool Parse(int argc, char **argv, bool throwOnError = false);

    void ClearLastCommandLine();
    void ClearLastResults();
    /// Clears the line and the results.
    void ClearAll();

    /// @}
    /// @name Results
    /// Names and texts are compared exactly, with case, and the first argument that fits counts.
    /// @{

    string const &GetLastCommandLine() const { return lastCommandLine_; }
    string const &GetCommand() const { return command_; }
    /// The object chain, which is empty for a single token, and the command.
    void GetCommand(std::vector<string> &chain, string &command) const;

    unsigned int GetNumArguments() const { return numArguments_; }
    /// Asserts "Index out of range." for an index past the end.
    Argument const &GetArgument(unsigned int index) const;
    /// True when there is such an argument, which is then copied out.
    bool GetOptionArgument(string const &name, Argument &argument) const;
    bool GetAssignmentArgument(string const &name, Argument &argument) const;
    bool GetStringArgument(string const &text, Argument &argument) const;

    bool GetOption(string const &name) const;
    bool GetString(string const &text) const;
    /// Leaves `value` alone when there is no such assignment.
    bool GetAssignment(string const &name, string &value) const;

    /// @}
    /// @name Values of assignments
    /// True when there is an assignment of that name and its value converts (ToValue); the output is the default
    /// otherwise.
    /// @{

    bool ExtractArgumentPointer(string const &name, void *&value, void *defaultValue = nullptr) const;
    bool ExtractArgumentInteger(string const &name, int &value, int defaultValue = 0) const;
    bool ExtractArgumentUInteger(string const &name, unsigned int &value, unsigned int defaultValue = 0) const;
    bool ExtractArgumentDouble(string const &name, double &value, double defaultValue = 0) const;
    bool ExtractArgumentBool(string const &name, bool &value, bool defaultValue = false) const;

    /// Cuts the value at every character of `separators`; pieces without a character are dropped. False, and no
    /// pieces, when there is no such assignment.
    bool GetPackedAssignment(string const &name, std::vector<string> &pieces,
                             string const &separators = s_szDefaultPackedArgumentSeparators) const;
    /// The same pieces as numbers. False at the first that does not convert; those before it are in `values`.
    bool ExtractPackedUIntegers(string const &name, std::vector<unsigned int> &values,
                                string const &separators = s_szDefaultPackedArgumentSeparators) const;

    /// @}
    /// @name Text
    /// @{

    /// Writes the object chain (unless commands are single tokens), the command and the arguments, a line each.
    void DumpLastResults(ostream &out) const;

    /// Line of a help text, with the special characters in force and without an end of line: `tabs` tabs, what the
    /// user types, and, unless it is empty, ", " and the description.
    string FormatOptionHelp(string const &name, string const &desc, unsigned int tabs = 1) const;
    string FormatAssignmentHelp(string const &name, string const &value, string const &desc,
                                unsigned int tabs = 1) const;
    string FormatStringHelp(string const &text, string const &desc, unsigned int tabs = 1) const;

    /// @}

private:
    // The steps of a parse work on the last command line and advance `at`, the index of what is left of it.
    bool ExtractIdentifier(std::size_t &at, string &out, bool allowLeadingDigit, bool allowLeadingUnderscore,
                           bool allowLeadingDash) const;
    bool ExtractOption(std::size_t &at, string &name) const;
    bool ExtractQuotedString(std::size_t &at, string &out) const;
    bool ExtractString(std::size_t &at, string &out) const;
    bool EatWhitespace(std::size_t &at) const;
    bool IsNext(std::size_t at, char wanted) const;
    bool IsWordEnd(std::size_t at) const;

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
    // Only the first numArguments_ are results; those behind keep their storage for the next line.
    std::vector<Argument> arguments_;
    unsigned int numArguments_ = 0;
};

/// Writes "option: name", "assign: name = value" or "string: text", without an end of line.
QUILLMARSH_API ostream &operator<<(ostream &out, CommandLineParser::Argument const &argument);

} // namespace quillmarsh

#endif
