// Volumes in data packages: the package, its encoder and its decoder.
#ifndef QUILLMARSH_DATAOBJECTS_VOLUMEIO_H
#define QUILLMARSH_DATAOBJECTS_VOLUMEIO_H

#include <quillmarsh/dataobjects/datacodecs.h>
#include <quillmarsh/dataobjects/datapackage.h>
#include <quillmarsh/dataobjects/volumebase.h>

namespace quillmarsh
{

extern template class QUILLMARSH_API DataPackageOf<VolumeBase>;

/// Package of a volume.
class QUILLMARSH_API DataPackageVolume : public DataPackageOf<VolumeBase>
{
public:
    /// Creates a package without a payload.
    DataPackageVolume();
    ~DataPackageVolume() override;

    /// @name Order of layers, and of rows within each layer
    /// They work like the order of rows in DataPackageImage.
    /// @{
    void SetLayerOrderOnWrite(bool lastFirst) { layerOrderOnWrite_ = lastFirst; }
    void SetLayerOrderOnRead(bool lastFirst) { layerOrderOnRead_ = lastFirst; }
    void SetRowOrderOnWrite(bool lastFirst) { rowOrderOnWrite_ = lastFirst; }
    void SetRowOrderOnRead(bool lastFirst) { rowOrderOnRead_ = lastFirst; }
    /// @}

protected:
    void QueryPayloadByteSize(unsigned int &byteSize) const override;
    void SerializePayload(ostream &out) const override;
    void DeserializePayload(istream &in, unsigned int payloadByteSize) override;

private:
    bool layerOrderOnWrite_ = false;
    bool layerOrderOnRead_ = false;
    bool rowOrderOnWrite_ = false;
    bool rowOrderOnRead_ = false;
};

/// Saves volumes as packages, in the format "QMDP". Reads the parameters "FileOverwrite", "ByteOrderBigEndian",
/// "PackageID", "OriginBack" and "OriginBottom".
class QUILLMARSH_API VolumeEncoderQMDP : public VolumeEncoder
{
public:
    /// Creates the codec "VolumeEncoder/QMDP".
    VolumeEncoderQMDP();

    bool SaveVolume(VolumeBase const &volume, string const &fileName, string const &format,
                    NamedParameterList const &params) override;
};

/// Loads volumes from packages. Reads the parameters "OriginBack" and "OriginBottom".
class QUILLMARSH_API VolumeDecoderQMDP : public VolumeDecoder, public OpenFileDecoder
{
public:
    /// Creates the codec "VolumeDecoder/QMDP".
    VolumeDecoderQMDP();

    VolumeBase *LoadVolume(string const &fileName, NamedParameterList const &params) override;
    bool QueryOpened(sampled_data::InputFile &file, DataFileHead &head) override;
    void *LoadOpened(sampled_data::InputFile &file, NamedParameterList const &params) override;
};

} // namespace quillmarsh

#endif
