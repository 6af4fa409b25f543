#include "../terminal.h"

#include "../dialogtext.h"
#include "consoleinput.h"
#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/framework/stdcommandinterpreter.h>
#include <quillmarsh/platform/program.h>

#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <thread>

namespace quillmarsh::host
{

namespace
{

/// A dialog that waits for its answer.
struct OpenDialog
{
    platform::DialogRequest const &request;
    std::optional<platform::eDialogAnswer> answer;
};

} // namespace

/// State that the reading thread and the frame thread share. It outlives the terminal, because a waiting read of the
/// console cannot be cancelled.
struct Terminal::State
{
    explicit State(Client requests) : client(std::move(requests)) {}

    Client client;
    string const name = "the terminal";
    bool const coloured = WantsColours();

    std::mutex mutex;
    std::condition_variable condition;
    string prompt;
    bool mayEdit = false;
    bool closing = false;
    bool lineIsDone = true;
    /// A thread waits for a line, which may be for the console or for a dialog.
    bool isReading = false;
    bool atLineStart = true;
    unsigned int numInterrupts = 0;
    std::deque<string> lines;
    std::deque<OpenDialog *> dialogs;

    /// A line that the user wants completed, and the answer of the frame thread.
    enum class eCompletion
    {
        e_none,
        e_offered,
        e_done
    };
    eCompletion completion = eCompletion::e_none;
    string completionLine;
    Completions completions;

    void Put(string const &text)
    {
        string error;
        platform::WriteStandardStream(platform::eStandardStream::e_output, text, error);
        if (!text.empty())
            atLineStart = text.back() == '\n';
    }

    void ShowPrompt() { Put((atLineStart ? "" : "\n") + prompt); }

