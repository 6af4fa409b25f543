// Commands that look at files: info and verify.
#include "commands.h"
#include "jsontext.h"
#include "progress.h"

#include <quillmarsh/basetools/texttools.h>

#include <iomanip>
#include <iostream>
#include <sstream>

namespace quillmarsh::tools
{
namespace
{

/// What is told of a file.
struct FileDesc
{
    string fileName;
    string container;
    Dimensions dimensions;
    eSampleFormat format = e_format_none;
    /// Of a package.
    std::optional<PackageDesc> package;
};

FileDesc Inspect(string const &fileName)
{
    FileDesc desc;
    desc.fileName = fileName;
    InputFile file(fileName);
    char const *const container = RecogniseContainer(file.GetStream());
    if (!container)
        throw DataException(fileName + ": byte 0: opening magic-sequence: neither that of a package nor of a picture");
    desc.container = container;
    if (desc.container != s_szPackageContainer)
    {
        QueryPicture(fileName, desc.format, desc.dimensions);
        return desc;
    }
    try
    {
        desc.package = InspectPackage(file.GetStream(), file.GetByteSize());
    }
    catch (DataException const &thrown)
    {
        throw DataException(fileName + ": " + thrown.GetMessage());
    }
    desc.dimensions = desc.package->dimensions;
    desc.format = static_cast<eSampleFormat>(desc.package->format);
    return desc;
}

string Hexadecimal(unsigned int value)
{
    std::ostringstream text;
    text << "0x" << std::hex << std::setw(8) << std::setfill('0') << value;
    return text.str();
}

void PrintJSON(FileDesc const &desc)
{
    string dimensions;
    for (unsigned int const dimension : desc.dimensions)
        dimensions += (dimensions.empty() ? "" : ", ") + MakeString(dimension);
    std::cout << "{\"file\": " << MakeJSONText(desc.fileName)                        //
              << ", \"kind\": " << MakeJSONText(GetKindName(desc.dimensions.size())) //
              << ", \"container\": " << MakeJSONText(desc.container)                 //
              << ", \"format\": " << MakeJSONText(GetFormatName(desc.format))        //
              << ", \"format_code\": " << desc.format << ", \"dimensions\": [" << dimensions << ']';
    if (desc.package)
        std::cout << ", \"byte_order\": " << MakeJSONText(desc.package->bigEndian ? "big" : "little")
                  << ", \"flags\": " << desc.package->flags << ", \"id\": " << desc.package->id
                  << ", \"payload_bytes\": " << desc.package->payloadByteSize;
    std::cout << "}\n";
}

void Print(FileDesc const &desc)
{
    std::cout << desc.fileName << '\n'
              << "    Kind.........: " << GetKindName(desc.dimensions.size()) << '\n'
              << "    Container....: " << desc.container << '\n'
              << "    Sample format: " << GetFormatName(desc.format) << " (" << Hexadecimal(desc.format) << ")\n"
              << "    Dimensions...: " << Describe(desc.dimensions) << '\n';
    if (desc.package)
        std::cout << "    Byte order...: " << (desc.package->bigEndian ? "big" : "little") << "-endian\n"
                  << "    Flags........: " << desc.package->flags << '\n'
                  << "    Id...........: " << desc.package->id << '\n'
                  << "    Payload bytes: " << desc.package->payloadByteSize << '\n';
}

void VerifyFile(string const &fileName)
{
    Progress progress;
    progress.Begin("Reading");
    FileDesc const desc = Inspect(fileName);
    if (!desc.package)
    {
        static_cast<void>(LoadPicture(fileName));
        return;
    }
    InputFile file(fileName);
    try
    {
        ReadWholePackage(file.GetStream(), file.GetByteSize(), *desc.package,
                         [&](std::uint64_t done) { progress.Update(done, desc.package->byteSize); });
    }
    catch (DataException const &thrown)
    {
        throw DataException(fileName + ": " + thrown.GetMessage());
    }
}

/// Goes through all files, whatever is wrong with some.
template<typename Work>
bool ForEachFile(Arguments const &arguments, void (*report)(string const &message), Work const &work)
{
    bool succeeded = true;
    for (string const &fileName : arguments.operands)
    {
        try
        {
            work(fileName);
        }
        catch (Exception const &thrown)
        {
            std::cout.flush();
            report(thrown.GetMessage());
            succeeded = false;
        }
    }
    return succeeded;
}

} // namespace

bool Info(Arguments const &arguments)
{
    return ForEachFile(arguments, &PrintError,
                       [&](string const &fileName)
                       { arguments.json ? PrintJSON(Inspect(fileName)) : Print(Inspect(fileName)); });
}

bool Verify(Arguments const &arguments)
{
    return ForEachFile(
        arguments, [](string const &message) { PrintLine(message); },
        [](string const &fileName)
        {
            VerifyFile(fileName);
            std::cout << fileName << ": ok\n";
        });
}

} // namespace quillmarsh::tools
