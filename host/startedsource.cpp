#include "startedsource.h"

namespace quillmarsh::host
{

StartedSource::StartedSource(AutoPtr<LineSource> start, LineSource &main, std::function<void()> onStartEnd)
    : start_(std::move(start)),
      main_(main),
      current_(start_.get()),
      onStartEnd_(std::move(onStartEnd))
{
}

StartedSource::~StartedSource() = default;

LineSource::eNext StartedSource::Take(SourceLine &line)
{
    if (current_ == &main_)
        return main_.Take(line);
    eNext const next = start_ != nullptr ? start_->Take(line) : eNext::e_end;
    if (next != eNext::e_end)
        return next;
    current_ = &main_;
    // Each source numbers its own lines.
    line.number = 0;
    onStartEnd_();
    return main_.Take(line);
}

void StartedSource::OnDone()
{
    if (current_ != nullptr)
        current_->OnDone();
}

bool StartedSource::IsTyped() const
{
    return !IsStartScript() && main_.IsTyped();
}

bool StartedSource::IsStartScript() const
{
    return current_ != &main_;
}

string const &StartedSource::GetName() const
{
    return IsStartScript() && start_ != nullptr ? start_->GetName() : main_.GetName();
}

void StartedSource::Serve(std_command_interpreter::Interpreter &interpreter, ostream &out)
{
    main_.Serve(interpreter, out);
}

} // namespace quillmarsh::host
