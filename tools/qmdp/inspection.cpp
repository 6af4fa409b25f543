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

char const *GetColoursName(ePictureColours colours)
{
    switch (colours)
    {
    case ePictureColours::e_grey:
        return "grey";
    case ePictureColours::e_palette:
        return "palette";
    case ePictureColours::e_inks:
        return "inks";
    default:
        return "colours";
    }
}

nlohmann::ordered_json DescribePicture(PictureDesc const &picture)
{
    return {{"colours", GetColoursName(picture.colours)},
            {"alpha", picture.hasAlpha},
            {"bits", picture.bits},
            {"floats", picture.areFloats},
            {"palette_size", picture.paletteSize},
            {"pages", picture.numPages},
            {"page", picture.page},
            {"resolution", {picture.resolutionX, picture.resolutionY}},
            {"orientation", picture.orientation},
            {"oriented", picture.isOriented},
            {"profile_bytes", picture.profileByteSize}};
}

void PrintPicture(PictureDesc const &picture)
{
    std::cout << "    Stored as....: " << GetColoursName(picture.colours);
    if (picture.paletteSize > 0)
        std::cout << " of " << picture.paletteSize;
    std::cout << (picture.hasAlpha ? " with alpha, " : ", ") << picture.bits << " bits"
              << (picture.areFloats ? ", floating-point" : "") << '\n';
    if (picture.numPages > 1)
        std::cout << "    Page.........: " << picture.page << " of " << picture.numPages << ", counted from 0\n";
    if (picture.resolutionX > 0 && picture.resolutionY > 0)
        std::cout << "    Resolution...: " << picture.resolutionX << " x " << picture.resolutionY
                  << " pixels per inch\n";
    if (picture.orientation != 1)
        std::cout << "    Orientation..: " << picture.orientation << (picture.isOriented ? ", obeyed" : ", left alone")
                  << '\n';
    if (picture.profileByteSize > 0)
        std::cout << "    Profile bytes: " << picture.profileByteSize << '\n';
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
    if (desc.picture)
        object["picture"] = DescribePicture(*desc.picture);
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
    if (desc.picture)
        PrintPicture(*desc.picture);
}

/// Returns the name of a kind of failure, as docs/qmdp-verify.schema.json lists them.
char const *GetFailureName(eCodecFailure kind)
{
    switch (kind)
    {
    case eCodecFailure::e_otherFormat:
        return "other_format";
    case eCodecFailure::e_notFound:
        return "not_found";
    case eCodecFailure::e_noPermission:
        return "no_permission";
    case eCodecFailure::e_notAFile:
        return "not_a_file";
    case eCodecFailure::e_unsupported:
        return "unsupported";
    case eCodecFailure::e_damaged:
        return "damaged";
    case eCodecFailure::e_tooLarge:
        return "too_large";
    case eCodecFailure::e_noMemory:
        return "no_memory";
    default:
        return "system";
    }
}

void PrintVerified(string const &fileName, CodecFailure const &failure)
{
    nlohmann::ordered_json object = {{"file", fileName}, {"ok", !failure}};
    if (failure)
    {
        object["failure"] = GetFailureName(failure.kind);
        object["message"] = failure.text;
    }
    if (failure.byte)
    {
        object["byte"] = *failure.byte;
        object["field"] = failure.field;
    }
    PrintObject(object);
}

void VerifyFile(Arguments const &arguments, string const &fileName)
{
    Progress progress;
    progress.Begin("Reading");
    AutoPtr<DataFile> const file = OpenToInspect(arguments, {fileName, {}});
    file->Verify([&](std::uint64_t done) { progress.Update(done, file->GetDesc().package->byteSize, nullptr); });
}

} // namespace

bool Info(Arguments const &arguments)
{
    return ForEachFile(arguments,
                       [&](string const &fileName)
                       {
                           DataFileDesc const desc = OpenToInspect(arguments, {fileName, {}})->GetDesc();
                           arguments.json ? PrintJSON(fileName, desc) : Print(fileName, desc);
                       });
}

bool Verify(Arguments const &arguments)
{
    auto const verify = [&](string const &fileName)
    {
        CodecFailure failure;
        try
        {
            VerifyFile(arguments, fileName);
        }
        catch (DataException const &thrown)
        {
            failure = thrown.GetFailure();
            if (!arguments.json || !failure)
                throw;
        }
        if (arguments.json)
            PrintVerified(fileName, failure);
        else
            std::cout << MakeShown(fileName) << ": ok\n";
        return !failure;
    };
    bool areGood = true;
    bool const areKnown = ForEachFile(
        arguments, [&](string const &fileName) { areGood = verify(fileName) && areGood; }, &PrintLine);
    return areGood && areKnown;
}

} // namespace quillmarsh::tools
