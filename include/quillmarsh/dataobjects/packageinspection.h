// What a package says of itself, and where it is wrong, without its samples being loaded.
#ifndef QUILLMARSH_DATAOBJECTS_PACKAGEINSPECTION_H
#define QUILLMARSH_DATAOBJECTS_PACKAGEINSPECTION_H

#include <quillmarsh/dataobjects/sampleddata.h>

#include <cstdint>
#include <functional>

namespace quillmarsh::sampled_data
{

/// Fields of a package.
struct PackageDesc
{
    bool bigEndian = false;
    unsigned int id = 0;
    unsigned int payloadByteSize = 0;
    Dimensions dimensions;
    unsigned int format = 0;
    unsigned int flags = 0;
    /// Where the samples begin, and where the trailer ends.
    std::uint64_t samplesOffset = 0;
    std::uint64_t byteSize = 0;
};

/// Reads all fields of a package from the start of a stream of `streamSize` bytes, and skips the samples. Throws a
/// DataException "byte N: FIELD: what is wrong" for the first field that is wrong or cut off.
QUILLMARSH_API PackageDesc InspectPackage(istream &in, std::uint64_t streamSize);

/// Reads the samples of an inspected package from the stream, keeps none, and tells how many bytes it has read. Throws
/// as InspectPackage where the stream fails; what lies behind the trailer is wrong here.
QUILLMARSH_API void ReadWholePackage(istream &in, std::uint64_t streamSize, PackageDesc const &desc,
                                     std::function<void(std::uint64_t)> const &onRead);

} // namespace quillmarsh::sampled_data

#endif
