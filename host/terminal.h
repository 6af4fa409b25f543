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
/// Its own thread writes everything that the terminal shows, so that text and prompt never mix. The frame thread gets
/// the lines one at a time; the prompt returns when a line is done. While it lives, it presents the library's dialogs.
///
/// On Windows the system edits the lines. There, text appears at once even while the user types a line, an answer to a
/// dialog needs Enter, and the second interrupt in a row ends the program even if the line is not empty.
class Terminal : public LineSource, public TextOutput, private platform::DialogPresenter, NoCopy
{
public:
    /// Calls from the terminal to the program, on any thread.
    struct Client
    {
        /// A line, or a request for Serve(), has arrived.
        std::function<void()> onInput;
        /// The user wants the program to end.
        std::function<void()> onExit;
    };

    /// Borrows `buffers`, whose history the up and down keys show.
    Terminal(ConsoleBuffers &buffers, Client client);
    /// Shows the remaining text, and restores the terminal.
    ~Terminal() override;

    /// Shows the prompt, and takes lines from now on.
    void BeginEditing(string const &prompt);
    /// Removes the prompt, and takes no more lines.
    void EndEditing();

    /// @name Any thread
    /// @{

    /// Handles an interrupt by the user: clears the line. On an empty line, the second interrupt ends the program.
    void OnInterrupt();
    /// Adapts to a new size of the terminal.
    void OnResize();
    /// Shows the prompt again after the program was stopped and goes on.
    void OnContinue();
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
