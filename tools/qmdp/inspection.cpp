// Commands that examine files: info and verify.
#include "commands.h"
#include "dataplaces.h"
#include "output.h"
#include "progress.h"

#include <nlohmann/json.hpp>

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
    nlohmann::ordered_json object = {{"file", fileName},
                                     {"kind", GetKindName(desc.dimensions.size())},
                                     {"container", desc.container},
                                     {"format", GetFormatName(desc.format)},
                                     {"format_code", static_cast<unsigned int>(desc.format)},
                                     {"dimensions", desc.dimensions}};
    if (desc.package)
    {
        object["byte_order"] = desc.package->bigEndian ? "big" : "little";
        object["flags"] = desc.package->flags;
        object["id"] = desc.package->id;
        object["payload_bytes"] = desc.package->payloadByteSize;
    }
    PrintObject(object);
}

void Print(string const &fileName, DataFileDesc const &desc)
{
    std::cout << MakeShown(fileName) << '\n'
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
    AutoPtr<DataFile> const file = OpenData({fileName, {}});
    file->Verify([&](std::uint64_t done) { progress.Update(done, file->GetDesc().package->byteSize, nullptr); });
}

} // namespace

bool Info(Arguments const &arguments)
{
    return ForEachFile(arguments,
                       [&](string const &fileName)
                       {
                           DataFileDesc const desc = OpenData({fileName, {}})->GetDesc();
                           arguments.json ? PrintJSON(fileName, desc) : Print(fileName, desc);
                       });
}

bool Verify(Arguments const &arguments)
{
    return ForEachFile(
        arguments,
        [](string const &fileName)
        {
            VerifyFile(fileName);
            std::cout << MakeShown(fileName) << ": ok\n";
        },
        &PrintLine);
}

} // namespace quillmarsh::tools
