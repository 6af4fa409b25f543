#include <quillmarsh/host/consolelines.h>

#include <quillmarsh/basetools/texttools.h>

namespace quillmarsh::host
{

namespace
{

bool IsBlankOrComment(string const &text)
{
    std::size_t const begin = text.find_first_not_of(" \t");
    return begin == string::npos || text[begin] == '#';
}

} // namespace

ConsoleLines::ConsoleLines(HostKernel &kernel, LineSource *source, bool stopOnError,
                           std::function<void(string const &)> report)
    : kernel_(kernel),
      source_(source),
      stopOnError_(stopOnError),
      report_(std::move(report))
{
}

void ConsoleLines::Run()
{
    RunQueuedLines();
    if (source_ == nullptr || IsAtEnd())
        return;
    source_->Serve(*kernel_.GetCommandInterpreter(), kernel_.GetConsole().GetStream());
    if (framesToWait_ > 0 && --framesToWait_ > 0)
        return;
    while (true)
    {
        // A line that ended the program is not followed by another prompt.
        if (kernel_.IsExitRequested() || IsAtEnd())
            return;
        if (lineIsOpen_)
            source_->OnDone();
        lineIsOpen_ = false;
        next_ = source_->Take(line_);
        if (next_ != LineSource::eNext::e_line)
            return;
        lineIsOpen_ = true;
        RunLine(line_);
        if (framesToWait_ > 0)
            return;
    }
}

void ConsoleLines::RunQueuedLines()
{
    kernel_.TakeQueuedLines(queuedLines_);
    for (string const &line : queuedLines_)
    {
        if (kernel_.IsExitRequested())
            return;
        kernel_.GetFailures().SetPlace("a queued console line");
        SharedOutputStream &out = kernel_.GetConsole().GetStream();
        kernel_.GetCommandInterpreter()->InterpretScript(out, line, false);
        out.flush();
    }
}

void ConsoleLines::RunLine(SourceLine const &line)
{
    if (IsBlankOrComment(line.text))
        return;
    place_ = source_->IsTyped() ? "a console line" : "line " + MakeString(line.number) + " of " + source_->GetName();
    kernel_.GetFailures().SetPlace(place_.c_str());

    SharedOutputStream &out = kernel_.GetConsole().GetStream();
    std_command_interpreter::Interpreter &interpreter = *kernel_.GetCommandInterpreter();
    bool succeeded = false;
    if (source_->IsTyped())
    {
        kernel_.GetConsole().EnterTypedLine(line.text);
        succeeded = interpreter.InterpretCommandLine(line.text, out);
    }
    else
    {
        succeeded = interpreter.InterpretScript(out, line.text, false) == 0;
    }
    out.flush();
    if (!succeeded && !source_->IsTyped())
        OnFailedLine(line);
}

void ConsoleLines::OnFailedLine(SourceLine const &line)
{
    hasFailed_ = true;
    report_(source_->GetName() + "(" + MakeString(line.number) + "): the line failed" +
            (stopOnError_ ? ", the script stops here" : ""));
    if (stopOnError_)
        next_ = LineSource::eNext::e_end;
}

} // namespace quillmarsh::host
