// The command line of qmdp.
#ifndef QUILLMARSH_TOOLS_QMDP_ARGUMENTS_H
#define QUILLMARSH_TOOLS_QMDP_ARGUMENTS_H

#include <quillmarsh/dataobjects/datafiles.h>
#include <quillmarsh/dataobjects/sampleddataoperations.h>

namespace quillmarsh::tools
{

using namespace sampled_data;

/// Thrown for a wrong argument. Its message is one line that names the argument.
class WrongArgumentException : public Exception
{
public:
    explicit WrongArgumentException(string const &message) { SetMessage(message + " (see --help)"); }
};

/// The contents of the command line.
struct Arguments
{
    bool help = false;
    bool version = false;
    std::vector<string> operands;
    std::vector<string> plugins;
    bool json = false;
    std::optional<Dimensions> size;
    eSizeFilter filter = eSizeFilter::e_linear;
    std::vector<eSampleAxis> flips;
    std::optional<eSampleFormat> format;
    /// Names of types of files; empty if they were not given.
    string from, to;
    LoadSettings load;
    SaveSettings save;
    /// True to say nothing about what is lost in loading and saving.
    bool quiet = false;
    /// Number of files to convert at the same time; 0 for one for each core.
    unsigned int jobs = 0;
    /// Greatest difference that compare accepts.
    double tolerance = 0;
    /// Where compare saves the picture of the differences; empty for nowhere.
    string difference;
};

struct Command
{
    char const *name;
    char const *operands;
    char const *description;
    std::size_t minOperands;
    std::size_t maxOperands;
    /// True when the last operand is where to save to.
    bool hasOutput;
    /// Letters of the groups of options that the command takes.
    char const *options;
    /// Runs the command. False when it reported failures and went on.
    bool (*run)(Arguments const &arguments);
};

/// Reads the arguments after the name of the command. `command` is null when none was given; only help and version
/// allow that. Throws a WrongArgumentException.
Arguments ParseArguments(std::vector<string> const &words, Command const *command);

/// Returns the text of `--help` for a command; for the whole program if `command` is null.
string GetUsage(Command const *command);

} // namespace quillmarsh::tools

#endif
