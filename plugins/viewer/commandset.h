// Commands of the viewer's console, made from tables of words and functions.
#ifndef QUILLMARSH_PLUGINS_VIEWER_COMMANDSET_H
#define QUILLMARSH_PLUGINS_VIEWER_COMMANDSET_H

#include <quillmarsh/framework/commandtable.h>

#include <functional>
#include <span>
#include <vector>

namespace viewer
{

using quillmarsh::string;

/// The viewer's commands, registered for as long as this object lives. Frame thread only.
class CommandSet : quillmarsh::NoCopy
{
public:
    /// Does the work of a line that has no mistake against its words. Throws a DataException, whose message is printed as
    /// the failure of the line.
    using Run = std::function<void(quillmarsh::ostream &out, quillmarsh::CommandArguments const &arguments)>;

    /// `fail` gets the reason of each line that fails, which is printed as well; it may be empty.
    explicit CommandSet(std::function<void(string const &)> fail = {});
    ~CommandSet();

    /// Registers a command. Texts and words are literals, or live as long. `plain` says what a line without words does;
    /// empty if it does nothing special.
    void Add(char const *name, char const *shortDesc, std::span<quillmarsh::CommandWord const> words, char const *plain,
             Run run);

private:
    class Entry;

    std::function<void(string const &)> fail_;
    /// The interpreter owns them.
    std::vector<Entry *> entries_;
};

/// @name Reading arguments
/// They throw a DataException that names what is missing.
/// @{
/// Returns the first argument. `what` completes "... is missing", as "the name of a file".
string const &RequireArgument(quillmarsh::CommandArguments const &arguments, char const *what);
/// Returns the first argument as a number.
double RequireNumber(quillmarsh::CommandArguments const &arguments, char const *what);
/// @}

} // namespace viewer

#endif
