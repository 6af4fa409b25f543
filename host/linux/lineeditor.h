// The line editor and the thread that owns the terminal.
#ifndef QUILLMARSH_HOST_LINUX_LINEEDITOR_H
#define QUILLMARSH_HOST_LINUX_LINEEDITOR_H

#include <quillmarsh/basetools/consolebuffers.h>
#include <quillmarsh/framework/completion.h>
#include <quillmarsh/platform/dialogs.h>

#include <condition_variable>
#include <functional>
#include <mutex>
#include <string_view>
#include <thread>
#include <vector>

#include <histedit.h>
#include <termios.h>

namespace quillmarsh::host
{

/// The line editor and the thread that owns the terminal.
///
/// One thread writes everything that the terminal shows. While it waits for a key, other threads wake it when they have
/// work for it: text, a dialog, an interrupt. It removes the prompt, does the work, and shows the prompt again.
class LineEditor : NoCopy
{
public:
    LineEditor(ConsoleBuffers &buffers, std::function<void()> onInput, std::function<void()> onExit);
    ~LineEditor();

    void BeginEditing(string const &prompt);
    void EndEditing();

    /// @name Any thread
    /// @{
    void Interrupt();
    void Resize();
    /// Shows the prompt again after the program was stopped and goes on.
    void Continue();
    /// Shows a text of one output type. Waits while too much text is not shown yet.
    void Write(std::string_view text, unsigned int type);
    platform::eDialogAnswer PresentDialog(platform::DialogRequest const &request);
    /// @}

    /// @name Frame thread
    /// @{

    /// Takes the typed line, if there is one. The prompt stays hidden until FinishLine().
    bool TakeLine(string &line);
    void FinishLine();
    /// Takes the line that the user wants completed, if there is one, and the index of its cursor. The editor waits for
    /// AnswerCompletion().
    bool TakeCompletion(string &line, std::size_t &cursor);
    void AnswerCompletion(Completions const &completions);
    /// @}

private:
    /// A text that the editor's thread gives to the frame thread, and whose return it waits for.
    struct HandOver
    {
        enum class eState
        {
            e_none,
            e_offered,
            e_taken,
            e_done
        };
        eState state = eState::e_none;
        string text;
        /// Only for a completion.
        std::size_t cursor = 0;
        Completions completions;
    };

    struct Dialog
    {
        platform::DialogRequest const &request;
        platform::eDialogAnswer answer;
        bool answered = false;
    };

    struct Work
    {
        string text;
        std::vector<Dialog *> dialogs;
        bool interrupted = false;
        bool resized = false;
        bool continued = false;
        bool IsEmpty() const { return text.empty() && dialogs.empty() && !interrupted && !resized && !continued; }
    };

    /// @name Editor's thread
    /// @{
    void Run();
    void EditOneLine();
    void HandOverAndWait(HandOver &handOver, string const &text, std::size_t cursor = 0);
    void DoWork();
    void ShowText(string const &text);
    void EraseEditArea();
    platform::eDialogAnswer AskDialog(platform::DialogRequest const &request);
    void HandleInterrupt();
    void WaitForWork();
    bool MayEdit();
    bool IsClosing();
    int ReadCharacter(wchar_t *character);
    unsigned char Complete();
    void ReplaceTyped(string const &typed, string const &replacement, string const &rest);
    void RestoreTerminalMode();
    int ServeHistory(HistEvent *event, int operation);
    /// @}

    void Wake();
    template<typename Change>
    void ChangeAndWake(Change &&change);
    bool TakeHandOver(HandOver &handOver, string &text);

    static LineEditor &FromEditor(EditLine *editor);
    static int OnHistory(void *self, HistEvent *event, int operation, ...);

    ConsoleBuffers &buffers_;
    std::function<void()> onInput_;
    std::function<void()> onExit_;
    bool const coloured_;

    std::mutex mutex_;
    std::condition_variable condition_;
    /// @name Under the mutex
    /// @{
    Work work_;
    HandOver line_;
    HandOver completion_;
    bool mayEdit_ = false;
    bool closing_ = false;
    /// The thread has ended.
    bool ended_ = false;
    string prompt_;
    /// @}

    /// @name For the editor's thread only
    /// @{
    EditLine *editor_ = nullptr;
    termios terminalAtStart_{};
    bool inEditor_ = false;
    bool atLineStart_ = true;
    bool exitAsked_ = false;
    bool interruptedBefore_ = false;
    string shownPrompt_;
    unsigned int historyIndex_ = 0;
    string historyText_;
    /// @}

    int wake_[2];
    std::thread thread_;
};

template<typename Change>
void LineEditor::ChangeAndWake(Change &&change)
{
    {
        std::lock_guard const lock(mutex_);
        change();
    }
    condition_.notify_all();
    Wake();
}

/// Returns the width of the terminal, or a usual one if it is not known.
std::size_t GetTerminalColumns();

} // namespace quillmarsh::host

#endif
