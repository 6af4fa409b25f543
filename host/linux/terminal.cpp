#include "../terminal.h"

#include "lineeditor.h"

#include <quillmarsh/framework/stdcommandinterpreter.h>

namespace quillmarsh::host
{

/// The editor, and the name of the terminal for messages.
struct Terminal::State : LineEditor
{
    using LineEditor::LineEditor;

    string const name = "the terminal";
};

Terminal::Terminal(ConsoleBuffers &buffers, Client client)
    : state_(std::make_shared<State>(buffers, std::move(client.onInput), std::move(client.onExit))),
      previousPresenter_(platform::SetDialogPresenter(this))
{
}

Terminal::~Terminal()
{
    EndEditing();
    platform::SetDialogPresenter(previousPresenter_);
}

void Terminal::BeginEditing(string const &prompt)
{
    state_->BeginEditing(prompt);
}

void Terminal::EndEditing()
{
    state_->EndEditing();
}

void Terminal::OnInterrupt()
{
    state_->Interrupt();
}

void Terminal::OnResize()
{
    state_->Resize();
}

void Terminal::OnContinue()
{
    state_->Continue();
}

void Terminal::Write(std::string_view text, unsigned int type)
{
    state_->Write(text, type);
}

LineSource::eNext Terminal::Take(SourceLine &line)
{
    if (!state_->TakeLine(line.text))
        return eNext::e_none;
    ++line.number;
    return eNext::e_line;
}

void Terminal::OnDone()
{
    state_->FinishLine();
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
    std::size_t cursor = 0;
    if (state_->TakeCompletion(line, cursor))
        state_->AnswerCompletion(interpreter.FindCompletions(line, cursor));
}

platform::eDialogAnswer Terminal::Present(platform::DialogRequest const &request)
{
    return state_->PresentDialog(request);
}

} // namespace quillmarsh::host
