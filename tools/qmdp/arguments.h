// The command line of qmdp.
#ifndef QUILLMARSH_TOOLS_QMDP_ARGUMENTS_H
#define QUILLMARSH_TOOLS_QMDP_ARGUMENTS_H

#include <quillmarsh/dataobjects/datafiles.h>
#include <quillmarsh/dataobjects/sampleddataoperations.h>

namespace quillmarsh::tools
{

using namespace sampled_data;

/// An argument that cannot be followed. Its message is one line that names the argument.
class WrongArgumentException : public Exception
{
public:
    explicit WrongArgumentException(string const &message) { SetMessage(message + " (see --help)"); }
};

/// What the command line asks for.
struct Arguments
{
    bool help = false;
    bool version = false;
    std::vector<string> operands;
    std::vector<string> plugins;
    bool json = false;
    std::optional<Dimensions> size;
    eResampleFilter filter = e_resample_linear;
    std::vector<eSampleAxis> flips;
    std::optional<eSampleFormat> format;
    SaveSettings save;
};

struct Command
{
    char const *name;
    char const *operands;
    char const *description;
    std::size_t minOperands;
    std::size_t maxOperands;
    /// Options that it takes, by the letters of their groups.
    char const *options;
    /// False when it has told of failures and gone on.
    bool (*run)(Arguments const &arguments);
};

/// Reads the arguments behind the name of the command; it is null when there was none, which only help and version
/// allow. Throws a WrongArgumentException.
Arguments ParseArguments(std::vector<string> const &words, Command const *command);

/// Type of a file that is to be loaded or saved. Throws a WrongArgumentException for a name that tells none.
FileType RequireFileType(string const &fileName);

/// Text of `--help`; of the whole program without a command.
string GetUsage(Command const *command);

} // namespace quillmarsh::tools

#endif
