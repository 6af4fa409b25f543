#include <quillmarsh/dataobjects/datapackage.h>

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/basetools/serializer.h>
#include <quillmarsh/basetools/streamsentries.h>
#include <quillmarsh/dataobjects/codecfailure.h>
#include <quillmarsh/dataobjects/inputfile.h>

#include "source/dataobjects/codecs/openfailures.h"
#include "source/dataobjects/packages/packagefields.h"
#include "source/dataobjects/packages/packagefiles.h"

#include <cerrno>
#include <fstream>
#include <iterator>
#include <string_view>

namespace quillmarsh
{
namespace
{

using serializer_parameters::InputStreamByteOrderSentry;
using serializer_parameters::OutputStreamByteOrderSentry;
using std::ios_base;

constexpr std::string_view s_headerOpening = "<QuillMarshDataPackage//";
constexpr std::string_view s_headerClosing = "///>";
constexpr std::string_view s_trailerOpening = "<///";
constexpr std::string_view s_trailerClosing = "//QuillMarshDataPackage>";

// The same in both byte orders.
constexpr unsigned int s_bigEndian = 0xFFFFFFFF;
constexpr unsigned int s_littleEndian = 0;

constexpr short s_anyFailure = static_cast<short>(ios_base::failbit | ios_base::badbit | ios_base::eofbit);

void WriteMagic(ostream &out, std::string_view magic)
{
    WriteByteBlock(out, magic.data(), static_cast<unsigned int>(magic.size()));
}

bool ReadMagic(istream &in, std::string_view magic)
{
    char read[s_headerOpening.size()] = {};
    ReadByteBlock(in, read, static_cast<unsigned int>(magic.size()));
    return std::string_view(read, magic.size()) == magic;
}

void ReadOpeningMagic(Serializable const &object, istream &in, std::string_view magic)
{
    bool found = false;
    ReadField(object, "opening magic-sequence", [&] { found = ReadMagic(in, magic); });
    if (!found)
        QUILLMARSH_THROW(DeserializationException, PackageMessage(object, "Invalid opening magic-sequence."));
}

void ReadClosingMagic(Serializable const &object, istream &in, std::string_view magic)
{
    bool found = false;
    ReadField(object, "closing magic-sequence", [&] { found = ReadMagic(in, magic); });
    if (!found)
        QUILLMARSH_THROW(DeserializationException, PackageMessage(object, "Invalid closing magic-sequence."));
}

void ReadNumber(Serializable const &object, istream &in, char const *field, unsigned int &value)
{
    ReadField(object, field, [&] { in >= value; });
}

/// Returns the size of a payload in bytes, which is less than 4 GiB.
unsigned int Distance(std::streampos begin, std::streampos end)
{
    return static_cast<unsigned int>(end - begin);
}

constexpr char const *s_payloadNames[] = {"nothing known", "a signal", "an image", "a volume"};

char const *NameOfPayload(unsigned int type)
{
    return s_payloadNames[type < std::size(s_payloadNames) ? type : 0];
}

/// Returns the failure for an exception. A failure that was told before the throw is more specific.
CodecFailure ChooseFailure(CodecFailureSentry const &told, CodecFailure const &thrown)
{
    return told.GetFailure() ? told.GetFailure() : thrown;
}

CodecFailure DescribeReadFailure(ios_base::failure const &failure)
{
    string text = failure.what();
    // The standard library adds a text without information.
    string const added = ": " + failure.code().message();
    if (text.ends_with(added))
        text.resize(text.size() - added.size());
    return {eCodecFailure::e_damaged, "is cut short, or cannot be read: " + text};
}

/// Runs an action. If it throws, tells the failure, and returns false or with `rethrow` throws the exception again.
template<typename Action>
bool Succeeds(bool rethrow, Action const &action)
{
    CodecFailure failure;
    try
    {
        CodecFailureSentry const told;
        try
        {
            action();
            return true;
        }
        catch (ios_base::failure const &thrown)
        {
            failure = ChooseFailure(told, DescribeReadFailure(thrown));
            throw;
        }
        catch (NoMemoryException const &thrown)
        {
            failure = DescribeNoMemory(thrown.GetMessage());
            throw;
        }
        catch (Exception const &thrown)
        {
            failure = ChooseFailure(told, {eCodecFailure::e_damaged, thrown.GetMessage()});
            throw;
        }
    }
    catch (ios_base::failure const &)
    {
        Tell(failure);
        if (rethrow)
            throw;
    }
    catch (Exception const &)
    {
        Tell(failure);
        if (rethrow)
            throw;
    }
    return false;
}

/// Writes the package to the file of a replacement. Throws as DataPackage::SaveToFile.
void WriteTo(DataPackage const &package, string const &fileName, FileReplacement &replacement)
{
    std::ofstream file;
    errno = 0;
    // Opening an empty path would replace the reason why it is empty.
    if (!replacement.GetPath().empty())
    {
        file.open(replacement.GetPath(), ios_base::out | ios_base::trunc | ios_base::binary);
        if (!file.is_open())
            Tell(DescribeOpenFailure());
    }
    if (!file.is_open())
        QUILLMARSH_THROW(SerializationException, "Cannot open file: " + fileName);
    try
    {
        package.Serialize(file);
        // The last bytes are written only here.
        file.exceptions(ios_base::failbit | ios_base::badbit);
        file.close();
    }
    catch (ios_base::failure const &failure)
    {
        Tell(DescribeWriteFailure());
        throw ios_base::failure("Cannot write file: " + fileName, failure.code());
    }
    if (!replacement.Commit())
        throw ios_base::failure("Cannot write file: " + fileName);
}

} // namespace

DataPackageHeader::DataPackageHeader() = default;

void DataPackageHeader::Serialize(ostream &out) const
{
    OutputStreamByteOrderSentry const order(packageByteOrderBigEndian_);
    WriteMagic(out, s_headerOpening);
    out <= (packageByteOrderBigEndian_ ? s_bigEndian : s_littleEndian);
    out <= packageID_;
    out <= payloadByteSize_;
    out <= payloadType_;
    WriteMagic(out, s_headerClosing);
}

void DataPackageHeader::Deserialize(istream &in)
{
    // The reason if the sequence is missing.
    TellCodecFailure(eCodecFailure::e_otherFormat, "not a data package");
    ReadOpeningMagic(*this, in, s_headerOpening);
    TellCodecFailure(eCodecFailure::e_none, "");
    unsigned int specifier = 1; // neither of the two, for a stream that ends and does not throw
    ReadNumber(*this, in, "byte-order specifier", specifier);
    if (specifier != s_bigEndian && specifier != s_littleEndian)
        QUILLMARSH_THROW(DeserializationException, PackageMessage(*this, "Invalid byte-order specifier."));
    packageByteOrderBigEndian_ = specifier == s_bigEndian;

    InputStreamByteOrderSentry const order(packageByteOrderBigEndian_);
    ReadNumber(*this, in, "package id", packageID_);
    ReadNumber(*this, in, "payload byte-size", payloadByteSize_);
    ReadNumber(*this, in, "payload type", payloadType_);
    ReadClosingMagic(*this, in, s_headerClosing);
}

DataPackageTrailer::DataPackageTrailer() = default;

void DataPackageTrailer::Serialize(ostream &out) const
{
    OutputStreamByteOrderSentry const order(packageByteOrderBigEndian_);
    WriteMagic(out, s_trailerOpening);
    out <= packageID_;
    WriteMagic(out, s_trailerClosing);
}

void DataPackageTrailer::Deserialize(istream &in)
{
    InputStreamByteOrderSentry const order(packageByteOrderBigEndian_);
    ReadOpeningMagic(*this, in, s_trailerOpening);
    ReadNumber(*this, in, "package id", packageID_);
    ReadClosingMagic(*this, in, s_trailerClosing);
}

DataPackage::DataPackage(unsigned int payloadType) : payloadType_(payloadType) {}

void DataPackage::SetSkipHeaderOnRead(bool skip, DataPackageHeader const *header)
{
    QUILLMARSH_ASSERT(skip == (header != nullptr), "Invalid argument.");
    skipHeaderOnRead_ = skip;
    skipHeader_ = header;
}

void DataPackage::Serialize(ostream &out) const
{
    StreamExceptionSentry const exceptions(out, s_anyFailure);
    OutputStreamByteOrderSentry const order(packageByteOrderOnWrite_);
    unsigned int byteSize = 0;
    QueryPayloadByteSize(byteSize);

    DataPackageHeader header;
    header.SetPackageByteOrder(packageByteOrderOnWrite_);
    header.SetPackageID(packageID_);
    header.SetPayloadByteSize(byteSize);
    header.SetPayloadType(payloadType_);
    header.Serialize(out);

    std::streampos const begin = out.tellp();
    SerializePayload(out);
    if (Distance(begin, out.tellp()) != byteSize)
        QUILLMARSH_THROW(SerializationException, PackageMessage(*this, "Payload byte-size mismatch."));

    DataPackageTrailer trailer;
    trailer.SetPackageByteOrder(packageByteOrderOnWrite_);
    trailer.SetPackageID(packageID_);
    trailer.Serialize(out);
}

void DataPackage::Deserialize(istream &in)
{
    StreamExceptionSentry const exceptions(in, s_anyFailure);
    DataPackageHeader header;
    if (skipHeaderOnRead_ && skipHeader_)
        header = *skipHeader_;
    else
        header.Deserialize(in);

    InputStreamByteOrderSentry const order(header.IsPackageByteOrderBigEndian());
    if (header.GetPayloadType() != payloadType_)
    {
        TellCodecFailure(eCodecFailure::e_unsupported, string("the package holds ") +
                                                           NameOfPayload(header.GetPayloadType()) + ", not " +
                                                           NameOfPayload(payloadType_));
        QUILLMARSH_THROW(DeserializationException, PackageMessage(*this, "Payload-type mismatch."));
    }
    packageID_ = header.GetPackageID();

    std::streampos const begin = in.tellg();
    DeserializePayload(in, header.GetPayloadByteSize());
    if (Distance(begin, in.tellg()) != header.GetPayloadByteSize())
        QUILLMARSH_THROW(DeserializationException, PackageMessage(*this, "Payload byte-size mismatch."));

    DataPackageTrailer trailer;
    trailer.SetPackageByteOrder(header.IsPackageByteOrderBigEndian());
    trailer.Deserialize(in);
    if (trailer.GetPackageID() != packageID_)
        QUILLMARSH_THROW(DeserializationException, PackageMessage(*this, "Package-id mismatch."));
}

bool DataPackage::SaveToFile(string const &fileName, bool rethrow)
{
    return Succeeds(rethrow,
                    [&]
                    {
                        if (CodecFailure const obstacle = FindWritingObstacle(fileName, true))
                        {
                            Tell(obstacle);
                            QUILLMARSH_THROW(SerializationException, "Cannot open file: " + fileName);
                        }
                        FileReplacement replacement(fileName, true);
                        WriteTo(*this, fileName, replacement);
                    });
}

bool DataPackage::LoadFromFile(string const &fileName, bool rethrow)
{
    return Succeeds(rethrow,
                    [&]
                    {
                        AutoPtr<sampled_data::InputFile> const file = OpenInputFile(fileName);
                        if (!file)
                            QUILLMARSH_THROW(DeserializationException, "Cannot open file: " + fileName);
                        Deserialize(file->GetStream());
                    });
}

bool WritePackageFile(DataPackage const &package, string const &fileName, FileReplacement &replacement)
{
    return Succeeds(false, [&] { WriteTo(package, fileName, replacement); });
}

bool ReadPackageFile(DataPackage &package, istream &in)
{
    return Succeeds(false, [&] { package.Deserialize(in); });
}

} // namespace quillmarsh
