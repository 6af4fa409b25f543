#include "dataplaces.h"

#include "commands.h"

#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/platform/program.h>

#include <iostream>
#include <map>

namespace quillmarsh::tools
{
namespace
{

FileType RequireFileType(string const &fileName)
{
    if (std::optional<FileType> const type = FindFileType(fileName))
        return *type;
    throw WrongArgumentException("'" + fileName + "' ends in none of " + GetExtensions());
}

/// Returns the type that an option names; nothing if it was not given.
std::optional<FileType> FindNamedType(char const *option, string const &name)
{
    std::optional<FileType> type = FindFileTypeByName(name);
    if (type || name.empty())
        return type;
    string names;
    for (string const &known : GetFileTypeNames())
        names += (names.empty() ? "" : ", ") + known;
    throw WrongArgumentException(string(option) + " must be one of " + names + ", not '" + name + "'");
}

AutoPtr<DataFile> OpenPlace(Arguments const &arguments, DataPlace const &place)
{
    if (!place.IsStandardStream())
    {
        if (place.type)
            return std::make_unique<DataFile>(place.name, *place.type, arguments.load);
        return std::make_unique<DataFile>(place.name, arguments.load);
    }
    if (platform::IsTerminal(platform::eStandardStream::e_input))
        throw WrongArgumentException("'-' is for a pipe or a file, but standard input is a terminal");
    return std::make_unique<DataFile>(std::cin, place.GetInputName(), place.type ? &*place.type : nullptr,
                                      arguments.load);
}

/// True if the data can be loaded as floats only, which the failure of loading them as bytes does not tell.
bool AreDeepOnly(Arguments arguments, DataPlace const &place, DataException const &thrown)
{
    if (thrown.GetFailure().kind != eCodecFailure::e_unsupported || place.IsStandardStream() ||
        arguments.load.deepLuminance)
        return false;
    arguments.load.deepLuminance = true;
    try
    {
        return OpenPlace(arguments, place)->GetDesc().format == e_format_FP32NormL;
    }
    catch (Exception const &)
    {
        return false;
    }
}

void TellLosses(Arguments const &arguments, string const &name, string const &step, std::vector<string> const &losses)
{
    if (arguments.quiet || losses.empty())
        return;
    string text;
    for (string const &loss : losses)
        text += (text.empty() ? "" : ", ") + loss;
    PrintError(name + ": lost in " + step + ": " + text);
}

} // namespace

DataPlace FindInput(Arguments const &arguments, string const &name)
{
    DataPlace place = {name, FindNamedType("--from", arguments.from)};
    if (!place.type && !place.IsStandardStream())
        place.type = RequireFileType(name);
    return place;
}

DataPlace FindOutput(Arguments const &arguments, string const &name)
{
    DataPlace place = {name, FindNamedType("--to", arguments.to)};
    if (place.IsStandardStream() && !place.type)
        throw WrongArgumentException("'-' for standard output needs --to with a type of files");
    if (place.IsStandardStream() && platform::IsTerminal(platform::eStandardStream::e_output))
        throw WrongArgumentException("'-' is for a pipe or a file, but standard output is a terminal");
    if (!place.type)
        place.type = RequireFileType(name);
    return place;
}

AutoPtr<DataFile> OpenData(Arguments const &arguments, DataPlace const &place)
{
    try
    {
        AutoPtr<DataFile> file = OpenPlace(arguments, place);
        TellLosses(arguments, place.GetInputName(), "loading", ListLoadingLosses(file->GetDesc()));
        return file;
    }
    catch (DataException const &thrown)
    {
        if (!AreDeepOnly(arguments, place, thrown))
            throw;
        throw DataException(place.GetInputName(), {thrown.GetFailure().kind,
                                                   thrown.GetFailure().text + " as bytes (see --format FP32NormL)"});
    }
}

AutoPtr<DataFile> OpenToInspect(Arguments arguments, DataPlace const &place)
{
    try
    {
        return OpenPlace(arguments, place);
    }
    catch (DataException const &thrown)
    {
        if (!AreDeepOnly(arguments, place, thrown))
            throw;
    }
    arguments.load.deepLuminance = true;
    return OpenPlace(arguments, place);
}

SampledData LoadData(Arguments const &arguments, DataPlace const &place)
{
    return OpenData(arguments, place)->Load();
}

void SaveData(Arguments const &arguments, SampledData const &data, DataPlace const &place)
{
    if (place.IsStandardStream())
        SaveToStream(data, std::cout, "standard output", *place.type, arguments.save);
    else
        SaveFile(data, place.name, *place.type, arguments.save);
    if (!arguments.quiet)
        TellLosses(arguments, place.name, "saving", ListSavingLosses(data, *place.type));
}

void KeepGrey(SampledData &data, DataFileDesc const &source, DataPlace const &target)
{
    using namespace signal_codec_parameters;
    string const &container = target.type->container;
    bool const canBeGrey = container == Value_ImageFileFormat_PNG || container == Value_ImageFileFormat_TIFF ||
                           container == Value_ImageFileFormat_JPEG;
    if (!source.picture || source.picture->colours != ePictureColours::e_grey || !canBeGrey)
        return;
    if (data.GetFormat() == e_format_X8R8G8B8)
        ChangeFormat(data, e_format_L8);
    else if (data.GetFormat() == e_format_A8R8G8B8)
        ChangeFormat(data, e_format_A8L8);
}

std::vector<DataPlace> FindOutputsInFolder(Arguments const &arguments, std::vector<DataPlace> const &inputs,
                                           string const &folder)
{
    std::optional<FileType> const type = FindNamedType("--to", arguments.to);
    std::vector<DataPlace> outputs;
    std::map<string, string> takenBy;
    for (DataPlace const &input : inputs)
    {
        if (input.IsStandardStream())
            throw WrongArgumentException("'-' has no name for a file in a folder");
        FileType const &own = *input.type;
        FileType const &saved = type ? *type : own;
        std::u8string const text = file_system::GetStreamPath(input.name).filename().u8string();
        string name(text.begin(), text.end());
        std::optional<FileType> const named = FindFileType(name);
        name = name.substr(0, name.size() - (named ? named->extension.size() : 0)) + saved.extension;
        auto const [taken, isNew] = takenBy.emplace(name, input.name);
        if (!isNew)
            throw WrongArgumentException("'" + taken->second + "' and '" + input.name + "' would both become '" + name +
                                         "'");
        string path = folder;
        if (!path.ends_with('/'))
            path += '/';
        outputs.push_back({path += name, saved});
    }
    return outputs;
}

} // namespace quillmarsh::tools
