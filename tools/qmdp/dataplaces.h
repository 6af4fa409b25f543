// The places of data that the command line names: files, and "-" for standard input and output.
#ifndef QUILLMARSH_TOOLS_QMDP_DATAPLACES_H
#define QUILLMARSH_TOOLS_QMDP_DATAPLACES_H

#include "arguments.h"

namespace quillmarsh::tools
{

/// A file or, for the name "-", a standard stream.
struct DataPlace
{
    string name;
    /// Type of the data. Nothing if they are recognised by their content.
    std::optional<FileType> type;

    bool IsStandardStream() const { return name == "-"; }
    /// Returns the name for messages about loading from here.
    string GetInputName() const { return IsStandardStream() ? "standard input" : name; }
};

/// Returns where to load from. The type is that of --from, else that of the file's name. Throws a
/// WrongArgumentException for a file without either, and when standard input is a terminal.
DataPlace FindInput(Arguments const &arguments, string const &name);
/// Returns where to save to. The type is that of --to, else that of the file's name. Throws a WrongArgumentException
/// without either, and when standard output is a terminal.
DataPlace FindOutput(Arguments const &arguments, string const &name);

/// Returns where to save the data of each input in a folder: under the name of its file, with the extension of --to if
/// that was given. Throws a WrongArgumentException when two of them would be the same.
std::vector<DataPlace> FindOutputsInFolder(Arguments const &arguments, std::vector<DataPlace> const &inputs,
                                           string const &folder);

/// Opens data, and says what loading them will lose.
AutoPtr<DataFile> OpenData(Arguments const &arguments, DataPlace const &place);
/// Opens data to look at them. Those that can be loaded as floats only are opened as floats.
AutoPtr<DataFile> OpenToInspect(Arguments arguments, DataPlace const &place);
/// Loads data, and says what is lost. Throws a DataException when that fails.
SampledData LoadData(Arguments const &arguments, DataPlace const &place);
/// Saves data, and says what is lost. Throws a DataException when that fails.
void SaveData(Arguments const &arguments, SampledData const &data, DataPlace const &place);

/// Makes a picture grey that comes from a grey file and goes to a kind of picture that can be grey.
void KeepGrey(SampledData &data, DataFileDesc const &source, DataPlace const &target);

} // namespace quillmarsh::tools

#endif
