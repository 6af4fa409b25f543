// The data package, the file format of signals, images and volumes: header, payload and trailer.
#ifndef QUILLMARSH_DATAOBJECTS_DATAPACKAGE_H
#define QUILLMARSH_DATAOBJECTS_DATAPACKAGE_H

#include <quillmarsh/basetools/serializable.h>
#include <quillmarsh/basetools/serializer_parameters.h>
#include <quillmarsh/platform/types.h>

#include <utility>

namespace quillmarsh
{

/// Type of a package's payload in its header.
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

    /// Creates a header with the machine's byte order and numbers of 0.
    DataPackageHeader();

    /// @name Fields
    /// Plain values; the byte order decides how Serialize() writes.
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

    /// Writes the header in the byte order of the field.
    void Serialize(ostream &out) const override;
    /// Reads the header with its byte order. Throws DeserializationException: "Invalid opening magic-sequence.",
    /// "Invalid byte-order specifier." or "Invalid closing magic-sequence.", after the class name.
    void Deserialize(istream &in) override;

private:
    bool packageByteOrderBigEndian_ = serializer_parameters::IsMachineBigEndian();
    unsigned int packageID_ = 0;
    unsigned int payloadByteSize_ = 0;
    unsigned int payloadType_ = 0;
};

/// Last 32 bytes of a package: the id again, between two magic sequences. A plain value, like DataPackageHeader.
class QUILLMARSH_API DataPackageTrailer : public Serializable
{
public:
    /// Bytes on the stream.
    static constexpr unsigned int s_byteSize = 32;

    /// Creates a trailer with the machine's byte order and the id 0.
    DataPackageTrailer();

    /// @name Fields
    /// The trailer does not contain the byte order: set it from the header before reading.
    /// @{
    void SetPackageByteOrder(bool bigEndian) { packageByteOrderBigEndian_ = bigEndian; }
    bool IsPackageByteOrderBigEndian() const { return packageByteOrderBigEndian_; }
    void SetPackageID(unsigned int id) { packageID_ = id; }
    unsigned int GetPackageID() const { return packageID_; }
    /// @}

    /// Writes the trailer in the byte order of the field.
    void Serialize(ostream &out) const override;
    /// Reads the trailer in the byte order of the field. Throws DeserializationException: "Invalid opening
    /// magic-sequence." or "Invalid closing magic-sequence.", after the class name.
    void Deserialize(istream &in) override;

private:
    bool packageByteOrderBigEndian_ = serializer_parameters::IsMachineBigEndian();
    unsigned int packageID_ = 0;
};

/// A header, a payload and a trailer. Derived classes implement the payload.
///
/// Samples in the machine's byte order are read exactly as they were written. In the other byte order, each whole
/// sample is reversed when it is written, but not when it is read; samples of one byte do not change.
///
/// One thread at a time for each package. Several threads may use different packages at the same time.
class QUILLMARSH_API DataPackage : public Serializable, NoCopy
{
public:
    /// Sets the byte order of written packages; the machine's order at first. Reading does not change it.
    void SetPackageByteOrderOnWrite(bool bigEndian) { packageByteOrderOnWrite_ = bigEndian; }

    /// @name Id, free for the user
    /// 0 at first. Reading sets it to the id of the package.
    /// @{
    void SetPackageID(unsigned int id) { packageID_ = id; }
    unsigned int GetPackageID() const { return packageID_; }
    /// @}

    /// Serves a caller that has already read the header, to see the type of the payload. With `skip`, Deserialize uses
    /// the given header and reads none. Borrows the header until then. Asserts "Invalid argument." unless a header is
    /// given exactly when `skip` is set.
    void SetSkipHeaderOnRead(bool skip, DataPackageHeader const *header);

    /// Writes the package. Throws SerializationException ("Payload not ready.", "Payload byte-size mismatch.", after
    /// the class name), and `std::ios_base::failure` when the stream fails.
    void Serialize(ostream &out) const override;
    /// Reads a package and replaces the payload. Throws DeserializationException ("Payload-type mismatch.", "Payload
    /// byte-size mismatch.", "Package-id mismatch.", "Corrupted field.", "Unsupported sample-byte-size.", after the
    /// class name, and the texts of header and trailer), and `std::ios_base::failure`, which names the field, when the
    /// stream ends early. After a failure the package has no payload.
    ///
    /// The stream must report its position. No memory is allocated for a payload whose fields contradict its size, or,
    /// on a stream that can seek to its end and back, for a payload that is longer than the stream. From other streams
    /// a large payload is read in steps, into memory that grows with what has arrived, and is then copied.
    void Deserialize(istream &in) override;

    /// Saves the package to a file. An existing file keeps its contents until the new ones are complete. Follows
    /// symbolic links; does not write to pipes. On failure, tells the reason (see CodecFailureSentry) and returns
    /// false, or with `rethrow` throws: a SerializationException "Cannot open file: " with the name, or the exception
    /// of Serialize.
    bool SaveToFile(string const &fileName, bool rethrow);
    /// Loads a package from a plain file; ignores bytes after the trailer. On failure, tells the reason (see
    /// CodecFailureSentry) and returns false, or with `rethrow` throws: a DeserializationException "Cannot open file: "
    /// with the name, or the exception of Deserialize.
    bool LoadFromFile(string const &fileName, bool rethrow);

protected:
    /// `payloadType` is the type in the header.
    explicit DataPackage(unsigned int payloadType);

    /// @name Hooks
    /// The stream throws on any failure, and the byte order is that of the package.
    /// @{

    /// Returns the number of bytes that SerializePayload will write.
    virtual void QueryPayloadByteSize(unsigned int &byteSize) const = 0;
    virtual void SerializePayload(ostream &out) const = 0;
    /// Releases the payload, and reads `payloadByteSize` bytes into a new one.
    virtual void DeserializePayload(istream &in, unsigned int payloadByteSize) = 0;
    /// @}

private:
    bool packageByteOrderOnWrite_ = serializer_parameters::IsMachineBigEndian();
    unsigned int packageID_ = 0;
    unsigned int payloadType_;
    bool skipHeaderOnRead_ = false;
    DataPackageHeader const *skipHeader_ = nullptr;
};

/// Package around a container: SignalBase, ImageBase or VolumeBase. It borrows the container that it writes. It owns a
/// container that it has read, until the caller takes ownership.
template<typename Container>
class DataPackageOf : public DataPackage
{
public:
    /// Keeps a pointer to `payload`, which must live until Serialize() or the next SetPayload(). Null for none.
    void SetPayload(Container const *payload)
    {
        if (payload == payload_)
            return;
        payload_ = const_cast<Container *>(payload);
        owned_.reset();
    }

    /// Returns the payload; null when there is none. With `takeOwnership`, the caller owns it if the package did
    /// before; the package keeps a pointer to it.
    Container *GetPayload(bool takeOwnership)
    {
        if (takeOwnership)
            static_cast<void>(owned_.release());
        return payload_;
    }

    /// Reads a package as DataPackage::Deserialize does.
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
    /// Takes ownership of a payload that was read.
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
