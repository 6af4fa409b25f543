// Payload of a package: the fixed part in front of the samples, and the samples in the order of the file.
#ifndef QUILLMARSH_SOURCE_DATAOBJECTS_PACKAGES_PACKAGEPAYLOAD_H
#define QUILLMARSH_SOURCE_DATAOBJECTS_PACKAGES_PACKAGEPAYLOAD_H

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/dataobjects/signalbase.h>

#include "source/dataobjects/packages/packagefields.h"

namespace quillmarsh
{

/// @name Flags of the fixed part
/// @{
inline constexpr unsigned int s_rowsLastFirst = 2;
inline constexpr unsigned int s_layersLastFirst = 4;
/// @}

/// Fixed part of a payload.
struct PayloadDesc
{
    unsigned int numDimensions; ///< 1 signal, 2 image, 3 volume
    unsigned int dimensions[3]; ///< layers, rows, columns; those that there are, from the first place on
    unsigned int format;
    unsigned int flags;
};

/// The payload. Throws SerializationException "Payload not ready." when there is none.
template<typename Container>
Container const &RequirePayload(Serializable const &package, Container const *payload)
{
    if (!payload)
        QUILLMARSH_THROW(SerializationException, PackageMessage(package, "Payload not ready."));
    return *payload;
}

/// Size of the payload on the stream.
unsigned int QueryPayload(Serializable const &package, SignalBase const *payload, unsigned int numDimensions);

/// Writes fixed part and samples, last row or layer first as the flags say.
void WritePayload(Serializable const &package, ostream &out, SignalBase const &payload, PayloadDesc const &desc);

/// Reads the fixed part, and checks it: each number by itself, all of them against the size of the payload, and that
/// against what the stream still holds. `allowedFlags` are the bits that may be set.
PayloadDesc ReadPayloadDesc(Serializable const &package, istream &in, unsigned int numDimensions,
                            unsigned int allowedFlags, unsigned int payloadByteSize);

/// Fills a container of the dimensions in `desc`, from its last row or layer on where `lastFirst` has the flag.
void ReadSamples(Serializable const &package, istream &in, SignalBase &payload, PayloadDesc const &desc,
                 unsigned int lastFirst);

} // namespace quillmarsh

#endif