    static void Run(std::shared_ptr<State> const &state);
    bool ReadLine(std::unique_lock<std::mutex> &lock);
    void Accept(string const &line);
    void AnswerByDefault();
    string Complete(string const &typed);
    string ShowCompletions(string const &typed);
};

void Terminal::State::Run(std::shared_ptr<State> const &state)
{
    std::unique_lock lock(state->mutex);
    auto const mayRead = [&state]
    { return state->mayEdit && state->lineIsDone && !state->isReading && state->dialogs.empty(); };
    do
    {
        state->condition.wait(lock, [&] { return state->closing || mayRead(); });
        if (state->closing)
            return;
        state->ShowPrompt();
    } while (state->ReadLine(lock));
    if (!state->closing)
        state->client.onExit();
}

/// Waits for a line and passes it to Accept(). One thread at a time. False at the end of the input.
bool Terminal::State::ReadLine(std::unique_lock<std::mutex> &lock)
{
    isReading = true;
    lock.unlock();
    string line;
    bool const succeeded = ReadConsoleLine(line, [this](string const &typed) { return Complete(typed); });
    lock.lock();
    isReading = false;
    if (succeeded)
        Accept(line);
    else
        AnswerByDefault();
    condition.notify_all();
    return succeeded;
}

/// Takes a line as the answer to an open dialog, or else as a line for the console.
void Terminal::State::Accept(string const &line)
{
    if (closing)
    {
        AnswerByDefault();
        return;
    }
    atLineStart = true;
    numInterrupts = 0;
    if (dialogs.empty())
    {
        lines.push_back(line);
        lineIsDone = false;
        client.onInput();
        return;
    }
    dialogs.front()->answer = FindDialogAnswer(dialogs.front()->request, line);
    if (dialogs.front()->answer)
        dialogs.pop_front();
    else
        Put(FormatQuestion(dialogs.front()->request));
}

/// Asks the frame thread to complete a line. Returns the line that the screen shows then.
string Terminal::State::Complete(string const &typed)
{
    std::unique_lock lock(mutex);
    if (!mayEdit || closing || !dialogs.empty())
        return typed;
    completionLine = typed;
    completion = eCompletion::e_offered;
    client.onInput();
    // A dialog may open meanwhile; the thread must then read its answer.
    condition.wait(lock, [this] { return completion == eCompletion::e_done || closing || !dialogs.empty(); });
    bool const isDone = completion == eCompletion::e_done;
    completion = eCompletion::e_none;
    return isDone ? ShowCompletions(typed) : typed;
}

string Terminal::State::ShowCompletions(string const &typed)
{
    std::vector<CompletionCandidate> const &candidates = completions.candidates;
    if (candidates.empty())
    {
        Put("\a");
        atLineStart = false;
        return typed;
    }
    string line = typed.substr(0, completions.begin) + completions.commonReplacement;
    if (candidates.size() == 1 && candidates.front().isWhole)
        line += ' ';
    unsigned int const width = platform::GetTerminalWidth(platform::eStandardStream::e_output);
    if (candidates.size() > 1)
        Put("\n" + FormatCandidates(candidates, width > 0 ? width : 80, coloured) + prompt + line);
    else if (line.starts_with(typed))
        Put(line.substr(typed.size()));
    else
        Put("\n" + prompt + line);
    return line;
}

void Terminal::State::AnswerByDefault()
{
    for (OpenDialog *const dialog : dialogs)
        dialog->answer = dialog->request.defaultAnswer;
    dialogs.clear();
}

Terminal::Terminal(ConsoleBuffers &, Client client)
    : state_(std::make_shared<State>(std::move(client))),
      previousPresenter_(platform::SetDialogPresenter(this))
{
    std::thread([state = state_] { State::Run(state); }).detach();
}

Terminal::~Terminal()
{
    platform::SetDialogPresenter(previousPresenter_);
    std::lock_guard const lock(state_->mutex);
    state_->closing = true;
    state_->AnswerByDefault();
    state_->condition.notify_all();
}

void Terminal::BeginEditing(string const &prompt)
{
    std::lock_guard const lock(state_->mutex);
    state_->prompt = MakePrintable(prompt);
    state_->mayEdit = true;
    state_->condition.notify_all();
}

void Terminal::EndEditing()
{
    std::lock_guard const lock(state_->mutex);
    state_->mayEdit = false;
}

void Terminal::OnInterrupt()
{
    std::lock_guard const lock(state_->mutex);
    state_->Put("^C\n");
    if (++state_->numInterrupts >= 2)
        state_->client.onExit();
    else if (state_->mayEdit)
    {
        state_->Put("Interrupt again to exit.\n");
        state_->ShowPrompt();
    }
}

void Terminal::OnResize() {}

void Terminal::OnContinue() {}

void Terminal::Write(std::string_view text, unsigned int type)
{
    string shown;
    AppendColoured(shown, MakePrintable(string(text), true), state_->coloured ? type : OutputStream::e_typeInfo);
    std::lock_guard const lock(state_->mutex);
    bool const promptIsShown = state_->mayEdit && state_->lineIsDone;
    state_->Put(promptIsShown && !state_->atLineStart ? "\n" + shown : shown);
    if (promptIsShown)
        state_->ShowPrompt();
}

LineSource::eNext Terminal::Take(SourceLine &line)
{
    std::lock_guard const lock(state_->mutex);
    if (state_->lines.empty())
        return eNext::e_none;
    line.text = std::move(state_->lines.front());
    state_->lines.pop_front();
    ++line.number;
    return eNext::e_line;
}

void Terminal::OnDone()
{
    std::lock_guard const lock(state_->mutex);
    state_->lineIsDone = true;
    state_->condition.notify_all();
}

bool Terminal::IsTyped() const
{
    return true;
}

string const &Terminal::GetName() const
{
    return state_->name;
}

void Terminal::Serve(std_command_interpreter::Interpreter &interpreter, ostream &)
{
    string line;
    {
        std::lock_guard const lock(state_->mutex);
        if (state_->completion != State::eCompletion::e_offered)
            return;
        line = state_->completionLine;
    }
    Completions completions = interpreter.FindCompletions(line);
    std::lock_guard const lock(state_->mutex);
    state_->completions = std::move(completions);
    if (state_->completion == State::eCompletion::e_offered)
        state_->completion = State::eCompletion::e_done;
    state_->condition.notify_all();
}

platform::eDialogAnswer Terminal::Present(platform::DialogRequest const &request)
{
    std::unique_lock lock(state_->mutex);
    state_->Put("\n" + FormatDialog(request));
    OpenDialog dialog{request, {}};
    state_->dialogs.push_back(&dialog);
    state_->condition.notify_all();
    // If another thread waits for a line, it takes the answer; otherwise this thread does.
    while (!dialog.answer)
    {
        if (state_->isReading)
            state_->condition.wait(lock);
        else
            state_->ReadLine(lock);
    }
    return *dialog.answer;
}

} // namespace quillmarsh::host
