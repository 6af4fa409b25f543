// What a program asks of the system: its arguments, standard streams, signals and the thread that runs it.
#ifndef QUILLMARSH_PLATFORM_PROGRAM_H
#define QUILLMARSH_PLATFORM_PROGRAM_H

#include <quillmarsh/platform/types.h>

#include <functional>
#include <string_view>
#include <vector>

namespace quillmarsh::platform
{

/// @name The program
/// @{

/// The program's name and its arguments, from those of main(). Text is UTF-8 on every system; on Linux the bytes are
/// those that the program was given, whatever they are.
QUILLMARSH_API std::vector<string> GetProgramArguments(int count, char **arguments);

/// Full name of the running program's file; `invokedName` where the system cannot tell it.
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

/// To be called first in main(), once. Bytes go through unchanged, a write to a reader that went away fails instead of
/// ending the program, and a stream that the parent closed reads as empty and refuses to be written. A Windows console
/// is set to UTF-8 and to escape sequences, and gets its settings back at the end of the program.
QUILLMARSH_API void PrepareStandardStreams();

/// True for a terminal, or a Windows console.
QUILLMARSH_API bool IsTerminal(eStandardStream stream);

/// True for a terminal that follows escape sequences. On Windows only after PrepareStandardStreams().
QUILLMARSH_API bool TakesEscapeSequences(eStandardStream stream);

/// Width of the terminal in columns; 0 when the stream is none, or its width is not known.
QUILLMARSH_API unsigned int GetTerminalWidth(eStandardStream stream);

/// Writes all of a UTF-8 text to standard output or standard error, past the buffers of the standard library, and waits
/// for a reader that is slow. False, with the system's reason, when that fails.
QUILLMARSH_API bool WriteStandardStream(eStandardStream stream, std::string_view text, string &reason);

/// @}

/// What comes to a program from outside.
enum class eSignal
{
    /// The user interrupts: Ctrl+C.
    e_interrupt,
    /// The program is asked to end.
    e_terminate,
    /// The terminal goes away.
    e_hangUp,
    /// The terminal has another size. Linux only.
    e_resize
};

/// Passes the signals of eSignal on, as calls on a thread of its own, for as long as it lives.
///
/// One at a time, made before any thread that is not to be ended by a signal. On Linux, a signal that the parent set to
/// be ignored stays ignored. On Windows the system ends the program within seconds of e_hangUp and e_terminate.
class QUILLMARSH_API SignalWatch : NoCopy
{
public:
    /// `onSignal` may be called at once. It may lock and allocate, must not throw, and must not destroy the watch.
    explicit SignalWatch(std::function<void(eSignal)> onSignal);
    /// Waits for a call under way.
    ~SignalWatch();

private:
    struct State;
    AutoPtr<State> state_;
};

/// Ends the process at once with the status of this signal, so that the parent learns what ended it: on Linux by the
/// signal itself, on Windows with the status of Ctrl+C. Only buffers of the C library are flushed; no destructor runs.
/// Any thread, a SignalWatch's too. e_resize counts as e_terminate.
[[noreturn]] QUILLMARSH_API void EndProcessBySignal(eSignal signal);

/// @name The calling thread
/// @{

/// The system's number of the thread.
QUILLMARSH_API unsigned int GetCurrentThreadNumber();

/// Sets the priority: -15 idle, -2 to 2 around the normal 0, 15 time-critical. False for another level, and where the
/// system refuses.
QUILLMARSH_API bool SetCurrentThreadPriority(int level);

/// @}

} // namespace quillmarsh::platform

#endif
