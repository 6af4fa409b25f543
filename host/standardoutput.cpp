#include "standardoutput.h"

#include <quillmarsh/platform/program.h>

namespace quillmarsh::host
{

StandardOutput::StandardOutput(std::function<void(string const &)> onFailure)
    : onFailure_(std::move(onFailure)),
      coloured_(platform::TakesEscapeSequences(platform::eStandardStream::e_output) && WantsColours())
{
}

StandardOutput::~StandardOutput() = default;

void StandardOutput::Write(std::string_view text, unsigned int type)
{
    if (failed_)
        return;
    if (coloured_)
    {
        colouredText_.clear();
        AppendColoured(colouredText_, text, type);
        text = colouredText_;
    }
    string error;
    if (platform::WriteStandardStream(platform::eStandardStream::e_output, text, error))
        return;
    failed_ = true;
    onFailure_(error);
}

} // namespace quillmarsh::host
