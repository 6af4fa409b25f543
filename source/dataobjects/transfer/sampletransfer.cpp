#include <quillmarsh/dataobjects/sampletransfer.h>

#include <quillmarsh/basetools/diagnostics.h>

#include "source/dataobjects/transfer/samplecopies.h"

#include <typeinfo>

namespace quillmarsh
{
namespace
{

using TransferSamplesHandler = SignalOperationsManager::TransferSamplesHandler;
using ConvertSamplesHandler = SignalOperationsManager::ConvertSamplesHandler;

string ManagerName()
{
    return FormatClassName(GetTypeName(typeid(SignalOperationsManager)));
}

/// Handler that calls one function to copy whole samples.
template<void (*copy)(SignalBase &, SignalBase const &)>
class TSH_Copy final : public TransferSamplesHandler
{
    void Handle(SignalBase &dst, SignalBase const &src) override { copy(dst, src); }
};
using TSH_CopySamples = TSH_Copy<CopySamples>;
using TSH_CopySamples_UInt8888_To_UShort4444 = TSH_Copy<CopySamples_UInt8888_To_UShort4444>;
using TSH_CopySamples_UShort4444_To_UInt8888 = TSH_Copy<CopySamples_UShort4444_To_UInt8888>;
using TSH_CopySamples_UInt8888_To_UShort1555 = TSH_Copy<CopySamples_UInt8888_To_UShort1555>;
using TSH_CopySamples_UShort1555_To_UInt8888 = TSH_Copy<CopySamples_UShort1555_To_UInt8888>;
using TSH_CopySamples_FP32Norm_To_UInt8 = TSH_Copy<CopySamples_FP32Norm_To_UInt8>;
using TSH_CopySamples_UInt8_To_FP32Norm = TSH_Copy<CopySamples_UInt8_To_FP32Norm>;

template<unsigned int dstOffset, unsigned int srcOffset, unsigned int n>
class TSH_CopySamples_NBytes final : public TransferSamplesHandler
{
    void Handle(SignalBase &dst, SignalBase const &src) override
    {
        CopySamples_NBytes(dst, dstOffset, src, srcOffset, n);
    }
};

template<unsigned int dstOffset, unsigned int srcOffset>
class TSH_CopySamples_3BytesBGRTo1ByteL final : public TransferSamplesHandler
{
    void Handle(SignalBase &dst, SignalBase const &src) override
    {
        CopySamples_3BytesBGRTo1ByteL(dst, dstOffset, src, srcOffset);
    }
};

template<unsigned int dstOffset, unsigned int srcOffset>
class TSH_CopySamples_1ByteLTo3BytesBGR final : public TransferSamplesHandler
{
    void Handle(SignalBase &dst, SignalBase const &src) override
    {
        CopySamples_1ByteLTo3BytesBGR(dst, dstOffset, src, srcOffset);
    }
};

template<unsigned int dstLOffset, unsigned int srcBGROffset, unsigned int dstOffset, unsigned int srcOffset>
class TSH_CopySamples_3BytesBGRTo1ByteL1ByteClone final : public TransferSamplesHandler
{
    void Handle(SignalBase &dst, SignalBase const &src) override
    {
        CopySamples_3BytesBGRTo1ByteL1ByteClone(dst, dstLOffset, src, srcBGROffset, dstOffset, srcOffset);
    }
};

template<unsigned int dstBGROffset, unsigned int srcLOffset, unsigned int dstOffset, unsigned int srcOffset>
class TSH_CopySamples_1ByteLTo3BytesBGR1ByteClone final : public TransferSamplesHandler
{
    void Handle(SignalBase &dst, SignalBase const &src) override
    {
        CopySamples_1ByteLTo3BytesBGR1ByteClone(dst, dstBGROffset, src, srcLOffset, dstOffset, srcOffset);
    }
};

template<unsigned int dstLOffset, unsigned int dstBGROffset, unsigned int srcBGROffset>
class TSH_CopySamples_3BytesBGRTo4BytesBGRA final : public TransferSamplesHandler
{
    void Handle(SignalBase &dst, SignalBase const &src) override
    {
        CopySamples_3BytesBGRTo1ByteL(dst, dstLOffset, src, srcBGROffset);
        CopySamples_NBytes(dst, dstBGROffset, src, srcBGROffset, 3);
    }
};

/// Changes no byte: only the meaning of the samples changes.
class CSH_Null final : public ConvertSamplesHandler
{
};

constinit TSH_CopySamples s_copy;
constinit TSH_CopySamples_NBytes<0, 0, 1> s_byte0To0;
constinit TSH_CopySamples_NBytes<0, 1, 1> s_byte1To0;
constinit TSH_CopySamples_NBytes<1, 0, 1> s_byte0To1;
constinit TSH_CopySamples_NBytes<0, 3, 1> s_byte3To0;
constinit TSH_CopySamples_NBytes<3, 0, 1> s_byte0To3;
constinit TSH_CopySamples_3BytesBGRTo1ByteL<0, 0> s_colourToL;
constinit TSH_CopySamples_1ByteLTo3BytesBGR<0, 0> s_lToColour;
constinit TSH_CopySamples_3BytesBGRTo1ByteL1ByteClone<0, 0, 1, 3> s_colourToLWithAlpha;
constinit TSH_CopySamples_1ByteLTo3BytesBGR1ByteClone<0, 0, 3, 1> s_lToColourWithAlpha;
// For pairs of programs; no default pair uses it.
[[maybe_unused]] constinit TSH_CopySamples_3BytesBGRTo4BytesBGRA<3, 0, 0> s_colourToColourWithLAsAlpha;
constinit TSH_CopySamples_UInt8888_To_UShort4444 s_8888To4444;
constinit TSH_CopySamples_UShort4444_To_UInt8888 s_4444To8888;
constinit TSH_CopySamples_UInt8888_To_UShort1555 s_8888To1555;
constinit TSH_CopySamples_UShort1555_To_UInt8888 s_1555To8888;
constinit TSH_CopySamples_FP32Norm_To_UInt8 s_floatToByte;
constinit TSH_CopySamples_UInt8_To_FP32Norm s_byteToFloat;
constinit CSH_Null s_null;

struct DefaultTransfer
{
    eSampleFormat dst, src;
    TransferSamplesHandler &handler;
};

// Other pairs are missing on purpose: no transfer invents alpha, for example.
constexpr DefaultTransfer s_defaultTransfers[] = {
    {e_format_L8, e_format_L8, s_copy},
    {e_format_L8, e_format_A8, s_copy},
    {e_format_A8, e_format_L8, s_copy},
    {e_format_A8, e_format_A8, s_copy},
    {e_format_L8, e_format_A8L8, s_byte0To0},
    {e_format_A8, e_format_A8L8, s_byte1To0},
    {e_format_A8L8, e_format_L8, s_byte0To0},
    {e_format_A8L8, e_format_A8, s_byte0To1},
    {e_format_A8L8, e_format_A8L8, s_copy},
    {e_format_A4R4G4B4, e_format_A4R4G4B4, s_copy},
    {e_format_L8, e_format_X8R8G8B8, s_colourToL},
    {e_format_L8, e_format_A8R8G8B8, s_colourToL},
    {e_format_A8, e_format_X8R8G8B8, s_colourToL},
    {e_format_A8, e_format_A8R8G8B8, s_byte3To0},
    {e_format_X8R8G8B8, e_format_L8, s_lToColour},
    {e_format_X8R8G8B8, e_format_A8, s_lToColour},
    {e_format_A8R8G8B8, e_format_L8, s_lToColour},
    {e_format_A8R8G8B8, e_format_A8, s_byte0To3},
    {e_format_A8L8, e_format_X8R8G8B8, s_colourToL},
    {e_format_A8L8, e_format_A8R8G8B8, s_colourToLWithAlpha},
    {e_format_A4R4G4B4, e_format_X8R8G8B8, s_8888To4444},
    {e_format_A4R4G4B4, e_format_A8R8G8B8, s_8888To4444},
    {e_format_A1R5G5B5, e_format_X8R8G8B8, s_8888To1555},
    {e_format_A1R5G5B5, e_format_A8R8G8B8, s_8888To1555},
    {e_format_X8R8G8B8, e_format_A8L8, s_lToColour},
    {e_format_X8R8G8B8, e_format_A4R4G4B4, s_4444To8888},
    {e_format_X8R8G8B8, e_format_A1R5G5B5, s_1555To8888},
    {e_format_A8R8G8B8, e_format_A8L8, s_lToColourWithAlpha},
    {e_format_A8R8G8B8, e_format_A4R4G4B4, s_4444To8888},
    {e_format_A8R8G8B8, e_format_A1R5G5B5, s_1555To8888},
    {e_format_X8R8G8B8, e_format_X8R8G8B8, s_copy},
    {e_format_X8R8G8B8, e_format_A8R8G8B8, s_copy},
    {e_format_A8R8G8B8, e_format_X8R8G8B8, s_copy},
    {e_format_A8R8G8B8, e_format_A8R8G8B8, s_copy},
    {e_format_L8, e_format_FP32NormL, s_floatToByte},
    {e_format_L8, e_format_FP32NormA, s_floatToByte},
    {e_format_FP32NormL, e_format_L8, s_byteToFloat},
    {e_format_FP32NormA, e_format_L8, s_byteToFloat},
};

struct DefaultConversion
{
    eSampleFormat current, target;
};

constexpr DefaultConversion s_defaultConversions[] = {
    {e_format_L8, e_format_A8},
    {e_format_A8, e_format_L8},
    {e_format_X8R8G8B8, e_format_A8R8G8B8},
    {e_format_A8R8G8B8, e_format_X8R8G8B8},
};

template<typename Map>
auto Find(Map const &handlers, eSampleFormat first, eSampleFormat second) -> typename Map::mapped_type
{
    auto const found = handlers.find({first, second});
    return found == handlers.end() ? nullptr : found->second;
}

} // namespace

constinit SignalOperationsManager *SignalOperationsManager::s_pInstance = nullptr;

TransferSamplesHandler::~TransferSamplesHandler() = default;

void TransferSamplesHandler::Handle(SignalBase &, SignalBase const &) {}

ConvertSamplesHandler::~ConvertSamplesHandler() = default;

void ConvertSamplesHandler::Handle(SignalBase &, eSampleFormat) {}

SignalOperationsManager::SignalOperationsManager()
{
    QUILLMARSH_ASSERT(!s_pInstance, ManagerName() + " singleton already created.");
    s_pInstance = this;
    RegisterDefaultTransferHandlers();
    RegisterDefaultConvertHandlers();
}

SignalOperationsManager::~SignalOperationsManager()
{
    UnregisterAllConvertHandlers();
    UnregisterAllTransferHandlers();
    QUILLMARSH_ASSERT(s_pInstance, "Destructing non-existent " + ManagerName() + " singleton.");
    s_pInstance = nullptr;
}

SignalOperationsManager &SignalOperationsManager::Instance()
{
    QUILLMARSH_ASSERT(s_pInstance, ManagerName() + " singleton is not created.");
    return *s_pInstance;
}

SignalOperationsManager *SignalOperationsManager::InstancePtr()
{
    QUILLMARSH_ASSERT(s_pInstance, ManagerName() + " singleton is not created.");
    return s_pInstance;
}

void SignalOperationsManager::RegisterTransferHandler(eSampleFormat dst, eSampleFormat src,
                                                      TransferSamplesHandler &handler)
{
    transferHandlers_[{dst, src}] = &handler;
}

void SignalOperationsManager::RegisterConvertHandler(eSampleFormat target, eSampleFormat current,
                                                     ConvertSamplesHandler &handler)
{
    convertHandlers_[{target, current}] = &handler;
}

void SignalOperationsManager::UnregisterTransferHandler(eSampleFormat dst, eSampleFormat src)
{
    transferHandlers_.erase({dst, src});
}

void SignalOperationsManager::UnregisterConvertHandler(eSampleFormat target, eSampleFormat current)
{
    convertHandlers_.erase({target, current});
}

void SignalOperationsManager::UnregisterAllTransferHandlers()
{
    transferHandlers_.clear();
}

void SignalOperationsManager::UnregisterAllConvertHandlers()
{
    convertHandlers_.clear();
}

void SignalOperationsManager::RegisterDefaultTransferHandlers()
{
    for (DefaultTransfer const &pair : s_defaultTransfers)
        RegisterTransferHandler(pair.dst, pair.src, pair.handler);
}

void SignalOperationsManager::RegisterDefaultConvertHandlers()
{
    for (DefaultConversion const &pair : s_defaultConversions)
        RegisterConvertHandler(pair.target, pair.current, s_null);
}

TransferSamplesHandler *SignalOperationsManager::GetTransferHandler(eSampleFormat dst, eSampleFormat src) const
{
    return Find(transferHandlers_, dst, src);
}

ConvertSamplesHandler *SignalOperationsManager::GetConvertHandler(eSampleFormat target, eSampleFormat current) const
{
    return Find(convertHandlers_, target, current);
}

bool SignalOperationsManager::IsTransferSupported(eSampleFormat dst, eSampleFormat src) const
{
    return GetTransferHandler(dst, src) != nullptr;
}

bool SignalOperationsManager::IsConversionSupported(eSampleFormat target, eSampleFormat current) const
{
    return GetConvertHandler(target, current) != nullptr;
}

namespace
{

TransferSamplesHandler *FindTransfer(SignalBase const &dst, SignalBase const &src)
{
    return SignalOperationsManager::Instance().GetTransferHandler(dst.GetSampleFormat(), src.GetSampleFormat());
}

} // namespace

bool TransferSamples1D(SignalBase &dst, SignalBase const &src, bool resizeDestination)
{
    TransferSamplesHandler *const handler = FindTransfer(dst, src);
    if (!handler)
        return false;
    TransferSamples1D(dst, src, *handler, resizeDestination);
    return true;
}

void TransferSamples1D(SignalBase &dst, SignalBase const &src, TransferSamplesHandler &handler, bool resizeDestination)
{
    if (resizeDestination)
        dst.ReserveSampleStorage(src.GetNumSamples());
    QUILLMARSH_ASSERT(dst.CheckDimensionMatch(src), "Sample-count mismatch.");
    handler.Handle(dst, src);
}

bool TransferSamples2D(ImageBase &dst, ImageBase const &src, bool resizeDestination)
{
    TransferSamplesHandler *const handler = FindTransfer(dst, src);
    if (!handler)
        return false;
    if (resizeDestination)
        dst.ReserveSampleStorage(src.GetNumRows(), src.GetNumColumns());
    QUILLMARSH_ASSERT(dst.CheckDimensionMatch(src), "Dimensions mismatch.");
    TransferSamples1D(dst, src, *handler, false);
    return true;
}

bool TransferSamples3D(VolumeBase &dst, VolumeBase const &src, bool resizeDestination)
{
    TransferSamplesHandler *const handler = FindTransfer(dst, src);
    if (!handler)
        return false;
    if (resizeDestination)
        dst.ReserveSampleStorage(src.GetNumLayers(), src.GetNumRows(), src.GetNumColumns());
    QUILLMARSH_ASSERT(dst.CheckDimensionMatch(src), "Dimensions mismatch.");
    TransferSamples1D(dst, src, *handler, false);
    return true;
}

bool ConvertSamples(SignalBase &signal, eSampleFormat targetFormat)
{
    if (signal.GetSampleFormat() == targetFormat)
        return true;
    if (!signal.IsValidSampleFormat(targetFormat))
        return false;
    ConvertSamplesHandler *const handler =
        SignalOperationsManager::Instance().GetConvertHandler(targetFormat, signal.GetSampleFormat());
    if (!handler)
        return false;
    handler->Handle(signal, targetFormat);
    signal.SetSampleFormat(targetFormat);
    return true;
}

} // namespace quillmarsh
