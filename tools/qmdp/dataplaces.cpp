#include "dataplaces.h"

#include <quillmarsh/platform/program.h>

#include <iostream>

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
    std::optional<FileType> const type = FindFileTypeByName(name);
    if (type || name.empty())
        return type;
    string names = GetExtensions().substr(1);
    for (std::size_t at; (at = names.find(" .")) != string::npos;)
        names.replace(at, 2, ", ");
    throw WrongArgumentException(string(option) + " must be one of " + names + ", not '" + name + "'");
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

AutoPtr<DataFile> OpenData(DataPlace const &place)
{
    if (!place.IsStandardStream())
        return place.type ? std::make_unique<DataFile>(place.name, *place.type)
                          : std::make_unique<DataFile>(place.name);
    if (platform::IsTerminal(platform::eStandardStream::e_input))
        throw WrongArgumentException("'-' is for a pipe or a file, but standard input is a terminal");
    return std::make_unique<DataFile>(std::cin, place.GetInputName(), place.type ? &*place.type : nullptr);
}

SampledData LoadData(DataPlace const &place)
{
    return OpenData(place)->Load();
}

void SaveData(Arguments const &arguments, SampledData const &data, DataPlace const &place)
{
    if (place.IsStandardStream())
        SaveToStream(data, std::cout, "standard output", *place.type, arguments.save);
    else
        SaveFile(data, place.name, *place.type, arguments.save);
}

} // namespace quillmarsh::tools
