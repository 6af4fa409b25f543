#include <quillmarsh/dataobjects/imagelimits.h>

#include <quillmarsh/basetools/texttools.h>

#include <atomic>

namespace quillmarsh::image_limits
{
namespace
{

constinit std::atomic<std::uint64_t> s_maxPixels{s_defaultMaxPixels};

} // namespace

void SetMaxPixels(std::uint64_t maxPixels)
{
    s_maxPixels.store(maxPixels, std::memory_order_relaxed);
}

std::uint64_t GetMaxPixels()
{
    return s_maxPixels.load(std::memory_order_relaxed);
}

string DescribeExcess(std::uint64_t numRows, std::uint64_t numColumns)
{
    return MakeString(numRows) + " rows of " + MakeString(numColumns) + " pixels are more than the limit of " +
           MakeString(GetMaxPixels()) + " pixels";
}

} // namespace quillmarsh::image_limits
