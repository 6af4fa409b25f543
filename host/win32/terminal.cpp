#include "../terminal.h"

#include "../dialogtext.h"
#include "../system.h"
#include "consoleinput.h"

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

namespace quillmarsh::host
{

/// What the thread that reads lines shares with the frame thread; it outlives the terminal, since a read that waits for
/// the console cannot be called off.
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
    bool atLineStart = true;
    unsigned int numInterrupts = 0;
    std::deque<string> lines;
    std::deque<platform::DialogRequest const *> dialogs;
    platform::eDialogAnswer answer{};

    void Put(string const &text)
    {
        string error;
        system::WriteStandardOutput(text, error);
        if (!text.empty())
            atLineStart = text.back() == '\n';
    }

    void ShowPrompt() { Put((atLineStart ? "" : "\n") + prompt); }

    static void Run(std::shared_ptr<State> const &state);
    void Accept(string const &line);
};

void Terminal::State::Run(std::shared_ptr<State> const &state)
{
    while (true)
    {
        {
            std::unique_lock lock(state->mutex);
            state->condition.wait(lock, [&] { return state->closing || (state->mayEdit && state->lineIsDone); });
            if (state->closing)
                return;
            state->ShowPrompt();
        }
        string line;
        if (!ReadConsoleLine(line))
            break;
        state->Accept(line);
    }
    std::lock_guard const lock(state->mutex);
    if (!state->closing)
        state->client.onExit();
}

/// A line is the answer of a dialog that is open, and else one for the console.
void Terminal::State::Accept(string const &line)
{
    std::lock_guard const lock(mutex);
    if (closing)
        return;
    atLineStart = true;
    numInterrupts = 0;
    if (dialogs.empty())
    {
        lines.push_back(line);
        lineIsDone = false;
        client.onInput();
        return;
    }
    if (auto const found = FindDialogAnswer(*dialogs.front(), line.empty() ? '\n' : line.front()))
    {
        answer = *found;
        dialogs.pop_front();
        condition.notify_all();
    }
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
    state_->condition.notify_all();
}

void Terminal::BeginEditing(string const &prompt)
{
    std::lock_guard const lock(state_->mutex);
    state_->prompt = prompt;
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

void Terminal::Write(std::string_view text, unsigned int type)
{
    string shown;
    if (state_->coloured)
        AppendColoured(shown, text, type);
    else
        shown = text;
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

void Terminal::Serve(std_command_interpreter::Interpreter &, ostream &) {}

platform::eDialogAnswer Terminal::Present(platform::DialogRequest const &request)
{
    std::unique_lock lock(state_->mutex);
    state_->Put("\n" + FormatDialog(request));
    // While no line is being read, nobody but this thread reads the answer.
    if (!state_->mayEdit || !state_->lineIsDone)
    {
        lock.unlock();
        string line;
        while (ReadConsoleLine(line))
        {
            if (auto const found = FindDialogAnswer(request, line.empty() ? '\n' : line.front()))
                return *found;
        }
        return request.defaultAnswer;
    }
    state_->dialogs.push_back(&request);
    auto const isAnswered = [&]
    {
        std::deque<platform::DialogRequest const *> const &dialogs = state_->dialogs;
        return std::find(dialogs.begin(), dialogs.end(), &request) == dialogs.end();
    };
    state_->condition.wait(lock, isAnswered);
    return state_->answer;
}

} // namespace quillmarsh::host
