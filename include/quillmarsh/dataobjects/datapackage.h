// Frame of the data package, the file format of signals, images and volumes: header, trailer, and what lies between.
#ifndef QUILLMARSH_DATAOBJECTS_DATAPACKAGE_H
#define QUILLMARSH_DATAOBJECTS_DATAPACKAGE_H

#include <quillmarsh/basetools/serializable.h>
#include <quillmarsh/basetools/serializer_parameters.h>
#include <quillmarsh/platform/types.h>

#include <utility>

namespace quillmarsh
{

/// What a package holds, as its header tells it.
enum eDataPackagePayload
{
    e_payload_signal = 1,
    e_payload_image = 2,
    e_payload_volume = 3
};

/// First 44 bytes of a package: a magic sequence, the byte order, id, size and type of the payload, and another magic
/// sequence.
///
/// A plain value; reading and writing set the byte order of serializer_parameters for the calling thread.
class QUILLMARSH_API DataPackageHeader : public Serializable
{
public:
    /// Bytes on the stream.
    static constexpr unsigned int s_byteSize = 44;

    DataPackageHeader();

    /// @name Fields
    /// The order is the machine's at first, and the numbers are 0.
    /// @{
    void SetPackageByteOrder(bool bigEndian) { packageByteOrderBigEndian_ = bigEndian; }
    bool IsPackageByteOrderBigEndian() const { return packageByteOrderBigEndian_; }
    void SetPackageID(unsigned int id) { packageID_ = id; }
    unsigned int GetPackageID() const { return packageID_; }
    void SetPayloadByteSize(unsigned int byteSize) { payloadByteSize_ = byteSize; }
    unsigned int GetPayloadByteSize() const { return payloadByteSize_; }
    void SetPayloadType(unsigned int type) { payloadType_ = type; }
    unsigned int GetPayloadType() const { return payloadType_; }
    /// @}

    /// Writes in the byte order of the field.
    void Serialize(ostream &out) const override;
    /// Takes over the byte order that stands in the header. Throws DeserializationException: "Invalid opening
    /// magic-sequence.", "Invalid byte-order specifier." or "Invalid closing magic-sequence.", behind the class name.
    void Deserialize(istream &in) override;

private:
    bool packageByteOrderBigEndian_ = serializer_parameters::IsMachineBigEndian();
    unsigned int packageID_ = 0;
    unsigned int payloadByteSize_ = 0;
    unsigned int payloadType_ = 0;
};

/// Last 32 bytes of a package: the id once more, between two magic sequences. As DataPackageHeader.
class QUILLMARSH_API DataPackageTrailer : public Serializable
{
public:
    /// Bytes on the stream.
    static constexpr unsigned int s_byteSize = 32;

    DataPackageTrailer();

    /// @name Fields
    /// The byte order does not stand in the trailer: whoever reads one sets it from the header before.
    /// @{
    void SetPackageByteOrder(bool bigEndian) { packageByteOrderBigEndian_ = bigEndian; }
    bool IsPackageByteOrderBigEndian() const { return packageByteOrderBigEndian_; }
    void SetPackageID(unsigned int id) { packageID_ = id; }
    unsigned int GetPackageID() const { return packageID_; }
    /// @}

    /// Writes in the byte order of the field.
    void Serialize(ostream &out) const override;
    /// Throws DeserializationException: "Invalid opening magic-sequence." or "Invalid closing magic-sequence.", behind
    /// the class name.
    void Deserialize(istream &in) override;

private:
    bool packageByteOrderBigEndian_ = serializer_parameters::IsMachineBigEndian();
    unsigned int packageID_ = 0;
};

/// A header, a payload and a trailer. Derived classes bring the payload.
///
/// The samples of a package in the machine's byte order come back exactly. In a package of the other order each whole
/// sample is reversed on writing and not on reading; samples of one byte have no order.
///
/// One thread at a time for each package; different packages may be written and read at a time.
class QUILLMARSH_API DataPackage : public Serializable, NoCopy
{
public:
    /// Byte order of the packages that are written; the machine's at first. Reading leaves it alone.
    void SetPackageByteOrderOnWrite(bool bigEndian) { packageByteOrderOnWrite_ = bigEndian; }

