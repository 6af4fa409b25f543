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
    Exception();
    Exception(Exception const &);
    Exception &operator=(Exception const &);
    virtual ~Exception();

    /// Stores the message. It counts as present from then on, even when it is empty.
    void SetMessage(string const &message);
    /// Stores the source location, which counts as present from then on.
    void SetFileLine(string const &file, unsigned int line);

    bool ContainsMessage() const { return containsMessage_; }
    string const &GetMessage() const { return message_; }
    bool ContainsFileLine() const { return containsFileLine_; }
    string const &GetFile() const { return file_; }
    unsigned int GetLine() const { return line_; }

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

#define QUILLMARSH_DECLARE_EXCEPTION(name)                                                                             \
    class QUILLMARSH_API name : public Exception                                                                       \
    {                                                                                                                  \
    public:                                                                                                            \
        name();                                                                                                        \
        name(name const &);                                                                                            \
        name &operator=(name const &);                                                                                 \
        ~name() override;                                                                                              \
    }

/// @name Thrown by the library
/// @{
QUILLMARSH_DECLARE_EXCEPTION(CommandLineErrorException);
QUILLMARSH_DECLARE_EXCEPTION(NoMemoryException);
QUILLMARSH_DECLARE_EXCEPTION(SystemResourceException);
QUILLMARSH_DECLARE_EXCEPTION(MatrixNotInvertibleException);
QUILLMARSH_DECLARE_EXCEPTION(InvalidUsageException);
QUILLMARSH_DECLARE_EXCEPTION(SerializationException);
QUILLMARSH_DECLARE_EXCEPTION(DeserializationException);
QUILLMARSH_DECLARE_EXCEPTION(GUIException);
QUILLMARSH_DECLARE_EXCEPTION(ApplicationException);
/// @}

/// @name Thrown by hosts and plug-ins
/// @{
QUILLMARSH_DECLARE_EXCEPTION(KernelException);
QUILLMARSH_DECLARE_EXCEPTION(GenericSubsystemException);
QUILLMARSH_DECLARE_EXCEPTION(VideoRendererException);
QUILLMARSH_DECLARE_EXCEPTION(VideoSubsystemException);
QUILLMARSH_DECLARE_EXCEPTION(VideoSubsystemRecoverableException);
QUILLMARSH_DECLARE_EXCEPTION(HIDException);
QUILLMARSH_DECLARE_EXCEPTION(HIDDriverException);
QUILLMARSH_DECLARE_EXCEPTION(DirectInputProxyException);
QUILLMARSH_DECLARE_EXCEPTION(GenericExtensionException);
/// @}

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
