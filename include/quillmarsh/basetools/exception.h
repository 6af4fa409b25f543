// Root of the library's exception classes, the classes themselves, and the idiom that throws them.
#ifndef QUILLMARSH_BASETOOLS_EXCEPTION_H
#define QUILLMARSH_BASETOOLS_EXCEPTION_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh
{

/// A failure that a running program has to survive.
///
/// It carries an optional message and an optional source location, and is thrown by value. It is not derived from the
/// standard library's exception class: code that wants to catch every failure catches both.
class QUILLMARSH_API Exception
{
public:
    /// @name Life
    /// Neither a message nor a location is present at first. A copy has the same content.
    /// @{
    Exception();
    Exception(Exception const &);
    Exception &operator=(Exception const &);
    virtual ~Exception();
    /// @}

    /// Stores the message. It counts as present from then on, even when it is empty.
    void SetMessage(string const &message);
    /// Stores the source location, which counts as present from then on.
    void SetFileLine(string const &file, unsigned int line);

    /// @name Content
    /// A text that is not present is empty, and the line is then 0. References are good as long as the exception.
    /// @{
    bool ContainsMessage() const { return containsMessage_; }
    string const &GetMessage() const { return message_; }
    bool ContainsFileLine() const { return containsFileLine_; }
    string const &GetFile() const { return file_; }
    unsigned int GetLine() const { return line_; }
    /// @}

    /// Plain name of the object's class, taken from its run-time type.
    string GetClassName() const;

    /// Text of up to three lines: the class name, "@ " with file and line, "! " with the message. A part that is not
    /// asked for or not present is left out together with its line.
    string const MakeDescription(bool withClass = true, bool withFileLine = true, bool withMessage = true) const;

private:
    bool containsMessage_ = false;
    string message_;
    bool containsFileLine_ = false;
    string file_;
    unsigned int line_ = 0;
};

/// @cond
#define QUILLMARSH_DECLARE_EXCEPTION(name)                                                                             \
    class QUILLMARSH_API name : public Exception                                                                       \
    {                                                                                                                  \
    public:                                                                                                            \
        name();                                                                                                        \
        name(name const &);                                                                                            \
        name &operator=(name const &);                                                                                 \
        ~name() override;                                                                                              \
    }
/// @endcond

// Thrown by the library.
/// A command line does not follow the grammar; thrown by CommandLineParser.
QUILLMARSH_DECLARE_EXCEPTION(CommandLineErrorException);
/// An allocation failed while there was a NewThrowsExceptionSentry.
QUILLMARSH_DECLARE_EXCEPTION(NoMemoryException);
/// The system refused a thread, an event, a timer, a window or another resource.
QUILLMARSH_DECLARE_EXCEPTION(SystemResourceException);
/// A singular matrix was to be inverted.
QUILLMARSH_DECLARE_EXCEPTION(MatrixNotInvertibleException);
/// An operation was called that the state or the kind of an object does not allow.
QUILLMARSH_DECLARE_EXCEPTION(InvalidUsageException);
/// A data package could not be written.
QUILLMARSH_DECLARE_EXCEPTION(SerializationException);
/// A data package could not be read.
QUILLMARSH_DECLARE_EXCEPTION(DeserializationException);
/// The GUI toolkit failed.
QUILLMARSH_DECLARE_EXCEPTION(GUIException);
/// An application failed, or a failure was forced by command.
QUILLMARSH_DECLARE_EXCEPTION(ApplicationException);

// Thrown by hosts and plug-ins.
/// The kernel of a host failed.
QUILLMARSH_DECLARE_EXCEPTION(KernelException);
/// A subsystem of an application failed.
QUILLMARSH_DECLARE_EXCEPTION(GenericSubsystemException);
/// A video renderer failed.
QUILLMARSH_DECLARE_EXCEPTION(VideoRendererException);
/// A video subsystem failed.
QUILLMARSH_DECLARE_EXCEPTION(VideoSubsystemException);
/// A video subsystem failed, and will work again after a reconfiguration.
QUILLMARSH_DECLARE_EXCEPTION(VideoSubsystemRecoverableException);
/// An input device failed.
QUILLMARSH_DECLARE_EXCEPTION(HIDException);
/// A driver of input devices failed.
QUILLMARSH_DECLARE_EXCEPTION(HIDDriverException);
/// The proxy of the DirectInput library failed.
QUILLMARSH_DECLARE_EXCEPTION(DirectInputProxyException);
/// A generic extension failed.
QUILLMARSH_DECLARE_EXCEPTION(GenericExtensionException);

#undef QUILLMARSH_DECLARE_EXCEPTION

} // namespace quillmarsh

/// Throws an exception class with a message and the place of the throw.
#define QUILLMARSH_THROW(exceptionClass, message)                                                                      \
    do                                                                                                                 \
    {                                                                                                                  \
        exceptionClass quillmarshThrown;                                                                               \
        quillmarshThrown.SetMessage(message);                                                                          \
        quillmarshThrown.SetFileLine(__FILE__, __LINE__);                                                              \
        throw quillmarshThrown;                                                                                        \
    } while (false)

#endif
