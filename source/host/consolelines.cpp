#include <quillmarsh/host/consolelines.h>

#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/framework/commandtable.h>
#include <quillmarsh/host/consolehistory.h>

#include "commands/hostcommands.h"

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

ConsoleLines::ConsoleLines(HostKernel &kernel, std::function<void(string const &)> report)
    : kernel_(kernel),
      report_(std::move(report))
{
    kernel_.GetCommandInterpreter()->SetLineInspector([this](Command const &command, CommandLineParser const &parser)
                                                      { return Inspect(command, parser); });
}

ConsoleLines::~ConsoleLines()
{
    kernel_.GetCommandInterpreter()->SetLineInspector({});
}

void ConsoleLines::SetSource(LineSource *source, bool stopOnError)
{
    source_ = source;
    stopOnError_ = stopOnError;
    next_ = LineSource::eNext::e_none;
    lineIsOpen_ = false;
}

bool ConsoleLines::PassFrame()
{
    unsigned int frames = framesToWait_;
    // Another thread may end the wait at the same time.
    while (frames > 0 && !framesToWait_.compare_exchange_weak(frames, frames - 1))
    {
    }
    return frames > 1;
}

void ConsoleLines::WaitFor(LineWork work)
{
    work_ = std::move(work);
    isWorkOfSource_ = runsLine_;
    endsWork_ = false;
    hasWork_ = true;
}

bool ConsoleLines::EndWait()
{
    bool const waited = framesToWait_.exchange(0) > 0;
    endsWork_ = hasWork_.load();
    return endsWork_ || waited;
}

bool ConsoleLines::PassWork()
{
    if (!hasWork_)
        return true;
    string failure;
    if (endsWork_.exchange(false))
        work_.cancel();
    else if (!work_.isDone(failure))
        return false;
    hasWork_ = false;
    work_ = {};
    if (failure.empty())
        return true;
    if (isWorkOfSource_ && !source_->IsTyped())
        OnFailedLine(failure);
    else
        RefuseLine(kernel_.GetConsole().GetStream(), failure);
    return true;
}

void ConsoleLines::Run()
{
    bool const isFree = PassWork();
    RunQueuedLines();
    if (source_ == nullptr || IsAtEnd())
        return;
    source_->Serve(*kernel_.GetCommandInterpreter(), kernel_.GetConsole().GetStream());
    if (PassFrame() || !isFree || hasWork_)
        return;
    while (true)
    {
        // No prompt follows a line that ended the program.
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
        if (IsWaiting())
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
        if (line.empty())
            continue;
        // A line feed in it, such as one in the name of a file, begins no other line.
        out << line << '\n';
        bool const succeeded = kernel_.GetCommandInterpreter()->InterpretCommandLine(line, out);
        out.flush();
        if (succeeded || !countsQueuedLines_)
            continue;
        hasFailed_ = true;
        next_ = LineSource::eNext::e_end;
        report_("the line failed: " + line);
    }
}

void ConsoleLines::RunLine(SourceLine const &line)
{
    if (IsBlankOrComment(line.text))
        return;
    place_ = source_->IsTyped() ? "a console line" : "line " + MakeString(line.number) + " of " + source_->GetName();
    kernel_.GetFailures().SetPlace(place_.c_str());

    runsLine_ = true;
    bool const succeeded = Interpret(line.text);
    runsLine_ = false;
    if (!succeeded && !source_->IsTyped())
        OnFailedLine();
    if (history_ != nullptr && source_->IsTyped())
        history_->Add(line.text);
}

/// Shows a line that the user does not see yet, and interprets it.
bool ConsoleLines::Interpret(string const &line)
{
    SharedOutputStream &out = kernel_.GetConsole().GetStream();
    std_command_interpreter::Interpreter &interpreter = *kernel_.GetCommandInterpreter();
    if (source_->IsTyped())
        kernel_.GetConsole().EnterTypedLine(line);
    else if (!source_->IsStartScript())
        out << e_echo << line << std::endl << e_info;
    // The interpreter's answer to an unknown command has no type of its own.
    if (interpreter.FindCommandOfLine(line) == nullptr)
        out << e_error;
    bool const succeeded = interpreter.InterpretCommandLine(line, out);
    out << e_info << std::flush;
    return succeeded;
}

void ConsoleLines::OnFailedLine(string const &reason)
{
    bool const stops = stopOnError_ && !source_->IsStartScript();
    hasFailed_ = hasFailed_ || !source_->IsStartScript();
    string const end = reason.ends_with('.') ? " The script stops here." : ", the script stops here";
    report_(GetLinePlace() + reason + (stops ? end : ""));
    if (stops)
        next_ = LineSource::eNext::e_end;
}

bool ConsoleLines::Inspect(Command const &command, CommandLineParser const &parser) const
{
    auto const *const vocabulary = dynamic_cast<CommandVocabulary const *>(&command);
    if (vocabulary == nullptr || dynamic_cast<TableCommand const *>(&command) != nullptr)
        return true;
    string const mistake = CommandArguments(command, parser, vocabulary->GetWords()).FindMistake();
    if (mistake.empty())
        return true;
    kernel_.GetConsole().GetStream().flush();
    report_((runsLine_ ? GetLinePlace() : "") + mistake);
    return !strict_;
}

/// Returns the place of a script's line, which goes before a message; empty for a typed line.
string ConsoleLines::GetLinePlace() const
{
    return source_->IsTyped() ? "" : source_->GetName() + "(" + MakeString(line_.number) + "): ";
}

} // namespace quillmarsh::host
