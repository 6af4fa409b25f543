#include <quillmarsh/dataobjects/packageinspection.h>

#include <quillmarsh/basetools/serializer.h>
#include <quillmarsh/basetools/serializer_parameters.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/dataobjects/datapackage.h>

#include "source/dataobjects/packages/packagefault.h"

#include <algorithm>
#include <istream>
#include <limits>
#include <sstream>

namespace quillmarsh::sampled_data
{
namespace
{

using serializer_parameters::InputStreamByteOrderSentry;

constexpr unsigned int s_openingSize = 24;
constexpr unsigned int s_closingSize = 4;
constexpr unsigned int s_payloadSizeOffset = 32;
constexpr unsigned int s_allowedFlags[] = {0, 2, 6};
constexpr char const *s_dimensionFields[] = {"number of layers", "number of rows", "number of columns"};

/// Returns the bytes of a value in a package.
string BytesOf(Serializable const &object)
{
    std::ostringstream bytes;
    object.Serialize(bytes);
    return bytes.str();
}

/// Reads fields one after the other, and names the wrong one.
class FieldReader
{
public:
    FieldReader(istream &in, std::uint64_t streamSize) : in_(in), streamSize_(streamSize) {}

    unsigned int ReadNumber(string const &field)
    {
        BeginField(field, sizeof(unsigned int));
        unsigned int value = 0;
        in_ >= value;
        EndField();
        return value;
    }

    void ReadMagic(string const &field, string const &magic)
    {
        auto const numBytes = static_cast<std::size_t>(std::min<std::uint64_t>(magic.size(), streamSize_ - offset_));
        string read(magic.size(), '\0');
        in_.read(read.data(), static_cast<std::streamsize>(numBytes));
        // A wrong byte before the end of the file comes first: such a file is not merely cut off.
        if (read.compare(0, numBytes, magic, 0, numBytes) != 0)
            Fail(field, "not that of a package");
        BeginField(field, magic.size());
        EndField();
    }

    void SkipSamples(std::uint64_t numBytes)
    {
        BeginField("samples", numBytes);
        in_.seekg(static_cast<std::streamoff>(offset_));
        EndField();
    }

    /// Returns the offset of the field that was read last.
    std::uint64_t GetFieldOffset() const { return fieldOffset_; }
    /// Returns the offset after that field.
    std::uint64_t GetOffset() const { return offset_; }

    [[noreturn]] void Fail(string const &field, string const &what) const { FailAt(offset_, field, what); }
    [[noreturn]] static void FailAt(std::uint64_t offset, string const &field, string const &what)
    {
        throw PackageFault(offset, field, what);
    }

private:
    void BeginField(string const &field, std::uint64_t byteSize)
    {
        field_ = field;
        fieldOffset_ = offset_;
        if (streamSize_ - offset_ < byteSize)
            Fail(field,
                 "the file ends after " + MakeString(streamSize_ - offset_) + " of " + MakeString(byteSize) + " bytes");
        offset_ += byteSize;
    }

    void EndField() const
    {
        if (!in_)
            FailAt(fieldOffset_, field_, "cannot be read");
    }

