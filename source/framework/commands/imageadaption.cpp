#include "imageadaption.h"

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/dataobjects/codecfailure.h>
#include <quillmarsh/dataobjects/datacodecmanager.h>
#include <quillmarsh/dataobjects/imagebase.h>
#include <quillmarsh/dataobjects/sampletransfer.h>

#include <cstring>
#include <typeinfo>

namespace quillmarsh::framework_commands
{
namespace
{

/// Formats of copies, the richest first.
constexpr eSampleFormat s_formats[] = {e_format_A8R8G8B8, e_format_X8R8G8B8, e_format_A8L8, e_format_L8};

CodecFailure Save(ImageBase const &image, string const &fileName, string const &format,
                  NamedParameterList const &params)
{
    CodecFailureSentry const reason;
    if (SaveImage(image, fileName, format, &params))
        return {};
    return {reason.GetFailure() ? reason.GetFailure().kind : eCodecFailure::e_system, reason.GetText()};
}

/// Returns a copy in a format; null when there is no transfer.
AutoPtr<ImageBase> MakeCopy(ImageBase const &image, eSampleFormat format)
{
    if (format == image.GetSampleFormat() ||
        !SignalOperationsManager::Instance().IsTransferSupported(format, image.GetSampleFormat()))
        return nullptr;
    AutoPtr<ImageBase> copy(ManufactureImage(format, image.GetNumRows(), image.GetNumColumns()));
    // Components that the transfer does not set are opaque.
    std::memset(copy->GetSamplesB(), 0xFF, copy->GetTotalByteSize());
    return TransferSamples2D(*copy, image, false) ? std::move(copy) : nullptr;
}

string SaveOrThrow(ImageBase const &image, string const &fileName, string const &format,
                   NamedParameterList const &params)
{
    CodecFailure const failure = Save(image, fileName, format, params);
    if (failure.kind != eCodecFailure::e_unsupported)
        return failure.text;
    for (eSampleFormat const candidate : s_formats)
    {
        AutoPtr<ImageBase> const copy = MakeCopy(image, candidate);
        if (copy == nullptr)
            continue;
        CodecFailure const failureOfCopy = Save(*copy, fileName, format, params);
        if (failureOfCopy.kind != eCodecFailure::e_unsupported)
            return failureOfCopy.text;
    }
    return failure.text;
}

} // namespace

string SaveAdaptedImage(ImageBase const &image, string const &fileName, string const &format,
                        NamedParameterList const &params)
{
    try
    {
        return SaveOrThrow(image, fileName, format, params);
    }
    catch (Exception const &thrown)
    {
        return thrown.GetMessage().empty() ? GetTypeName(typeid(thrown)) : thrown.GetMessage();
    }
}

} // namespace quillmarsh::framework_commands
