#include <quillmarsh/dataobjects/sampleformats.h>

#include <quillmarsh/basetools/texttools.h>

namespace quillmarsh::sample_formats
{
namespace
{

struct NamedFormat
{
    eSampleFormat format;
    char const *name;
};

// The float formats are omitted on purpose: no file and no command names them.
constexpr NamedFormat s_namedFormats[] = {
    {e_format_L8, "L8"},
    {e_format_A8, "A8"},
    {e_format_A8L8, "A8L8"},
    {e_format_A4R4G4B4, "A4R4G4B4"},
    {e_format_A1R5G5B5, "A1R5G5B5"},
    {e_format_X8R8G8B8, "X8R8G8B8"},
    {e_format_A8R8G8B8, "A8R8G8B8"},
};

} // namespace

string MapSampleFormatToName(unsigned int format)
{
    for (NamedFormat const &named : s_namedFormats)
    {
        if (named.format == format)
            return named.name;
    }
    return "unknown";
}

eSampleFormat MapNameToSampleFormat(string const &name)
{
    string upper = name;
    UpperCase(upper);
    for (NamedFormat const &named : s_namedFormats)
    {
        if (upper == named.name)
            return named.format;
    }
    return e_format_none;
}

} // namespace quillmarsh::sample_formats
