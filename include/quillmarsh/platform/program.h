// What a program needs from the system: its arguments, standard streams, signals, and its threads' numbers and
// priorities.
#ifndef QUILLMARSH_PLATFORM_PROGRAM_H
#define QUILLMARSH_PLATFORM_PROGRAM_H

#include <quillmarsh/platform/types.h>

#include <functional>
#include <string_view>
#include <vector>

namespace quillmarsh::platform
{

/// @name The program
/// Any thread.
/// @{

/// Returns the program's name and its arguments, from the parameters of main(). The text is UTF-8 on Windows; on Linux
/// it has exactly the bytes that the program was given.
QUILLMARSH_API std::vector<string> GetProgramArguments(int count, char **arguments);

/// Returns the full name of the running program's file, or `invokedName` when the system does not know it.
QUILLMARSH_API string GetProgramFileName(string const &invokedName);

/// @}

/// One of the three streams that a program starts with.
enum class eStandardStream
{
    e_input,
    e_output,
    e_error
};

/// @name Standard streams
/// Any thread, except for PrepareStandardStreams().
/// @{

/// Prepares the standard streams; call it once, first in main(). From then on, bytes pass unchanged, a write to a
/// closed pipe fails instead of ending the program, and a stream that the parent process closed reads as empty and
/// cannot be written. A Windows console is switched to UTF-8 and to escape sequences until the program ends.
QUILLMARSH_API void PrepareStandardStreams();

/// True when the stream is a terminal or a Windows console.
QUILLMARSH_API bool IsTerminal(eStandardStream stream);

/// True when the stream is a terminal that understands escape sequences. On Windows, false before
/// PrepareStandardStreams().
QUILLMARSH_API bool TakesEscapeSequences(eStandardStream stream);

/// Returns the width of the terminal in columns; 0 when the stream is no terminal, or the width is not known.
QUILLMARSH_API unsigned int GetTerminalWidth(eStandardStream stream);

/// Writes a whole UTF-8 text to standard output or standard error, without the buffers of the standard library, and
/// waits for a slow reader. On failure it returns false and sets `reason` to the system's text.
QUILLMARSH_API bool WriteStandardStream(eStandardStream stream, std::string_view text, string &reason);

/// @}

/// Signals that a program can receive.
enum class eSignal
{
    /// The user interrupts: Ctrl+C.
    e_interrupt,
    /// The program is asked to end.
    e_terminate,
    /// The terminal was closed.
    e_hangUp,
    /// The size of the terminal has changed. Linux only.
    e_resize,
    /// The program was stopped, and goes on. Linux only.
    e_continue
};

/// Calls a function, on a thread of its own, for each signal of eSignal that the program receives while the watch
/// exists.
///
/// A program can have one watch at a time, and makes it before it starts other threads: on Linux, a signal that reaches
/// an older thread ends the program. On Linux, a signal that the parent process set to be ignored stays ignored. On
/// Windows, the system ends the program a few seconds after e_hangUp and e_terminate.
class QUILLMARSH_API SignalWatch : NoCopy
{
public:
    /// Starts the watch; the first call of `onSignal` can come before the constructor returns. `onSignal` may lock and
    /// allocate; it must not throw or destroy the watch.
    explicit SignalWatch(std::function<void(eSignal)> onSignal);
    /// Ends the watch, after any call that is in progress.
    ~SignalWatch();

private:
    struct State;
    AutoPtr<State> state_;
};

/// Ends the process at once, with the status that tells the parent process which signal ended it: on Linux by the
/// signal itself, on Windows with the status of Ctrl+C. The buffers of the C library are flushed; no destructor runs.
/// e_resize and e_continue count as e_terminate. Any thread, that of a SignalWatch included.
[[noreturn]] QUILLMARSH_API void EndProcessBySignal(eSignal signal);

/// @name The calling thread
/// Any thread.
/// @{

/// Returns the system's number of the calling thread.
QUILLMARSH_API unsigned int GetCurrentThreadNumber();

/// Sets the priority of the calling thread: -15 is idle, 0 is normal with steps from -2 to 2, and 15 is time-critical.
/// Returns false for any other level, and when the system refuses.
QUILLMARSH_API bool SetCurrentThreadPriority(int level);

/// @}

} // namespace quillmarsh::platform

#endif
