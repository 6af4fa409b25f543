// Why data could not be loaded or saved.
#ifndef QUILLMARSH_DATAOBJECTS_CODECFAILURE_H
#define QUILLMARSH_DATAOBJECTS_CODECFAILURE_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh
{

/// Kinds of failures of codecs.
enum class eCodecFailure
{
    e_none,
    /// The file, or the format asked for, is none of the codec's: the request passes on to the next codec.
    e_otherFormat,
    /// There is no file of this name.
    e_notFound,
    /// The system does not permit it.
    e_noPermission,
    /// The name is that of a directory, a pipe, a socket or a device, or one that no file can have.
    e_notAFile,
    /// There is a file of this name, and the call does not allow to replace it.
    e_exists,
    /// The codec knows the format, and not this kind of data in it.
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

    /// True when there is a failure.
    explicit operator bool() const { return kind != eCodecFailure::e_none; }
};

/// Tells the calling thread's innermost CodecFailureSentry why a codec is about to return false or null. It replaces what
/// was told before, and does nothing on a thread without a sentry.
QUILLMARSH_API void TellCodecFailure(eCodecFailure kind, string const &text);

/// Collects what codecs tell about a failure, from its construction on, on the thread that made it.
///
/// Codecs and DataCodecManager return false or null on failure; the reason goes to the innermost sentry of the calling
/// thread. It means something only when the call has failed:
/// @code
/// CodecFailureSentry reason;
/// AutoPtr<ImageBase> const image(LoadImageA(fileName));
/// if (!image)
///     GetConOut() << fileName << ": " << reason.GetText() << std::endl;
/// @endcode
/// Sentries may nest; each ends on its own thread, the innermost first.
class QUILLMARSH_API CodecFailureSentry : NoCopy
{
public:
    CodecFailureSentry();
    ~CodecFailureSentry();

    /// The failure that was told last; none when no codec has told one.
    CodecFailure const &GetFailure() const { return failure_; }
    /// Its text; "failed without a reason" when no codec has told one.
    string GetText() const;

private:
    CodecFailure failure_;
    /// Where the next outer sentry of the thread keeps its failure; null for the outermost.
    CodecFailure *outer_;
};

} // namespace quillmarsh

#endif
