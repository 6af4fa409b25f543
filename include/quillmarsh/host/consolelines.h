// Runs lines of the console between frames.
#ifndef QUILLMARSH_HOST_CONSOLELINES_H
#define QUILLMARSH_HOST_CONSOLELINES_H

#include <quillmarsh/host/hostkernel.h>
#include <quillmarsh/host/linesource.h>

#include <atomic>

namespace quillmarsh::host
{

class ConsoleHistory;

/// What a line has begun, and what goes on for some frames.
struct LineWork
{
    /// Called once for each frame until it returns true. A text in `failure` then says what failed.
    std::function<bool(string &failure)> isDone;
    /// Called when the user ends the wait.
    std::function<void()> cancel;
};

/// Runs the lines of a source between frames: all available lines, until one of them waits.
///
/// Blank lines, and lines that begin with "#", are not run. Frame thread only.
class ConsoleLines : NoCopy
{
public:
    /// Creates an object without a source. `report` shows the user a failed line of a script.
    ConsoleLines(HostKernel &kernel, std::function<void(string const &)> report);
    ~ConsoleLines();

    /// Takes lines from `source` from now on; borrows it, and null means none. With `stopOnError`, a script ends at its
    /// first line that fails.
    void SetSource(LineSource *source, bool stopOnError);
    /// With `strict`, refuses a line before it runs when the table of its command finds a mistake in it, such as a word
    /// that the command does not know. Without it, which is the default, `report` only shows the mistake.
    ///
    /// Commands of the class TableCommand refuse such lines by themselves.
    void SetStrict(bool strict) { strict_ = strict; }

    /// With `counts`, a queued line that fails, such as one of a button or of a key, is reported and ends the source as a
    /// failed line of a script does. Without it, which is the default, only its own message tells of it.
    void SetCountsQueuedLines(bool counts) { countsQueuedLines_ = counts; }

    /// Hands each typed line that has run to the history; borrows it, and null means none.
    void SetHistory(ConsoleHistory *history) { history_ = history; }

    /// Runs the lines. Call it after each frame. Lines that are queued meanwhile run after the next frame.
    void Run();
    /// Lets frames pass before the next line.
    void Wait(unsigned int numFrames) { framesToWait_ = numFrames; }
    /// Lets frames pass until the work is done, in place of work that was not. When it fails, a line of a script has
    /// failed; other lines print why.
    void WaitFor(LineWork work);
    /// Ends a wait, so that the next line runs after the next frame. False when nothing waits. Any thread.
    bool EndWait();
    /// True while frames must pass before the next line. Any thread.
    bool IsWaiting() const { return framesToWait_ > 0 || hasWork_; }

    /// True when the source has no more lines.
    bool IsAtEnd() const { return next_ == LineSource::eNext::e_end; }
    /// True when the next line can arrive from outside at any time.
    bool WaitsForInput() const { return next_ == LineSource::eNext::e_none && !IsWaiting(); }
    /// True when a line of a script has failed.
    bool HasFailed() const { return hasFailed_; }

private:
    void RunQueuedLines();
    void RunLine(SourceLine const &line);
    bool Interpret(string const &line);
    void OnFailedLine(string const &reason = "the line failed");
    /// Looks at the work. True when the next line may run.
    bool PassWork();
    bool Inspect(Command const &command, CommandLineParser const &parser) const;
    string GetLinePlace() const;
    /// Counts one frame of a wait. True while more frames must pass.
    bool PassFrame();

    HostKernel &kernel_;
    LineSource *source_ = nullptr;
    ConsoleHistory *history_ = nullptr;
    bool stopOnError_ = false;
    bool strict_ = false;
    bool countsQueuedLines_ = false;
    std::function<void(string const &)> report_;
    LineSource::eNext next_ = LineSource::eNext::e_none;
    SourceLine line_;
    std::vector<string> queuedLines_;
    /// Text for the place of a failure while a line runs.
    string place_;
    bool lineIsOpen_ = false;
    bool runsLine_ = false;
    std::atomic<unsigned int> framesToWait_{0};
    LineWork work_;
    /// The work belongs to the present line of the source, and not to a queued one.
    bool isWorkOfSource_ = false;
    std::atomic<bool> hasWork_{false};
    std::atomic<bool> endsWork_{false};
    bool hasFailed_ = false;
};

} // namespace quillmarsh::host

#endif