    /// @name Id, free for the user
    /// 0 at first; reading takes over that of the package.
    /// @{
    void SetPackageID(unsigned int id) { packageID_ = id; }
    unsigned int GetPackageID() const { return packageID_; }
    /// @}

    /// For a reader that has consumed the header, to see what the package holds: with `skip`, Deserialize takes the
    /// given header and reads none. The header is borrowed and lives until then. Asserts "Invalid argument." unless
    /// there is a header exactly when `skip` is set.
    void SetSkipHeaderOnRead(bool skip, DataPackageHeader const *header);

    /// Writes the package. Throws SerializationException ("Payload not ready.", "Payload byte-size mismatch.", behind
    /// the class name), and `std::ios_base::failure` when the stream fails.
    void Serialize(ostream &out) const override;
    /// Reads a package and replaces the payload by its own. Throws DeserializationException ("Payload-type mismatch.",
    /// "Payload byte-size mismatch.", "Package-id mismatch.", "Corrupted field.", "Unsupported sample-byte-size.",
    /// behind the class name, and the texts of header and trailer), and `std::ios_base::failure`, which names the
    /// field, when the stream ends early. There is no payload after a failure.
    ///
    /// Nothing is allocated for a payload that does not fit its own size, or that the stream does not hold where it can
    /// go to its end and back. A stream has to tell its position.
    void Deserialize(istream &in) override;

    /// Saves the package under a name. A file that is there keeps its contents until the new ones are complete.
    /// A symbolic link is followed; a pipe is no file. A failure is false, or with `rethrow` the exception: a
    /// SerializationException "Cannot open file: " with the name, or what Serialize throws. The reason is told (see
    /// CodecFailureSentry).
    bool SaveToFile(string const &fileName, bool rethrow);
    /// Loads a package from a plain file; whatever lies behind the trailer is ignored. A failure is false, or with
    /// `rethrow` the exception: a DeserializationException "Cannot open file: " with the name, or what Deserialize
    /// throws. The reason is told (see CodecFailureSentry).
    bool LoadFromFile(string const &fileName, bool rethrow);

protected:
    /// `payloadType` is what the header tells.
    explicit DataPackage(unsigned int payloadType);

    /// @name Hooks
    /// The stream throws on any failure, and the byte order is that of the package.
    /// @{

    /// Number of bytes that SerializePayload is going to write.
    virtual void QueryPayloadByteSize(unsigned int &byteSize) const = 0;
    virtual void SerializePayload(ostream &out) const = 0;
    /// Drops the payload, and reads `payloadByteSize` bytes into a new one.
    virtual void DeserializePayload(istream &in, unsigned int payloadByteSize) = 0;
    /// @}

private:
    bool packageByteOrderOnWrite_ = serializer_parameters::IsMachineBigEndian();
    unsigned int packageID_ = 0;
    unsigned int payloadType_;
    bool skipHeaderOnRead_ = false;
    DataPackageHeader const *skipHeader_ = nullptr;
};

/// Package around a container: SignalBase, ImageBase or VolumeBase. It borrows what it is to write, and owns what it
/// has read until somebody takes it.
template<typename Container>
class DataPackageOf : public DataPackage
{
public:
    /// Keeps a pointer to what is to be written; it must live until then, or until the next payload. Null for none.
    void SetPayload(Container const *payload)
    {
        if (payload == payload_)
            return;
        payload_ = const_cast<Container *>(payload);
        owned_.reset();
    }

    /// The payload; null when there is none. With `takeOwnership` the caller owns it from now on if the package did;
    /// the package still knows it.
    Container *GetPayload(bool takeOwnership)
    {
        if (takeOwnership)
            static_cast<void>(owned_.release());
        return payload_;
    }

    /// As DataPackage::Deserialize.
    void Deserialize(istream &in) override
    {
        try
        {
            DataPackage::Deserialize(in);
        }
        catch (...)
        {
            SetPayload(nullptr);
            throw;
        }
    }

protected:
    using DataPackage::DataPackage;

    Container const *GetPayload() const { return payload_; }
    /// Owns a payload that was read.
    void AdoptPayload(AutoPtr<Container> payload)
    {
        payload_ = payload.get();
        owned_ = std::move(payload);
    }

private:
    Container *payload_ = nullptr;
    AutoPtr<Container> owned_;
};

} // namespace quillmarsh

#endif