    istream &in_;
    std::uint64_t streamSize_;
    std::uint64_t offset_ = 0;
    std::uint64_t fieldOffset_ = 0;
    string field_;
};

[[noreturn]] void FailLast(FieldReader const &reader, string const &field, string const &what)
{
    FieldReader::FailAt(reader.GetFieldOffset(), field, what);
}

void ReadByteOrder(FieldReader &reader, PackageDesc &desc)
{
    constexpr char field[] = "byte-order specifier";
    unsigned int const specifier = reader.ReadNumber(field);
    if (specifier != 0 && specifier != std::numeric_limits<unsigned int>::max())
        FailLast(reader, field, MakeString(specifier) + " stands for no byte order");
    desc.bigEndian = specifier != 0;
}

std::size_t ReadNumDimensions(FieldReader &reader)
{
    constexpr char field[] = "payload type";
    unsigned int const type = reader.ReadNumber(field);
    if (type < e_payload_signal || type > e_payload_volume)
        FailLast(reader, field, MakeString(type) + " stands for no payload");
    return type;
}

void ReadDimensions(FieldReader &reader, std::size_t numDimensions, PackageDesc &desc)
{
    for (std::size_t i = 0; i < numDimensions; ++i)
    {
        char const *const field = numDimensions == 1 ? "number of samples" : s_dimensionFields[3 - numDimensions + i];
        desc.dimensions.push_back(reader.ReadNumber(field));
        if (desc.dimensions.back() == 0)
            FailLast(reader, field, "0");
    }
}

void ReadFormat(FieldReader &reader, PackageDesc &desc)
{
    constexpr char field[] = "sample format";
    desc.format = reader.ReadNumber(field);
    AutoPtr<SignalBase> const empty(ManufactureSignal(static_cast<eSampleFormat>(desc.format), 0));
    if (!empty)
        FailLast(reader, field, "no samples of " + MakeString(sample_formats::ExtractByteSize(desc.format)) + " bytes");
}

void ReadFlags(FieldReader &reader, PackageDesc &desc)
{
    desc.flags = reader.ReadNumber("flags");
    if ((desc.flags & ~s_allowedFlags[desc.dimensions.size() - 1]) != 0)
        FailLast(reader, "flags", MakeString(desc.flags) + " has unknown bits");
    constexpr char field[] = "reserved field";
    unsigned int const reserved = reader.ReadNumber(field);
    if (reserved != 0)
        FailLast(reader, field, MakeString(reserved) + " instead of 0");
}

/// Returns the number of bytes of all samples; if it is too large for a package, a number that no package can have.
std::uint64_t CountSampleBytes(PackageDesc const &desc)
{
    constexpr std::uint64_t limit = std::uint64_t{1} << 32;
    std::uint64_t numBytes = sample_formats::ExtractByteSize(desc.format);
    for (unsigned int const dimension : desc.dimensions)
        numBytes = std::min(numBytes * dimension, limit);
    return numBytes;
}

void ReadTrailer(FieldReader &reader, PackageDesc const &desc)
{
    string const magic = BytesOf(DataPackageTrailer());
    reader.ReadMagic("opening magic-sequence of the trailer", magic.substr(0, s_closingSize));
    constexpr char field[] = "package id of the trailer";
    unsigned int const id = reader.ReadNumber(field);
    if (id != desc.id)
        FailLast(reader, field, MakeString(id) + " instead of " + MakeString(desc.id));
    reader.ReadMagic("closing magic-sequence of the trailer", magic.substr(magic.size() - s_openingSize));
}

} // namespace

PackageDesc InspectPackage(istream &in, std::uint64_t streamSize)
{
    PackageDesc desc;
    FieldReader reader(in, streamSize);
    string const magic = BytesOf(DataPackageHeader());
    reader.ReadMagic("opening magic-sequence", magic.substr(0, s_openingSize));
    ReadByteOrder(reader, desc);
    InputStreamByteOrderSentry const order(desc.bigEndian);
    desc.id = reader.ReadNumber("package id");
    desc.payloadByteSize = reader.ReadNumber("payload byte-size");
    std::size_t const numDimensions = ReadNumDimensions(reader);
    reader.ReadMagic("closing magic-sequence", magic.substr(magic.size() - s_closingSize));

    std::uint64_t const payloadOffset = reader.GetOffset();
    ReadDimensions(reader, numDimensions, desc);
    ReadFormat(reader, desc);
    ReadFlags(reader, desc);
    desc.samplesOffset = reader.GetOffset();
    std::uint64_t const numSampleBytes = CountSampleBytes(desc);
    std::uint64_t const payloadByteSize = desc.samplesOffset - payloadOffset + numSampleBytes;
    if (payloadByteSize != desc.payloadByteSize)
        FieldReader::FailAt(s_payloadSizeOffset, "payload byte-size",
                            MakeString(desc.payloadByteSize) + " does not fit " + Describe(desc.dimensions));
    reader.SkipSamples(numSampleBytes);
    ReadTrailer(reader, desc);
    desc.byteSize = reader.GetOffset();
    return desc;
}

void ReadWholePackage(istream &in, std::uint64_t streamSize, PackageDesc const &desc,
                      std::function<void(std::uint64_t)> const &onRead)
{
    std::vector<char> block(1 << 20);
    in.seekg(static_cast<std::streamoff>(desc.samplesOffset));
    for (std::uint64_t offset = desc.samplesOffset; offset < desc.byteSize; offset += block.size())
    {
        std::uint64_t const numBytes = std::min<std::uint64_t>(block.size(), desc.byteSize - offset);
        if (!in.read(block.data(), static_cast<std::streamsize>(numBytes)))
            FieldReader::FailAt(offset, "samples", "cannot be read");
        onRead(offset + numBytes);
    }
    if (desc.byteSize < streamSize)
        FieldReader::FailAt(desc.byteSize, "trailer", MakeString(streamSize - desc.byteSize) + " bytes lie behind it");
}

} // namespace quillmarsh::sampled_data
