// Signals in data packages: the package, its encoder and its decoder.
#ifndef QUILLMARSH_DATAOBJECTS_SIGNALIO_H
#define QUILLMARSH_DATAOBJECTS_SIGNALIO_H

#include <quillmarsh/dataobjects/datacodecs.h>
#include <quillmarsh/dataobjects/datapackage.h>
#include <quillmarsh/dataobjects/signalbase.h>

namespace quillmarsh
{

extern template class QUILLMARSH_API DataPackageOf<SignalBase>;

/// Package of a signal.
class QUILLMARSH_API DataPackageSignal : public DataPackageOf<SignalBase>
{
public:
    /// Creates a package without a payload.
    DataPackageSignal();
    ~DataPackageSignal() override;

protected:
    void QueryPayloadByteSize(unsigned int &byteSize) const override;
    void SerializePayload(ostream &out) const override;
    void DeserializePayload(istream &in, unsigned int payloadByteSize) override;
};

/// Saves signals as packages, in the format "QMDP". Reads the parameters "FileOverwrite",
/// "ByteOrderBigEndian" and "PackageID".
class QUILLMARSH_API SignalEncoderQMDP : public SignalEncoder
{
public:
    /// Creates the codec "SignalEncoder/QMDP".
    SignalEncoderQMDP();

    bool SaveSignal(SignalBase const &signal, string const &fileName, string const &format,
                    NamedParameterList const &params) override;
};

/// Loads signals from packages. Reads no parameters.
class QUILLMARSH_API SignalDecoderQMDP : public SignalDecoder, public OpenFileDecoder
{
public:
    /// Creates the codec "SignalDecoder/QMDP".
    SignalDecoderQMDP();

    SignalBase *LoadSignal(string const &fileName, NamedParameterList const &params) override;
    bool QueryOpened(sampled_data::InputFile &file, DataFileHead &head) override;
    void *LoadOpened(sampled_data::InputFile &file, NamedParameterList const &params) override;
};

} // namespace quillmarsh

#endif
