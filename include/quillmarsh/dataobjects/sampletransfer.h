// Transfer of samples between containers of different formats, conversion in place, and the manager of the handlers.
#ifndef QUILLMARSH_DATAOBJECTS_SAMPLETRANSFER_H
#define QUILLMARSH_DATAOBJECTS_SAMPLETRANSFER_H

#include <quillmarsh/dataobjects/imagebase.h>
#include <quillmarsh/dataobjects/signalbase.h>
#include <quillmarsh/dataobjects/volumebase.h>

#include <map>

namespace quillmarsh
{

/// Registry of the pairs of formats that can be transferred or converted, with their handlers. A program can add its
/// own pairs.
///
/// A singleton: the host creates it before the first transfer and destroys it after the last. It borrows the handlers,
/// which must outlive it. Register them at start-up, on the thread that created the manager; afterwards any thread may
/// look them up.
class QUILLMARSH_API SignalOperationsManager : NoCopy
{
public:
    /// Pair of formats, the destination first.
    struct HandlerKey
    {
        eSampleFormat first;  ///< format of the destination
        eSampleFormat second; ///< format of the source

        /// Orders by the first format as a signed number, then by the second.
        bool operator<(HandlerKey const &other) const
        {
            if (first != other.first)
                return static_cast<int>(first) < static_cast<int>(other.first);
            return static_cast<int>(second) < static_cast<int>(other.second);
        }
    };

    /// Writes the samples of one container into another. Both have the same number of samples, and the formats for
    /// which the handler is registered.
    class QUILLMARSH_API TransferSamplesHandler
    {
    public:
        TransferSamplesHandler() = default;
        virtual ~TransferSamplesHandler();
        /// Transfers the samples. The base class does nothing.
        virtual void Handle(SignalBase &dst, SignalBase const &src);
    };

    /// Rewrites the samples of a container for another format of the same size. ConvertSamples sets the format
    /// afterwards.
    class QUILLMARSH_API ConvertSamplesHandler
    {
    public:
        ConvertSamplesHandler() = default;
        virtual ~ConvertSamplesHandler();
        /// Converts the samples. The base class does nothing.
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
    /// A new handler replaces an earlier one of the same pair. Removing an unknown pair does nothing.
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

    /// @name Lookup
    /// Returns null or false when no handler is registered for the pair.
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
/// Write all samples of `src` into `dst`, in the format of `dst`. False, with nothing changed, when no handler is
/// registered for the two formats. With `resizeDestination`, `dst` first gets the dimensions of `src`; an adapter then
/// throws InvalidUsageException. Bytes of `dst` without a counterpart in `src` keep their values. Asserts "Sample-count
/// mismatch." or "Dimensions mismatch.".
/// @{
QUILLMARSH_API bool TransferSamples1D(SignalBase &dst, SignalBase const &src, bool resizeDestination);
QUILLMARSH_API void TransferSamples1D(SignalBase &dst, SignalBase const &src,
                                      SignalOperationsManager::TransferSamplesHandler &handler, bool resizeDestination);
QUILLMARSH_API bool TransferSamples2D(ImageBase &dst, ImageBase const &src, bool resizeDestination);
QUILLMARSH_API bool TransferSamples3D(VolumeBase &dst, VolumeBase const &src, bool resizeDestination);
/// @}

/// Changes the format of a container in place. True also when it already has the format. False, with nothing changed,
/// for a format of another sample size, or when no handler is registered for the two formats.
QUILLMARSH_API bool ConvertSamples(SignalBase &signal, eSampleFormat targetFormat);

/// @name Copies of all samples, part by part
/// The handlers consist of these. Offsets are bytes within a sample. All assert "Sample-count mismatch.", and that the
/// parts are within the samples.
/// @{

/// Copies whole samples.
QUILLMARSH_API void CopySamples(SignalBase &dst, SignalBase const &src);
/// Copies the same `n` bytes of each sample; in one block when these are whole samples.
QUILLMARSH_API void CopySamples_NBytes(SignalBase &dst, unsigned int dstOffset, SignalBase const &src,
                                       unsigned int srcOffset, unsigned int n);
/// Computes luminance from blue, green and red.
QUILLMARSH_API void CopySamples_3BytesBGRTo1ByteL(SignalBase &dst, unsigned int dstLOffset, SignalBase const &src,
                                                  unsigned int srcBGROffset);
/// Sets blue, green and red to the luminance.
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
