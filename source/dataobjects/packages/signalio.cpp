#include <quillmarsh/dataobjects/signalio.h>

#include "source/dataobjects/packages/packagecodecs.h"
#include "source/dataobjects/packages/packagepayload.h"

namespace quillmarsh
{
namespace
{

constexpr char s_szFormatList[] = "qmdp.signal";

} // namespace

template class DataPackageOf<SignalBase>;

DataPackageSignal::DataPackageSignal() : DataPackageOf(e_payload_signal) {}

DataPackageSignal::~DataPackageSignal() = default;

void DataPackageSignal::QueryPayloadByteSize(unsigned int &byteSize) const
{
    byteSize = QueryPayload(*this, GetPayload(), 1);
}

void DataPackageSignal::SerializePayload(ostream &out) const
{
    SignalBase const &signal = RequirePayload(*this, GetPayload());
    WritePayload(*this, out, signal, {1, {signal.GetNumSamples()}, signal.GetSampleFormat(), 0});
}

void DataPackageSignal::DeserializePayload(istream &in, unsigned int payloadByteSize)
{
    SetPayload(nullptr);
    PayloadDesc const desc = ReadPayloadDesc(*this, in, 1, 0, payloadByteSize);
    SampleSource source(*this, in, desc);
    AutoPtr<SignalBase> signal(ManufactureSignal(static_cast<eSampleFormat>(desc.format), desc.dimensions[0]));
    ReadSamples(*this, source.GetStream(), *signal, desc, 0);
    AdoptPayload(std::move(signal));
}

SignalEncoderQMDP::SignalEncoderQMDP() : SignalEncoder(s_szPackageCodec, s_szFormatList) {}

bool SignalEncoderQMDP::SaveSignal(SignalBase const &signal, string const &fileName, string const &format,
                                   NamedParameterList const &params)
{
    DataPackageSignal package;
    return SavePackage(package, signal, fileName, format, params);
}

SignalDecoderQMDP::SignalDecoderQMDP() : SignalDecoder(s_szPackageCodec, s_szFormatList) {}

SignalBase *SignalDecoderQMDP::LoadSignal(string const &fileName, NamedParameterList const &)
{
    DataPackageSignal package;
    return LoadPackage(package, fileName);
}

bool SignalDecoderQMDP::QueryOpened(sampled_data::InputFile &file, DataFileHead &head)
{
    return QueryPackage(file, 1, head);
}

void *SignalDecoderQMDP::LoadOpened(sampled_data::InputFile &file, NamedParameterList const &)
{
    DataPackageSignal package;
    return LoadPackage(package, file);
}

} // namespace quillmarsh
