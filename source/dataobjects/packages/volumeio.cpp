#include <quillmarsh/dataobjects/volumeio.h>

#include "source/dataobjects/packages/packagecodecs.h"
#include "source/dataobjects/packages/packagepayload.h"

namespace quillmarsh
{
namespace
{

constexpr char s_szFormatList[] = "qmdp.volume";

unsigned int MakeFlags(bool layersLastFirst, bool rowsLastFirst)
{
    return (layersLastFirst ? s_layersLastFirst : 0) | (rowsLastFirst ? s_rowsLastFirst : 0);
}

} // namespace

template class DataPackageOf<VolumeBase>;

DataPackageVolume::DataPackageVolume() : DataPackageOf(e_payload_volume) {}

DataPackageVolume::~DataPackageVolume() = default;

void DataPackageVolume::QueryPayloadByteSize(unsigned int &byteSize) const
{
    byteSize = QueryPayload(*this, GetPayload(), 3);
}

void DataPackageVolume::SerializePayload(ostream &out) const
{
    VolumeBase const &volume = RequirePayload(*this, GetPayload());
    WritePayload(*this, out, volume,
                 {3,
                  {volume.GetNumLayers(), volume.GetNumRows(), volume.GetNumColumns()},
                  volume.GetSampleFormat(),
                  MakeFlags(layerOrderOnWrite_, rowOrderOnWrite_)});
}

void DataPackageVolume::DeserializePayload(istream &in, unsigned int payloadByteSize)
{
    SetPayload(nullptr);
    PayloadDesc const desc = ReadPayloadDesc(*this, in, 3, s_layersLastFirst | s_rowsLastFirst, payloadByteSize);
    SampleSource source(*this, in, desc);
    AutoPtr<VolumeBase> volume(ManufactureVolume(static_cast<eSampleFormat>(desc.format), desc.dimensions[0],
                                                 desc.dimensions[1], desc.dimensions[2]));
    ReadSamples(*this, source.GetStream(), *volume, desc, desc.flags ^ MakeFlags(layerOrderOnRead_, rowOrderOnRead_));
    AdoptPayload(std::move(volume));
}

VolumeEncoderQMDP::VolumeEncoderQMDP() : VolumeEncoder(s_szPackageCodec, s_szFormatList) {}

bool VolumeEncoderQMDP::SaveVolume(VolumeBase const &volume, string const &fileName, string const &format,
                                   NamedParameterList const &params)
{
    DataPackageVolume package;
    package.SetLayerOrderOnWrite(IsOriginBack(params));
    package.SetRowOrderOnWrite(IsOriginBottom(params));
    return SavePackage(package, volume, fileName, format, params);
}

VolumeDecoderQMDP::VolumeDecoderQMDP() : VolumeDecoder(s_szPackageCodec, s_szFormatList) {}

VolumeBase *VolumeDecoderQMDP::LoadVolume(string const &fileName, NamedParameterList const &params)
{
    DataPackageVolume package;
    package.SetLayerOrderOnRead(IsOriginBack(params));
    package.SetRowOrderOnRead(IsOriginBottom(params));
    return LoadPackage(package, fileName);
}

bool VolumeDecoderQMDP::QueryOpened(sampled_data::InputFile &file, DataFileHead &head)
{
    return QueryPackage(file, 3, head);
}

void *VolumeDecoderQMDP::LoadOpened(sampled_data::InputFile &file, NamedParameterList const &params)
{
    DataPackageVolume package;
    package.SetLayerOrderOnRead(IsOriginBack(params));
    package.SetRowOrderOnRead(IsOriginBottom(params));
    return LoadPackage(package, file);
}

} // namespace quillmarsh
