// Payload of a package: the fixed part before the samples, and the samples in the order of the file.
#ifndef QUILLMARSH_SOURCE_DATAOBJECTS_PACKAGES_PACKAGEPAYLOAD_H
#define QUILLMARSH_SOURCE_DATAOBJECTS_PACKAGES_PACKAGEPAYLOAD_H

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/dataobjects/signalbase.h>

#include "source/dataobjects/packages/packagefields.h"

#include <istream>
#include <streambuf>
#include <vector>

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
    unsigned int dimensions[3]; ///< layers, rows, columns, without those that the kind of data lacks
    unsigned int format;
    unsigned int flags;
    bool isKnownToBeThere = false; ///< true when the stream is known to contain all samples
};

/// Returns the payload. Throws SerializationException "Payload not ready." when there is none.
template<typename Container>
Container const &RequirePayload(Serializable const &package, Container const *payload)
{
    if (!payload)
        QUILLMARSH_THROW(SerializationException, PackageMessage(package, "Payload not ready."));
    return *payload;
}

/// Returns the size of the payload on the stream, in bytes.
unsigned int QueryPayload(Serializable const &package, SignalBase const *payload, unsigned int numDimensions);

/// Writes the fixed part and the samples. The flags decide if the last row or layer comes first.
void WritePayload(Serializable const &package, ostream &out, SignalBase const &payload, PayloadDesc const &desc);

/// Reads the fixed part, and checks each number by itself, all of them against the size of the payload, and that size
/// against the rest of the stream. `allowedFlags` are the bits that may be set.
PayloadDesc ReadPayloadDesc(Serializable const &package, istream &in, unsigned int numDimensions,
                            unsigned int allowedFlags, unsigned int payloadByteSize);

/// The stream to read samples from. Create it before the container is allocated.
///
/// Usually it is the stream of the package. If the length of that stream is unknown, and there are many samples, they
/// are read first in steps, so that a short stream never costs the memory that its header claims.
class SampleSource : NoCopy
{
public:
    /// Reads the samples first where that is necessary. Throws `std::ios_base::failure` when the stream ends before
    /// them.
    SampleSource(Serializable const &package, istream &in, PayloadDesc const &desc);

    istream &GetStream() { return bytes_.empty() ? in_ : memory_; }

private:
    struct Buffer : std::streambuf
    {
        void Show(std::vector<char> &bytes) { setg(bytes.data(), bytes.data(), bytes.data() + bytes.size()); }
    };

    istream &in_;
    std::vector<char> bytes_;
    Buffer buffer_;
    istream memory_{&buffer_};
};

/// Fills a container of the dimensions in `desc`. Starts with its last row or layer if `lastFirst` has the flag.
void ReadSamples(Serializable const &package, istream &in, SignalBase &payload, PayloadDesc const &desc,
                 unsigned int lastFirst);

} // namespace quillmarsh

#endif
