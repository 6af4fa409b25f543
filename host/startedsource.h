// Lines of the start script ahead of those of the run.
#ifndef QUILLMARSH_HOST_STARTEDSOURCE_H
#define QUILLMARSH_HOST_STARTEDSOURCE_H

#include <quillmarsh/host/linesource.h>

#include <functional>

namespace quillmarsh::host
{

/// First the lines of a start script, then those of another source.
class StartedSource : public LineSource, NoCopy
{
public:
    /// A null `start` has no lines. Borrows `main`. Calls `onStartEnd` once, when the last line of the start script has
    /// run.
    StartedSource(AutoPtr<LineSource> start, LineSource &main, std::function<void()> onStartEnd);
    ~StartedSource() override;

    eNext Take(SourceLine &line) override;
    void OnDone() override;
    bool IsTyped() const override;
    bool IsStartScript() const override;
    string const &GetName() const override;
    void Serve(std_command_interpreter::Interpreter &interpreter, ostream &out) override;

private:
    AutoPtr<LineSource> start_;
    LineSource &main_;
    LineSource *current_;
    std::function<void()> onStartEnd_;
};

} // namespace quillmarsh::host

#endif
