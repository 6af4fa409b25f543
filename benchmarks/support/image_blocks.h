// Memory of images that cases, their limits and their peers share: what differs is the work, not the pages.
#ifndef QUILLMARSH_BENCHMARKS_SUPPORT_IMAGE_BLOCKS_H
#define QUILLMARSH_BENCHMARKS_SUPPORT_IMAGE_BLOCKS_H

#include <quillmarsh/dataobjects/imagebase.h>

#include <string>

namespace quillmarsh::benchmarks
{

/// Sides of the square images that work on samples is measured with.
constexpr unsigned int s_imageSides[] = {256, 1024, 4096};

/// Block 0, which is written to, or 1, which is read. Each has 96 MiB of random floats in 0..1, and pages of its own.
unsigned char *GetImageBlock(unsigned int index);

/// Name of a case: its group, what is done, and the side of the images.
inline std::string NameOfCase(char const *group, char const *work, unsigned int side)
{
    std::string name(group);
    name.append("/").append(work).append("/").append(std::to_string(side));
    return name;
}

/// Square image in one of the blocks.
class BlockImage : public ImageBaseFromExternalStorageAdapter
{
public:
    BlockImage(eSampleFormat format, unsigned int side, unsigned int block)
        : SignalBase(sample_formats::ExtractByteSize(format)),
          ImageBaseFromExternalStorageAdapter(format)
    {
        SetExternalStorage(GetImageBlock(block), side, side);
    }
};

} // namespace quillmarsh::benchmarks

#endif
