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

/// Type name without a leading "struct " or "class ". A name that is nothing else stays.
QUILLMARSH_API string FormatClassName(string const &typeName);

/// Class name, "@" and the object's address with one "0x" in front.
QUILLMARSH_API string FormatObjectName(string const &typeName, void const *object);

/// "file(line)". With `forceKernelName`, made usable as the name of a system object (ForceWinKernelName).
QUILLMARSH_API string FormatSourceCodeLocation(string const &file, unsigned int line, bool forceKernelName = false);

/// @}
/// @name Dialogs
/// All of them are modal, carry an error mark, and block the calling thread until they are answered. They are shown
/// through platform::DialogPresenter.
/// @{

/// Asks what to do about a failed assertion. True means: break into the debugger.
/// Nothing is shown, and false returned, when `ignoreAlways` is set; the answer Ignore sets it.
/// `defaultButton` 2 makes Retry the default, 3 Ignore, and anything else Abort.
QUILLMARSH_API bool ShowDialogAbortRetryIgnore(bool &ignoreAlways, unsigned int defaultButton, string const &title,
                                               string const &message, string const &file, unsigned int line);

/// Error dialog with OK and Cancel; true when Cancel was pressed. `defaultButton` 2 makes Cancel the default.
QUILLMARSH_API bool ShowDialogCancelOk(unsigned int defaultButton, string const &title, string const &text);

/// Error dialog with OK.
QUILLMARSH_API void ShowDialogOk(string const &title, string const &text);

/// @}

/// Compares the sizes of the built-in types with those that the binary formats rely on; one line for each mismatch.
/// True when all fit. Where `long` is wider than four bytes it says so; streams still move four (see serializer.h).
QUILLMARSH_API bool CheckBuiltInTypeSizes(ostream &out);

/// One place that asserts. Remembers, constant-initialised, whether the user wants to hear of it again. Any thread.
class QUILLMARSH_API AssertionSite
{
public:
    /// The place in the source; the text has to stay.
    constexpr AssertionSite(char const *file, unsigned int line) : file_(file), line_(line) {}

    /// Shows the dialog, unless Ignore silenced this place before. True means: trap.
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

/// QUILLMARSH_ASSERT(condition, message): a mistake of the program when the condition does not hold. A pure test, left
/// out of builds without assertions. The program goes on past it after Retry and Ignore.
///
/// QUILLMARSH_VERIFY(action, message): the same for an action that has to happen in every build and that gives true on
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
