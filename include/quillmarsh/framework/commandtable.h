// A command's words, declared once: its help, its parsing and the search for mistakes read the same table.
#ifndef QUILLMARSH_FRAMEWORK_COMMANDTABLE_H
#define QUILLMARSH_FRAMEWORK_COMMANDTABLE_H

#include <quillmarsh/basetools/command.h>
#include <quillmarsh/basetools/commandlineparser.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/framework/completion.h>

#include <span>
#include <type_traits>

namespace quillmarsh
{

class CommandArguments;
class HumanInterfaceDevice;

/// Kind of value of an assignment or an argument.
///
/// A plug-in adds kinds of its own:
///
///     constexpr CommandValue s_speed{"a speed from 0.01 to 100", &IsSpeed};
struct CommandValue
{
    /// Completes the sentence "'x' is not ..."; a literal.
    char const *phrase;
    /// True when the text is such a value. The function may ask the line of the text for its other words. Null accepts
    /// all texts.
    bool (*accepts)(CommandArguments const &line, string const &text);
    /// Offers values to somebody who types one; null offers none. The line is without the word that is typed.
    void (*offer)(CommandArguments const &line, CompletionOffers &offers) = nullptr;
};

/// Kinds of values that many commands take.
namespace command_values
{

/// True when the text converts to a `T` (ToValue).
template<typename T>
bool Converts(CommandArguments const &, string const &text)
{
    T value{};
    return ToValue(text, value);
}

/// True for the digits of an unsigned number. A minus, which the conversion takes, is refused.
QUILLMARSH_API bool IsUnsigned(string const &text);
/// The kernel's device of that creation id, or null.
QUILLMARSH_API HumanInterfaceDevice *FindDevice(unsigned int creationID);
/// True when a device has the text as its creation id.
QUILLMARSH_API bool IsDeviceID(string const &text);
/// True when the kernel has a plug-in of that name.
QUILLMARSH_API bool IsPlugin(string const &text);

/// Any text.
inline constexpr CommandValue s_text{"a text", nullptr};
/// A text that converts to a `bool`.
inline constexpr CommandValue s_boolean{"a boolean (true or false, yes or no, on or off, 1 or 0)", &Converts<bool>,
                                        [](CommandArguments const &, CompletionOffers &offers)
                                        { OfferBooleans(offers); }};
/// A finite number.
inline constexpr CommandValue s_real{"a number", &Converts<double>};
/// A whole number without a sign.
inline constexpr CommandValue s_uinteger{"a whole number from 0 on",
                                         [](CommandArguments const &, string const &text) { return IsUnsigned(text); }};
/// The creation id of a device that the kernel has.
inline constexpr CommandValue s_device{
    "the creation-id of a device", [](CommandArguments const &, string const &text) { return IsDeviceID(text); },
    [](CommandArguments const &, CompletionOffers &offers) { OfferDevices(offers); }};
/// The name of a file, which may not exist. All texts are accepted: the command knows the reason against one.
inline constexpr CommandValue s_file{"the name of a file", nullptr,
                                     [](CommandArguments const &, CompletionOffers &offers) { OfferFiles(offers); }};
/// The name of a plug-in that the kernel has.
inline constexpr CommandValue s_plugin{
    "the name of a plug-in", [](CommandArguments const &, string const &text) { return IsPlugin(text); },
    [](CommandArguments const &, CompletionOffers &offers) { OfferPlugins(offers); }};

} // namespace command_values

/// One word of a command: an option, an assignment with the word that stands for its value, or an argument.
///
/// Texts are literals, or live as long. The description ends in a line feed; a null one keeps the word out of the help.
struct CommandWord
{
    /// Kind of word, which decides how its help line looks.
    enum class eKind
    {
        e_option,
        e_assignment,
        /// An assignment of any name.
        e_anyAssignment,
        /// Arguments are the strings of a line, in the order of the table.
        e_argument,
        /// An argument that counts only ahead of all options and assignments.
        e_leadingArgument
    };

    eKind kind;
    char const *name;
    char const *value;
    char const *description;
    CommandValue accepted;
    /// Heading in the help, which ends in a line feed; null for the heading of the kind.
    char const *section;

    /// An option.
    static constexpr CommandWord Option(char const *name, char const *description)
    {
        return {eKind::e_option, name, "", description, command_values::s_text, nullptr};
    }
    /// An assignment, with the word that stands for its value.
    static constexpr CommandWord Assignment(char const *name, char const *value, char const *description,
                                            CommandValue const &accepted = command_values::s_text)
    {
        return {eKind::e_assignment, name, value, description, accepted, nullptr};
    }
    /// One assignment of any name; `name` stands for it in the help.
    static constexpr CommandWord AnyAssignment(char const *name, char const *value, char const *description)
    {
        return {eKind::e_anyAssignment, name, value, description, command_values::s_text, nullptr};
    }
    /// An argument, with its number and type in the name.
    static constexpr CommandWord Argument(char const *name, char const *description,
                                          CommandValue const &accepted = command_values::s_text)
    {
        return {eKind::e_argument, name, "", description, accepted, nullptr};
    }
    /// An argument that counts only ahead of all options and assignments.
    static constexpr CommandWord LeadingArgument(char const *name, char const *description,
                                                 CommandValue const &accepted = command_values::s_text)
    {
        return {eKind::e_leadingArgument, name, "", description, accepted, nullptr};
    }
    /// The same word, under a heading of its own.
    constexpr CommandWord Under(char const *heading) const
    {
        return {kind, name, value, description, accepted, heading};
    }

