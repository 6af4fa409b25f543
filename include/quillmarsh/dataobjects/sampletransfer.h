// Transfer of samples between containers of different formats, conversion in place, and the manager of their handlers.
#ifndef QUILLMARSH_DATAOBJECTS_SAMPLETRANSFER_H
#define QUILLMARSH_DATAOBJECTS_SAMPLETRANSFER_H

#include <quillmarsh/dataobjects/imagebase.h>
#include <quillmarsh/dataobjects/signalbase.h>
#include <quillmarsh/dataobjects/volumebase.h>

#include <map>

namespace quillmarsh
{

/// Knows which pairs of formats can be transferred or converted, and how. A program can add pairs of its own.
///
/// A singleton: the host makes it before the first transfer and destroys it after the last. Handlers are not owned.
/// They are registered at start-up, by the thread that made the manager; any thread may look them up afterwards.
class QUILLMARSH_API SignalOperationsManager : NoCopy
{
public:
    /// Pair of formats, the one that is wanted first.
    struct HandlerKey
    {
        eSampleFormat first;  ///< format of the destination
        eSampleFormat second; ///< format of the source

        /// By the first format as a signed number, then by the second.
        bool operator<(HandlerKey const &other) const
        {
            if (first != other.first)
                return static_cast<int>(first) < static_cast<int>(other.first);
            return static_cast<int>(second) < static_cast<int>(other.second);
        }
    };

    /// Writes the samples of one container into another. Both have the same number of samples and the formats that the
    /// handler was registered for.
    class QUILLMARSH_API TransferSamplesHandler
    {
    public:
        TransferSamplesHandler() = default;
        virtual ~TransferSamplesHandler();
        /// Does nothing here.
        virtual void Handle(SignalBase &dst, SignalBase const &src);
    };

    /// Rewrites the samples of a container for a format of the same size. The format itself is set afterwards, by
    /// ConvertSamples.
    class QUILLMARSH_API ConvertSamplesHandler
    {
    public:
        ConvertSamplesHandler() = default;
        virtual ~ConvertSamplesHandler();
        /// Does nothing here.
        virtual void Handle(SignalBase &signal, eSampleFormat targetFormat);
    };

    /// Becomes the singleton, with all default handlers. Asserts "SignalOperationsManager singleton already created.".
    SignalOperationsManager();
    /// Asserts "Destructing non-existent SignalOperationsManager singleton.".
    ~SignalOperationsManager();

    /// @name The singleton
    /// Both assert "SignalOperationsManager singleton is not created.".
    /// @{
    static SignalOperationsManager &Instance();
    static SignalOperationsManager *InstancePtr();
    /// @}

    /// @name Registration
    /// An earlier handler of the same pair is replaced; a pair that is not there is nothing to remove.
    /// @{
    void RegisterTransferHandler(eSampleFormat dst, eSampleFormat src, TransferSamplesHandler &handler);
    void RegisterConvertHandler(eSampleFormat target, eSampleFormat current, ConvertSamplesHandler &handler);
    void UnregisterTransferHandler(eSampleFormat dst, eSampleFormat src);
    void UnregisterConvertHandler(eSampleFormat target, eSampleFormat current);
    void UnregisterAllTransferHandlers();
    void UnregisterAllConvertHandlers();
    void RegisterDefaultTransferHandlers();
    void RegisterDefaultConvertHandlers();
    /// @}

    /// @name Lookup; a handler is null when there is none
    /// @{
    TransferSamplesHandler *GetTransferHandler(eSampleFormat dst, eSampleFormat src) const;
    ConvertSamplesHandler *GetConvertHandler(eSampleFormat target, eSampleFormat current) const;
    bool IsTransferSupported(eSampleFormat dst, eSampleFormat src) const;
    bool IsConversionSupported(eSampleFormat target, eSampleFormat current) const;
    /// @}

private:
    std::map<HandlerKey, TransferSamplesHandler *> transferHandlers_;
    std::map<HandlerKey, ConvertSamplesHandler *> convertHandlers_;

    static SignalOperationsManager *s_pInstance;
};

/// @name Transfer
/// Writes all samples of `src` into `dst`, in the format that `dst` has. False, with nothing changed, when no handler
/// knows the two formats. With `resizeDestination` the destination takes the dimensions of the source first, which an
/// adapter refuses by InvalidUsageException. Bytes of the destination that the source has nothing for keep what they
/// held. Asserts "Sample-count mismatch." or "Dimensions mismatch.".
/// @{
QUILLMARSH_API bool TransferSamples1D(SignalBase &dst, SignalBase const &src, bool resizeDestination);
QUILLMARSH_API void TransferSamples1D(SignalBase &dst, SignalBase const &src,
                                      SignalOperationsManager::TransferSamplesHandler &handler, bool resizeDestination);
QUILLMARSH_API bool TransferSamples2D(ImageBase &dst, ImageBase const &src, bool resizeDestination);
QUILLMARSH_API bool TransferSamples3D(VolumeBase &dst, VolumeBase const &src, bool resizeDestination);
/// @}

/// Changes the format of a container in place. True also when it has that format already; false, with nothing changed,
/// for a format of another sample size or when no handler knows the two formats.
QUILLMARSH_API bool ConvertSamples(SignalBase &signal, eSampleFormat targetFormat);

/// @name Copies of all samples, part by part
/// What the handlers are made of. Offsets are bytes within a sample. All assert "Sample-count mismatch.", and that the
/// parts lie within the samples.
/// @{

/// Whole samples.
QUILLMARSH_API void CopySamples(SignalBase &dst, SignalBase const &src);
/// The same `n` bytes of each sample; one block copy when these are whole samples.
QUILLMARSH_API void CopySamples_NBytes(SignalBase &dst, unsigned int dstOffset, SignalBase const &src,
                                       unsigned int srcOffset, unsigned int n);
/// Luminance from blue, green and red.
QUILLMARSH_API void CopySamples_3BytesBGRTo1ByteL(SignalBase &dst, unsigned int dstLOffset, SignalBase const &src,
                                                  unsigned int srcBGROffset);
/// Blue, green and red from luminance.
QUILLMARSH_API void CopySamples_1ByteLTo3BytesBGR(SignalBase &dst, unsigned int dstBGROffset, SignalBase const &src,
                                                  unsigned int srcLOffset);
QUILLMARSH_API void CopySamples_UInt8888_To_UShort4444(SignalBase &dst, SignalBase const &src);
QUILLMARSH_API void CopySamples_UShort4444_To_UInt8888(SignalBase &dst, SignalBase const &src);
QUILLMARSH_API void CopySamples_UInt8888_To_UShort1555(SignalBase &dst, SignalBase const &src);
QUILLMARSH_API void CopySamples_UShort1555_To_UInt8888(SignalBase &dst, SignalBase const &src);
QUILLMARSH_API void CopySamples_FP32Norm_To_UInt8(SignalBase &dst, SignalBase const &src);
QUILLMARSH_API void CopySamples_UInt8_To_FP32Norm(SignalBase &dst, SignalBase const &src);
/// @}

} // namespace quillmarsh

#endif
