// Lines that the arguments of the program stand for.
#ifndef QUILLMARSH_HOST_ARGUMENTSOURCE_H
#define QUILLMARSH_HOST_ARGUMENTSOURCE_H

#include <quillmarsh/host/linesource.h>

#include <vector>

namespace quillmarsh::host
{

struct Arguments;

/// Returns a line that opens each file of the arguments, by its full name, and one that plays their recording.
std::vector<string> MakeArgumentLines(Arguments const &arguments);

/// First the lines that the arguments stand for, then those of another source.
class ArgumentSource : public LineSource, NoCopy
{
public:
    /// Borrows `main`; null means none. Without one, the source ends after its own lines, or with `stays` never.
    ArgumentSource(std::vector<string> lines, LineSource *main, bool stays);

    eNext Take(SourceLine &line) override;
    void OnDone() override;
    bool IsTyped() const override;
    string const &GetName() const override;
    void Serve(std_command_interpreter::Interpreter &interpreter, ostream &out) override;

private:
    bool IsMain() const { return isPastOwn_ && main_ != nullptr; }

    std::vector<string> const lines_;
    LineSource *const main_;
    bool const stays_;
    std::size_t next_ = 0;
    bool isPastOwn_ = false;
};

} // namespace quillmarsh::host

#endif
