// What the program needs from the system: its arguments, standard streams, lines of a script, signals.
#ifndef QUILLMARSH_HOST_SYSTEM_H
#define QUILLMARSH_HOST_SYSTEM_H

#include <quillmarsh/platform/types.h>

#include <cstddef>
#include <functional>
#include <string_view>
#include <vector>

// linux/ and win32/ implement what is declared here, and the build picks one.
namespace quillmarsh::host::system
{

/// The program's name and its arguments, UTF-8 on every system.
std::vector<string> GetArguments(int count, char **arguments);

/// Prepares the standard streams: bytes go through unchanged, and a reader that goes away is a failed write.
void PrepareStandardStreams();

bool IsInputTerminal();
bool IsOutputTerminal();
bool IsErrorTerminal();

/// Writes all of the text to standard output; false, and the system's cause, when that fails.
bool WriteStandardOutput(std::string_view text, string &error);

/// Full name of the running program's file.
string GetProgramFile(string const &invokedName);

/// Bytes of a file or of standard input, read on a thread that can be called off.
class Input : NoCopy
{
public:
    virtual ~Input();

    /// Opens a file, or standard input for "-". Null, and the system's cause, when that fails.
    static AutoPtr<Input> Open(string const &name, string &error);

    /// Reads up to `size` bytes, and waits for the first. 0 at the end, after a failure, and once it is called off.
    virtual std::size_t Read(char *buffer, std::size_t size) = 0;
    /// Whether this is a file, which is read without waiting for anybody.
    virtual bool IsFile() const = 0;
    /// Calls reading off; from another thread. False when a Read() that waits cannot be reached.
    virtual bool Cancel() = 0;
};

enum class eSignal
{
    /// The user interrupts.
    e_interrupt,
    /// The program is to end.
    e_terminate,
    /// The terminal has another size.
    e_resize
};

/// While it lives, signals from outside come as calls on a thread of their own. To be made before other threads are,
/// one at a time.
class SignalWatch : NoCopy
{
public:
    explicit SignalWatch(std::function<void(eSignal)> onSignal);
    ~SignalWatch();

private:
    struct State;
    AutoPtr<State> state_;
};

} // namespace quillmarsh::host::system

#endif
