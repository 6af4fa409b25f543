#include "standardoutput.h"

#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/platform/program.h>

namespace quillmarsh::host
{

StandardOutput::StandardOutput(std::function<void(string const &)> onFailure)
    : onFailure_(std::move(onFailure)),
      isTerminal_(platform::IsTerminal(platform::eStandardStream::e_output)),
      coloured_(platform::TakesEscapeSequences(platform::eStandardStream::e_output) && WantsColours())
{
}

StandardOutput::~StandardOutput() = default;

void StandardOutput::Write(std::string_view text, unsigned int type)
{
    if (failed_)
        return;
    if (isTerminal_)
    {
        shownText_.clear();
        AppendColoured(shownText_, MakePrintable(string(text), true), coloured_ ? type : OutputStream::e_typeInfo);
        text = shownText_;
    }
    string error;
    if (platform::WriteStandardStream(platform::eStandardStream::e_output, text, error))
        return;
    failed_ = true;
    onFailure_(error);
}

} // namespace quillmarsh::host
