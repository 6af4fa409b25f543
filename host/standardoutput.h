// The console's text on standard output.
#ifndef QUILLMARSH_HOST_STANDARDOUTPUT_H
#define QUILLMARSH_HOST_STANDARDOUTPUT_H

#include <quillmarsh/host/textoutput.h>

#include <functional>

namespace quillmarsh::host
{

/// Shows the console's text on standard output, in colours where that is a terminal.
class StandardOutput : public TextOutput, NoCopy
{
public:
    /// `onFailure` hears once of a failed write, with the system's cause; what is written after it is dropped.
    explicit StandardOutput(std::function<void(string const &)> onFailure);
    ~StandardOutput() override;

    void Write(std::string_view text, unsigned int type) override;

private:
    std::function<void(string const &)> onFailure_;
    bool const isTerminal_;
    bool const coloured_;
    bool failed_ = false;
    string shownText_;
};

} // namespace quillmarsh::host

#endif
