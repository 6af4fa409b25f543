#include "source/platform/imagefiles.h"

#include <limits>
#include <string>

namespace quillmarsh::platform
{

bool ImageFileReader::SetSize(std::uint64_t numRows, std::uint64_t numColumns, bool hasAlpha)
{
    constexpr std::uint64_t largest = std::numeric_limits<int>::max();
    if (numRows == 0 || numColumns == 0 || numRows > largest || numColumns > largest / 4)
        return Fail(eImageFailure::e_unsupported,
                    "a picture of " + std::to_string(numRows) + " rows of " + std::to_string(numColumns) + " pixels");
    numRows_ = static_cast<unsigned int>(numRows);
    numColumns_ = static_cast<unsigned int>(numColumns);
    hasAlpha_ = hasAlpha;
    return true;
}

bool ImageFileReader::ReadLuminance(float *)
{
    return Fail(eImageFailure::e_unsupported, "luminance of more than eight bits is not supported");
}

bool ImageFileReader::FailPage(unsigned int page)
{
    string const numPages = std::to_string(facts_.numPages);
    return Fail(eImageFailure::e_unsupported, "has no page " + std::to_string(page) + ", but " + numPages +
                                                  (facts_.numPages == 1 ? " page" : " pages") + ", counted from 0");
}

bool ImageFileReader::Fail(eImageFailure kind, string const &text)
{
    if (failure_.kind == eImageFailure::e_none)
        failure_ = {kind, text};
    return false;
}

bool ImageFileReader::FailImplausible()
{
    return Fail(eImageFailure::e_damaged, "claims to be larger than its file can hold");
}

} // namespace quillmarsh::platform