    /// True for arguments of both kinds.
    constexpr bool IsArgument() const { return kind == eKind::e_argument || kind == eKind::e_leadingArgument; }
};

/// Gives the words of a command. Programs ask a command for it by `dynamic_cast`.
class QUILLMARSH_API CommandVocabulary
{
public:
    virtual ~CommandVocabulary();

    /// All words of the command; they live as long as the command.
    virtual std::span<CommandWord const> GetWords() const = 0;
};

/// The arguments of a line, read by the table of the command. Everything is borrowed.
///
/// Asking for a word that the table lacks asserts, and the line does not have it then.
class QUILLMARSH_API CommandArguments
{
public:
    CommandArguments(Command const &command, CommandLineParser const &parser, std::span<CommandWord const> words)
        : command_(command),
          parser_(parser),
          words_(words)
    {
    }

    Command const &GetCommand() const { return command_; }
    CommandLineParser const &GetParser() const { return parser_; }
    /// The table.
    std::span<CommandWord const> GetWords() const { return words_; }

    bool HasOption(char const *name) const;
    /// Value of the first assignment of that name; null when there is none.
    string const *FindAssignment(char const *name) const;
    /// Reads the assignment. False, and the value stays, when there is none or its text does not convert (ToValue).
    template<typename T>
    bool ReadAssignment(char const *name, T &value) const;
    /// Argument by its place in the table; null when there is none.
    string const *FindArgument(unsigned int index) const;

    /// Offers what can stand for a word that somebody types: options and assignments that the line does not have yet,
    /// values of an assignment, or values of the next argument. `ahead` has the line in front of the word, as
    /// CommandLineParser::ParseUnfinished() leaves it; the parser of this object has all other words of the line.
    void OfferWords(CommandLineParser::UnfinishedWord const &word, CommandLineParser const &ahead,
                    CompletionOffers &offers) const;

    /// The first mistake in the line, as a sentence that names command and word; empty when there is none.
    ///
    /// Mistakes are options, assignments and arguments that the table lacks, an assignment that stands there twice, and
    /// values that their words do not accept.
    string FindMistake() const;

private:
    struct Place;

    void OfferOptions(CompletionOffers &offers) const;
    void OfferArgument(CommandLineParser const &ahead, CompletionOffers &offers) const;
    void OfferValues(CommandWord const *word, CompletionOffers &offers) const;
    bool HasWord(CommandWord::eKind kind, char const *name) const;
    CommandWord const *FindWord(CommandWord::eKind kind, string const &name) const;
    CommandWord const *FindArgumentWord(unsigned int index) const;
    string FindMistake(CommandLineParser::Argument const &argument, Place &place) const;
    string FindOptionMistake(string const &name) const;
    string FindAssignmentMistake(CommandLineParser::Argument const &argument, Place &place) const;
    string FindValueMistake(CommandWord const &word, string const &value) const;

    Command const &command_;
    CommandLineParser const &parser_;
    std::span<CommandWord const> words_;
};

template<typename T>
bool CommandArguments::ReadAssignment(char const *name, T &value) const
{
    string const *const text = FindAssignment(name);
    if (text == nullptr)
        return false;
    if constexpr (std::is_same_v<T, string>)
    {
        value = *text;
        return true;
    }
    else
    {
        return ToValue(*text, value);
    }
}

/// Prints the help body of a command: the sections "Options:", "Assignments:" and "Arguments:" that have words, then
/// the sections with headings of their own in the order of their first words, each word in a line of its own with one
/// tab ahead of it, and then the default behaviour, unless that is empty.
QUILLMARSH_API void DumpCommandWords(ostream &out, CommandLineParser const &parser, std::span<CommandWord const> words,
                                     string const &defaultBehavior = "");

/// Base of commands that refuse a line with a mistake in it, before they do anything. Console's thread.
///
/// A command lists its words, and reads them from the arguments that it is handed:
///
///     std::span<CommandWord const> GetWords() const override { return s_words; }
///     bool Execute(ostream &out, CommandArguments const &arguments) override
///     {
///         if (arguments.HasOption(s_szOptionReset)) ...
class QUILLMARSH_API TableCommand : public Command, public CommandVocabulary
{
public:
    ~TableCommand() override;

    /// Runs Execute() and returns its result. If the line has a mistake, prints the first one instead, and returns
    /// false.
    bool ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &commandLine) final;
    /// Prints the words and the default behaviour.
    void DumpHelp(ostream &out, CommandLineParser const &parser) override;

protected:
    /// Does the command's work, on a line without mistakes. The result is that of ParseAndExecute().
    virtual bool Execute(ostream &out, CommandArguments const &arguments) = 0;
    /// Sentence of the help about a line without words; empty by default.
    virtual string GetDefaultBehavior() const;
};

} // namespace quillmarsh

#endif
