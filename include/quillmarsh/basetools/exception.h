// Root of the library's exception classes, the classes themselves, and the idiom that throws them.
#ifndef QUILLMARSH_BASETOOLS_EXCEPTION_H
#define QUILLMARSH_BASETOOLS_EXCEPTION_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh
{

/// Failure that a running program has to survive.
///
/// It carries an optional message and an optional source location, and is thrown by value. It is not related to the
/// standard library's exception class: who wants to catch everything catches both.
class QUILLMARSH_API Exception
{
public:
    /// @name Life
    /// Neither message nor location is present at first; a copy takes over all of it.
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

    /// @name What it carries
    /// Texts are empty, and the line 0, when they are not present. References hold as long as the exception.
    /// @{
    bool ContainsMessage() const { return containsMessage_; }
    string const &GetMessage() const { return message_; }
    bool ContainsFileLine() const { return containsFileLine_; }
    string const &GetFile() const { return file_; }
    unsigned int GetLine() const { return line_; }
    /// @}

    /// Plain name of the object's class, by its run-time type.
    string GetClassName() const;

    /// Text of up to three lines: the class name, "@ " with file and line, "! " with the message. A part that is not
    /// asked for, or not present, is left out together with its line.
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
/// A command line that does not follow the grammar: CommandLineParser.
QUILLMARSH_DECLARE_EXCEPTION(CommandLineErrorException);
/// A failed allocation, under a NewThrowsExceptionSentry.
QUILLMARSH_DECLARE_EXCEPTION(NoMemoryException);
/// The system refused a thread, an event, a timer, a window or another resource.
QUILLMARSH_DECLARE_EXCEPTION(SystemResourceException);
/// Inversion of a singular matrix.
QUILLMARSH_DECLARE_EXCEPTION(MatrixNotInvertibleException);
/// An operation that the state or the kind of an object rules out.
QUILLMARSH_DECLARE_EXCEPTION(InvalidUsageException);
/// A data package that cannot be written.
QUILLMARSH_DECLARE_EXCEPTION(SerializationException);
/// A data package that cannot be read.
QUILLMARSH_DECLARE_EXCEPTION(DeserializationException);
/// The GUI toolkit.
QUILLMARSH_DECLARE_EXCEPTION(GUIException);
/// An application, or the command that forces a failure.
QUILLMARSH_DECLARE_EXCEPTION(ApplicationException);

// Thrown by hosts and plug-ins.
/// The kernel of a host.
QUILLMARSH_DECLARE_EXCEPTION(KernelException);
/// A subsystem of an application.
QUILLMARSH_DECLARE_EXCEPTION(GenericSubsystemException);
/// A video renderer.
QUILLMARSH_DECLARE_EXCEPTION(VideoRendererException);
/// A video subsystem.
QUILLMARSH_DECLARE_EXCEPTION(VideoSubsystemException);
/// A video subsystem that works again after a reconfiguration.
QUILLMARSH_DECLARE_EXCEPTION(VideoSubsystemRecoverableException);
/// An input device.
QUILLMARSH_DECLARE_EXCEPTION(HIDException);
/// A driver of input devices.
QUILLMARSH_DECLARE_EXCEPTION(HIDDriverException);
/// The proxy of the DirectInput library.
QUILLMARSH_DECLARE_EXCEPTION(DirectInputProxyException);
/// A generic extension.
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
