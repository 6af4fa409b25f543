// The console in the terminal that the host was started from.
#ifndef QUILLMARSH_HOST_TERMINAL_H
#define QUILLMARSH_HOST_TERMINAL_H

#include <quillmarsh/host/linesource.h>
#include <quillmarsh/host/textoutput.h>

#include <quillmarsh/basetools/consolebuffers.h>
#include <quillmarsh/platform/dialogs.h>

#include <functional>
#include <memory>

// linux/ and win32/ implement the class, and the build picks one.
namespace quillmarsh::host
{

/// The console in the terminal: a prompt with line editing, and the console's text above it.
///
/// One thread of its own does everything that shows on the terminal, so that text and prompt stay apart whoever writes.
/// Lines are handed to the frame thread one at a time; the prompt comes back when a line is done. While it lives it
/// presents the library's dialogs.
///
/// On Windows the system edits the lines: text that comes while one is being typed shows at once, an answer to a dialog
/// wants Enter, and the second interrupt in a row ends the program, whatever has been typed.
class Terminal : public LineSource, public TextOutput, private platform::DialogPresenter, NoCopy
{
public:
    /// What the terminal asks of the program. Called on any thread.
    struct Client
    {
        /// A line, or something to serve, is there.
        std::function<void()> onInput;
        /// The user wants the program to end.
        std::function<void()> onExit;
    };

    /// The history of the buffers, which are borrowed, is what the up and down keys go through.
    Terminal(ConsoleBuffers &buffers, Client client);
    /// Shows what is still to be shown, and gives the terminal back as it was.
    ~Terminal() override;

    /// Offers the prompt.
    void BeginEditing(string const &prompt);
    /// Takes the prompt away for good.
    void EndEditing();

    /// @name Any thread
    /// @{

    /// The user interrupts: the line is cleared, and on an empty line the second interrupt ends the program.
    void OnInterrupt();
    /// The terminal has another size.
    void OnResize();
    void Write(std::string_view text, unsigned int type) override;
    /// @}

    eNext Take(SourceLine &line) override;
    void OnDone() override;
    bool IsTyped() const override;
    string const &GetName() const override;
    void Serve(std_command_interpreter::Interpreter &interpreter, ostream &out) override;

private:
    struct State;

    platform::eDialogAnswer Present(platform::DialogRequest const &request) override;

    std::shared_ptr<State> state_;
    platform::DialogPresenter *previousPresenter_;
};

} // namespace quillmarsh::host

#endif
