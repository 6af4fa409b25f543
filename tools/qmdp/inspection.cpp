// Commands that examine files: info and verify.
#include "commands.h"
#include "dataplaces.h"
#include "progress.h"

#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/platform/program.h>

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

bool GoesToTerminal()
{
    return platform::IsTerminal(platform::eStandardStream::e_output);
}

/// Returns a name for standard output: unchanged, but control characters are escaped for a terminal.
string MakeShown(string const &fileName)
{
    return GoesToTerminal() ? MakePrintable(fileName) : fileName;
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
    // A terminal gets only ASCII. Bytes that are not UTF-8, which names of files may contain, become U+FFFD.
    std::cout << object.dump(-1, ' ', GoesToTerminal(), nlohmann::ordered_json::error_handler_t::replace) << '\n';
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
    file->Verify([&](std::uint64_t done) { progress.Update(done, file->GetDesc().package->byteSize); });
}

/// Runs work on all files, and goes on after failures. False when some file failed.
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
            report(DescribeFailure(thrown));
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
                           DataFileDesc const desc = OpenData({fileName, {}})->GetDesc();
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
            std::cout << MakeShown(fileName) << ": ok\n";
        });
}

} // namespace quillmarsh::tools
