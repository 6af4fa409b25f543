// The console's text on standard output.
#ifndef QUILLMARSH_HOST_STANDARDOUTPUT_H
#define QUILLMARSH_HOST_STANDARDOUTPUT_H

#include <quillmarsh/host/textoutput.h>

#include <functional>

namespace quillmarsh::host
{

/// Shows the console's text on standard output, in colours if that is a terminal.
class StandardOutput : public TextOutput, NoCopy
{
public:
    /// `onFailure` is called once, with the system's reason, when a write fails. All later text is dropped.
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
