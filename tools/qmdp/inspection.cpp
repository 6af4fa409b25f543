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

string Hexadecimal(unsigned int value)
{
    std::ostringstream text;
    text << "0x" << std::hex << std::setw(8) << std::setfill('0') << value;
    return text.str();
}

void PrintJSON(string const &fileName, DataFileDesc const &desc)
{
    string dimensions;
    for (unsigned int const dimension : desc.dimensions)
        dimensions += (dimensions.empty() ? "" : ", ") + MakeString(dimension);
    std::cout << "{\"file\": " << MakeJSONText(fileName)                             //
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

void Print(string const &fileName, DataFileDesc const &desc)
{
    std::cout << fileName << '\n'
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
    DataFile file(fileName);
    file.Verify([&](std::uint64_t done) { progress.Update(done, file.GetDesc().package->byteSize); });
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
                       {
                           DataFileDesc const desc = DataFile(fileName).GetDesc();
                           arguments.json ? PrintJSON(fileName, desc) : Print(fileName, desc);
                       });
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
