// Image memory that cases, limits and peers share, so that only the work differs and not the pages.
#ifndef QUILLMARSH_BENCHMARKS_SUPPORT_IMAGE_BLOCKS_H
#define QUILLMARSH_BENCHMARKS_SUPPORT_IMAGE_BLOCKS_H

#include <quillmarsh/dataobjects/imagebase.h>

#include <string>

namespace quillmarsh::benchmarks
{

/// Sides of the square images in cases with samples.
constexpr unsigned int s_imageSides[] = {256, 1024, 4096};

/// Returns block 0, for writing, or block 1, for reading. Each has 96 MiB of random floats in 0..1, in pages of its
/// own.
unsigned char *GetImageBlock(unsigned int index);

/// Makes the name of a case from its group, its operation, and the side of the images.
inline std::string NameOfCase(char const *group, char const *work, unsigned int side)
{
    std::string name(group);
    name.append("/").append(work).append("/").append(std::to_string(side));
    return name;
}

/// A square image in one of the blocks.
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
