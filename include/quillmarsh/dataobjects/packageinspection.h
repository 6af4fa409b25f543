// Reads the fields of a package and finds its faults, without loading its samples.
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
    /// Offset of the samples, and number of bytes up to the end of the trailer.
    std::uint64_t samplesOffset = 0;
    std::uint64_t byteSize = 0;
};

/// Reads all fields of a package from the start of a stream of `streamSize` bytes, and skips the samples. Throws a
/// DataException "byte N: FIELD: FAULT" for the first field that is wrong or cut off.
QUILLMARSH_API PackageDesc InspectPackage(istream &in, std::uint64_t streamSize);

/// Reads the samples of an inspected package without keeping them, and calls `onRead` with the number of bytes read so
/// far. Throws as InspectPackage does when the stream fails, and when bytes follow the trailer.
QUILLMARSH_API void ReadWholePackage(istream &in, std::uint64_t streamSize, PackageDesc const &desc,
                                     std::function<void(std::uint64_t)> const &onRead);

} // namespace quillmarsh::sampled_data

#endif
