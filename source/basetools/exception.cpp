#include <quillmarsh/basetools/exception.h>

#include <quillmarsh/basetools/diagnostics.h>

#include <typeinfo>

namespace quillmarsh
{

Exception::Exception() = default;
Exception::Exception(Exception const &) = default;
Exception &Exception::operator=(Exception const &) = default;
Exception::~Exception() = default;

void Exception::SetMessage(string const &message)
{
    message_ = message;
    containsMessage_ = true;
}

void Exception::SetFileLine(string const &file, unsigned int line)
{
    file_ = file;
    line_ = line;
    containsFileLine_ = true;
}

string Exception::GetClassName() const
{
    return FormatClassName(GetTypeName(typeid(*this)));
}

string const Exception::MakeDescription(bool withClass, bool withFileLine, bool withMessage) const
{
    bool const showFileLine = withFileLine && containsFileLine_;
    bool const showMessage = withMessage && containsMessage_;

    string description;
    if (withClass)
        description = GetClassName() + (showFileLine ? "\n@ " : showMessage ? "\n! " : "");
    if (showFileLine)
        description += FormatSourceCodeLocation(file_, line_, false) + (showMessage ? "\n! " : "");
    if (showMessage)
        description += message_;
    return description;
}

// Not inline, so that each class has its run-time type in this module only.
#define QUILLMARSH_DEFINE_EXCEPTION(name)                                                                              \
    name::name() = default;                                                                                            \
    name::name(name const &) = default;                                                                                \
    name &name::operator=(name const &) = default;                                                                     \
    name::~name() = default

QUILLMARSH_DEFINE_EXCEPTION(CommandLineErrorException);
QUILLMARSH_DEFINE_EXCEPTION(NoMemoryException);
QUILLMARSH_DEFINE_EXCEPTION(SystemResourceException);
QUILLMARSH_DEFINE_EXCEPTION(MatrixNotInvertibleException);
QUILLMARSH_DEFINE_EXCEPTION(InvalidUsageException);
QUILLMARSH_DEFINE_EXCEPTION(SerializationException);
QUILLMARSH_DEFINE_EXCEPTION(DeserializationException);
QUILLMARSH_DEFINE_EXCEPTION(GUIException);
QUILLMARSH_DEFINE_EXCEPTION(ApplicationException);
QUILLMARSH_DEFINE_EXCEPTION(KernelException);
QUILLMARSH_DEFINE_EXCEPTION(GenericSubsystemException);
QUILLMARSH_DEFINE_EXCEPTION(VideoRendererException);
QUILLMARSH_DEFINE_EXCEPTION(VideoSubsystemException);
QUILLMARSH_DEFINE_EXCEPTION(VideoSubsystemRecoverableException);
QUILLMARSH_DEFINE_EXCEPTION(HIDException);
QUILLMARSH_DEFINE_EXCEPTION(HIDDriverException);
QUILLMARSH_DEFINE_EXCEPTION(DirectInputProxyException);
QUILLMARSH_DEFINE_EXCEPTION(GenericExtensionException);

} // namespace quillmarsh
