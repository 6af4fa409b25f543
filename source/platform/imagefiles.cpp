#include "source/platform/imagefiles.h"

#include <limits>

namespace quillmarsh::platform
{

bool ImageFileReader::SetSize(std::uint64_t numRows, std::uint64_t numColumns, bool hasAlpha)
{
    constexpr std::uint64_t largest = std::numeric_limits<int>::max();
    if (numRows == 0 || numColumns == 0 || numRows > largest || numColumns > largest / 4)
        return false;
    numRows_ = static_cast<unsigned int>(numRows);
    numColumns_ = static_cast<unsigned int>(numColumns);
    hasAlpha_ = hasAlpha;
    return true;
}

} // namespace quillmarsh::platform
