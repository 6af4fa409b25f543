// Reasons why data could not be loaded or saved.
#ifndef QUILLMARSH_DATAOBJECTS_CODECFAILURE_H
#define QUILLMARSH_DATAOBJECTS_CODECFAILURE_H

#include <quillmarsh/platform/types.h>

#include <cstdint>
#include <optional>

namespace quillmarsh
{

/// Kinds of failures of codecs.
enum class eCodecFailure
{
    e_none,
    /// The codec does not know the file or the requested format: the request passes on to the next codec.
    e_otherFormat,
    /// No file has this name.
    e_notFound,
    /// The system refuses access.
    e_noPermission,
    /// The name belongs to a directory, a pipe, a socket or a device, or no file can have it.
    e_notAFile,
    /// A file has this name, and the call does not allow replacing it.
    e_exists,
    /// The codec knows the format, but not this kind of data in it.
    e_unsupported,
    /// The file is cut short, or its contents contradict each other.
    e_damaged,
    /// The picture has more pixels than image_limits::GetMaxPixels().
    e_tooLarge,
    e_noMemory,
    /// Reading or writing failed; the disk is full, for instance.
    e_system
};

/// A failure: its kind, and one line of text for the user, which begins with a small letter, has no full stop and does
/// not name the file.
struct CodecFailure
{
    eCodecFailure kind = eCodecFailure::e_none;
    string text;

    /// @name Place of a wrong field of a package, if it is known; the text contains it, too
    /// @{
    std::optional<std::uint64_t> byte = {}; ///< offset in the file
    string field = {};                      ///< name of the field
    /// @}

    /// True when there is a failure.
    explicit operator bool() const { return kind != eCodecFailure::e_none; }
};

/// Tells the calling thread's innermost CodecFailureSentry why a codec is about to return false or null. Replaces an
/// earlier reason. Does nothing on a thread without a sentry.
QUILLMARSH_API void TellCodecFailure(eCodecFailure kind, string const &text);

/// Receives the reasons of codecs' failures while it lives, on the thread that created it.
///
/// Codecs and DataCodecManager return false or null on failure; the reason goes to the innermost sentry of the calling
/// thread. It is valid only when the call has failed:
/// @code
/// CodecFailureSentry reason;
/// AutoPtr<ImageBase> const image(LoadImageA(fileName));
/// if (!image)
///     GetConOut() << fileName << ": " << reason.GetText() << std::endl;
/// @endcode
/// Sentries may nest. Each must be destroyed on its own thread, the innermost first.
class QUILLMARSH_API CodecFailureSentry : NoCopy
{
public:
    /// Becomes the innermost sentry of the calling thread, without a failure.
    CodecFailureSentry();
    ~CodecFailureSentry();

    /// Returns the last reason; its kind is eCodecFailure::e_none if there is none.
    CodecFailure const &GetFailure() const { return failure_; }
    /// Returns the text of the last reason, or "failed without a reason" if there is none.
    string GetText() const;

private:
    CodecFailure failure_;
    /// Failure of the thread's next outer sentry; null for the outermost.
    CodecFailure *outer_;
};

} // namespace quillmarsh

#endif
