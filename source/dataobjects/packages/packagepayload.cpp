#include "source/dataobjects/packages/packagepayload.h"

#include <quillmarsh/basetools/serializer.h>

#include "source/dataobjects/containers/checkedsize.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <ostream>

namespace quillmarsh
{
namespace
{

constexpr char const *s_dimensionNames[] = {"number of layers", "number of rows", "number of columns"};

char const *NameOfDimension(PayloadDesc const &desc, unsigned int index)
{
    return desc.numDimensions == 1 ? "number of samples" : s_dimensionNames[3 - desc.numDimensions + index];
}

/// The dimensions, format, flags, and a reserved number.
unsigned int FixedByteSize(unsigned int numDimensions)
{
    return (numDimensions + 3) * 4;
}

std::uint64_t SamplesByteSize(PayloadDesc const &desc)
{
    std::uint64_t byteSize = sample_formats::ExtractByteSize(desc.format);
    for (unsigned int i = 0; i < desc.numDimensions; ++i)
        byteSize = SaturatingProduct({byteSize, desc.dimensions[i]});
    return byteSize;
}

bool IsCorrupted(PayloadDesc const &desc, unsigned int allowedFlags, unsigned int reserved)
{
    return SamplesByteSize(desc) == 0 || (desc.flags & ~allowedFlags) != 0 || reserved != 0;
}

bool HasSampleRecord(unsigned int format)
{
    AutoPtr<SignalBase> const empty(ManufactureSignal(static_cast<eSampleFormat>(format), 0));
    return empty != nullptr;
}

/// Returns the position of the stream; negative when it has none.
std::streamoff FindPosition(istream &in)
{
    return in.rdbuf()->pubseekoff(0, std::ios_base::cur, std::ios_base::in);
}

/// Counts the bytes between a position and the end of the stream, which is at that position afterwards. Nothing for a
/// stream that cannot seek to its end and back.
std::optional<std::uint64_t> CountBytesLeft(istream &in, std::streamoff position)
{
    std::streambuf &buffer = *in.rdbuf();
    std::streamoff const end = buffer.pubseekoff(0, std::ios_base::end, std::ios_base::in);
    if (end < 0)
        return std::nullopt;
    // Some stream buffers seek by offset only.
    if (std::streamoff(buffer.pubseekpos(position, std::ios_base::in)) != position)
        buffer.pubseekoff(position, std::ios_base::beg, std::ios_base::in);
    return end < position ? 0 : static_cast<std::uint64_t>(end - position);
}

/// Calls `visit(index of the first sample, number of samples)` for each run of samples that are consecutive in file and
/// memory, in the order of the file.
template<typename Visit>
void VisitRuns(PayloadDesc const &desc, unsigned int lastFirst, Visit const &visit)
{
    unsigned int const *const last = desc.dimensions + desc.numDimensions - 1;
    unsigned int const numColumns = *last;
    unsigned int const numRows = desc.numDimensions > 1 ? last[-1] : 1;
    unsigned int const numLayers = desc.numDimensions > 2 ? last[-2] : 1;
    bool const turnsRows = numRows > 1 && (lastFirst & s_rowsLastFirst) != 0;
    bool const turnsLayers = numLayers > 1 && (lastFirst & s_layersLastFirst) != 0;
    if (!turnsRows && !turnsLayers)
        return visit(0u, numLayers * numRows * numColumns);

    unsigned int const runLength = turnsRows ? numColumns : numRows * numColumns;
    unsigned int const runsPerLayer = turnsRows ? numRows : 1;
    for (unsigned int i = 0; i < numLayers; ++i)
    {
        unsigned int const layer = turnsLayers ? numLayers - 1 - i : i;
        for (unsigned int j = 0; j < runsPerLayer; ++j)
            visit((layer * runsPerLayer + (runsPerLayer - 1 - j)) * runLength, runLength);
    }
}

} // namespace

unsigned int QueryPayload(Serializable const &package, SignalBase const *payload, unsigned int numDimensions)
{
    unsigned int const fixed = FixedByteSize(numDimensions);
    unsigned int const byteSize = RequirePayload(package, payload).GetTotalByteSize();
    if (byteSize > s_largestByteSize - fixed)
        QUILLMARSH_THROW(SerializationException, PackageMessage(package, "Payload byte-size mismatch."));
    return fixed + byteSize;
}

void WritePayload(Serializable const &package, ostream &out, SignalBase const &payload, PayloadDesc const &desc)
{
    if (payload.GetNumSamples() == 0 || sample_formats::ExtractByteSize(desc.format) == 0)
        QUILLMARSH_THROW(SerializationException, PackageMessage(package, "Payload not ready."));
    for (unsigned int i = 0; i < desc.numDimensions; ++i)
        out <= desc.dimensions[i];
    out <= desc.format;
    out <= desc.flags;
    out <= 0u;

    unsigned int const sampleByteSize = payload.GetSampleByteSize();
    VisitRuns(desc, desc.flags,
              [&](unsigned int first, unsigned int numSamples) {
                  WriteByteBlocks(out, payload.GetSamplesB() + std::size_t{first} * sampleByteSize, sampleByteSize,
                                  numSamples);
              });
}

PayloadDesc ReadPayloadDesc(Serializable const &package, istream &in, unsigned int numDimensions,
                            unsigned int allowedFlags, unsigned int payloadByteSize)
{
    PayloadDesc desc = {numDimensions, {}, 0, 0};
    unsigned int reserved = 0;
    for (unsigned int i = 0; i < numDimensions; ++i)
        ReadField(package, NameOfDimension(desc, i), [&] { in >= desc.dimensions[i]; });
    ReadField(package, "sample format", [&] { in >= desc.format; });
    ReadField(package, "flags", [&] { in >= desc.flags; });
    ReadField(package, "reserved field", [&] { in >= reserved; });

    if (IsCorrupted(desc, allowedFlags, reserved))
        QUILLMARSH_THROW(DeserializationException, PackageMessage(package, "Corrupted field."));
    if (!HasSampleRecord(desc.format))
        QUILLMARSH_THROW(DeserializationException, PackageMessage(package, "Unsupported sample-byte-size."));
    std::uint64_t const byteSize = SamplesByteSize(desc);
    std::streamoff const position = FindPosition(in);
    // Without a position, the sizes cannot be compared.
    if (byteSize > payloadByteSize || byteSize + FixedByteSize(numDimensions) != payloadByteSize || position < 0)
        QUILLMARSH_THROW(DeserializationException, PackageMessage(package, "Payload byte-size mismatch."));
    std::optional<std::uint64_t> const bytesLeft = CountBytesLeft(in, position);
    desc.isKnownToBeThere = bytesLeft.has_value();
    if (bytesLeft && *bytesLeft < byteSize)
        ReadField(package, "samples", [&] { in.setstate(std::ios_base::failbit | std::ios_base::eofbit); });
    return desc;
}

SampleSource::SampleSource(Serializable const &package, istream &in, PayloadDesc const &desc) : in_(in)
{
    constexpr std::uint64_t step = std::uint64_t{16} << 20;
    std::uint64_t const byteSize = SamplesByteSize(desc);
    if (desc.isKnownToBeThere || byteSize <= step)
        return;
    ReadField(package, "samples",
              [&]
              {
                  while (bytes_.size() < byteSize)
                  {
                      std::size_t const before = bytes_.size();
                      bytes_.resize(static_cast<std::size_t>(std::min(before + step, byteSize)));
                      ReadByteBlock(in, bytes_.data() + before, static_cast<unsigned int>(bytes_.size() - before));
                  }
              });
    buffer_.Show(bytes_);
}

void ReadSamples(Serializable const &package, istream &in, SignalBase &payload, PayloadDesc const &desc,
                 unsigned int lastFirst)
{
    unsigned int const sampleByteSize = payload.GetSampleByteSize();
    ReadField(package, "samples",
              [&]
              {
                  VisitRuns(desc, lastFirst,
                            [&](unsigned int first, unsigned int numSamples) {
                                ReadByteBlock(in, payload.GetSamplesB() + std::size_t{first} * sampleByteSize,
                                              numSamples * sampleByteSize);
                            });
              });
}

} // namespace quillmarsh
