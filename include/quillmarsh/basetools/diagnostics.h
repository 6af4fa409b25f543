// Assertions, their dialogs, and the text forms of class, object and source location.
#ifndef QUILLMARSH_BASETOOLS_DIAGNOSTICS_H
#define QUILLMARSH_BASETOOLS_DIAGNOSTICS_H

#include <quillmarsh/platform/types.h>

#include <atomic>
#include <typeinfo>

namespace quillmarsh
{

/// @name Names
/// @{

/// Readable name of a type, the same on every compiler: with namespaces, without the leading `quillmarsh::`.
QUILLMARSH_API string GetTypeName(std::type_info const &type);

/// Type name without a leading "struct " or "class ". A name that consists of that prefix alone stays.
QUILLMARSH_API string FormatClassName(string const &typeName);

/// Class name, "@" and the object's address with one "0x" in front.
QUILLMARSH_API string FormatObjectName(string const &typeName, void const *object);

/// "file(line)". With `forceKernelName` the text goes through ForceWinKernelName(), so that it can name a system
/// object.
QUILLMARSH_API string FormatSourceCodeLocation(string const &file, unsigned int line, bool forceKernelName = false);

/// @}
/// @name Dialogs
/// All of them are modal, carry an error mark, and block the calling thread until they are answered. They are shown
/// through platform::DialogPresenter.
/// @{

/// Asks what to do about a failed assertion. Returns true when the program is to break into the debugger. Shows nothing
/// and returns false when `ignoreAlways` is set; the answer Ignore sets it. `defaultButton` 2 makes Retry the default
/// answer, 3 makes it Ignore, and every other value makes it Abort.
QUILLMARSH_API bool ShowDialogAbortRetryIgnore(bool &ignoreAlways, unsigned int defaultButton, string const &title,
                                               string const &message, string const &file, unsigned int line);

/// Shows an error dialog with OK and Cancel; returns true when Cancel was pressed. `defaultButton` 2 makes Cancel the
/// default.
QUILLMARSH_API bool ShowDialogCancelOk(unsigned int defaultButton, string const &title, string const &text);

/// Shows an error dialog with OK.
QUILLMARSH_API void ShowDialogOk(string const &title, string const &text);

/// @}

/// Compares the sizes of the built-in types with those that the binary formats rely on, and writes one line for each
/// mismatch. Returns true when all fit. A `long` of more than four bytes is a mismatch, though streams move four bytes
/// of it (see serializer.h).
QUILLMARSH_API bool CheckBuiltInTypeSizes(ostream &out);

/// One place that asserts. It remembers whether the user chose to ignore the place, and is initialised before any code
/// runs. Any thread.
class QUILLMARSH_API AssertionSite
{
public:
    /// `file` and `line` are the place in the source. `file` is borrowed and outlives the site.
    constexpr AssertionSite(char const *file, unsigned int line) : file_(file), line_(line) {}

    /// Shows the dialog, unless the user chose to ignore this place before. Returns true when the program is to trap.
    bool Report(char const *title, string const &message);

private:
    char const *file_;
    unsigned int line_;
    std::atomic<bool> ignoreAlways_{false};
};

} // namespace quillmarsh

#if defined(__i386__) || defined(__x86_64__)
#define QUILLMARSH_TRAP() __asm__ __volatile__("int3")
#else
#define QUILLMARSH_TRAP() __builtin_trap()
#endif

/// Reports a failure at this place whether or not assertions are on; traps when the user answers Abort.
#define QUILLMARSH_REPORT_FAILURE(title, message)                                                                      \
    do                                                                                                                 \
    {                                                                                                                  \
        static ::quillmarsh::AssertionSite quillmarshSite(__FILE__, __LINE__);                                         \
        if (quillmarshSite.Report(title, message))                                                                     \
            QUILLMARSH_TRAP();                                                                                         \
    } while (false)

/// QUILLMARSH_ASSERT(condition, message): reports a mistake of the program when the condition does not hold. The
/// condition is a pure test, which builds without assertions leave out. After Retry and Ignore the program goes on.
///
/// QUILLMARSH_VERIFY(action, message): the same for an action that has to happen in every build, and that gives true on
/// success.
#if QUILLMARSH_ASSERTIONS
#define QUILLMARSH_ASSERT(condition, message)                                                                          \
    do                                                                                                                 \
    {                                                                                                                  \
        if (!(condition))                                                                                              \
            QUILLMARSH_REPORT_FAILURE("Assert Failed", message);                                                       \
    } while (false)
#define QUILLMARSH_VERIFY(action, message)                                                                             \
    do                                                                                                                 \
    {                                                                                                                  \
        if (!(action))                                                                                                 \
            QUILLMARSH_REPORT_FAILURE("Verify Failed", message);                                                       \
    } while (false)
#else
#define QUILLMARSH_ASSERT(condition, message)                                                                          \
    do                                                                                                                 \
    {                                                                                                                  \
        if (false)                                                                                                     \
        {                                                                                                              \
            static_cast<void>(condition);                                                                              \
            static_cast<void>(message);                                                                                \
        }                                                                                                              \
    } while (false)
#define QUILLMARSH_VERIFY(action, message)                                                                             \
    do                                                                                                                 \
    {                                                                                                                  \
        if (!(action) && false)                                                                                        \
            static_cast<void>(message);                                                                                \
    } while (false)
#endif

#endif
