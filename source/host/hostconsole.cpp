#include <quillmarsh/host/hostconsole.h>

#include <algorithm>

namespace quillmarsh::host
{

HostConsole::HostConsole(ostream &log) : log_(log), stream_(*this)
{
    buffers_.GetOutputBuffer().AddObserver(*this);
}

HostConsole::~HostConsole()
{
    buffers_.GetOutputBuffer().RemoveObserver(*this);
}

void HostConsole::SetOutput(TextOutput *output)
{
    stream_.flush();
    ConsoleOutputBufferSentry const lock(buffers_.GetOutputBuffer());
    output_ = output;
}

void HostConsole::EnterTypedLine(string const &line)
{
    ConsoleOutputBufferSentry const lock(buffers_.GetOutputBuffer());
    Append(line + '\n', OutputStream::e_typeEcho);
}

void HostConsole::OnText(std::string_view text, unsigned int type)
{
    ConsoleOutputBufferSentry const lock(buffers_.GetOutputBuffer());
    if (output_ != nullptr)
        output_->Write(text, type);
    Append(text, type);
}

void HostConsole::Append(std::string_view text, unsigned int type)
{
    if (logging_)
        SharedOutputStream::GetThreadStream(log_) << text << std::flush;
    appending_ = true;
    appended_ = text;
    buffers_.GetOutputBuffer().Append(appended_, type);
    appending_ = false;
}

/// Called after a change of the buffer. Shows the new text, unless this object wrote it.
void HostConsole::OnChanged(ConsoleOutputBuffer const &buffer)
{
    unsigned long long const first = buffer.GetNumDroppedLines();
    unsigned long long const last = first + buffer.GetNumLines() - 1;
    if (!appending_)
    {
        std::size_t shownLength = shownLine_ >= first ? shownLength_ : 0;
        for (unsigned long long line = std::max(first, shownLine_); line <= last; ++line)
        {
            unsigned int type = 0;
            std::string_view text = buffer.GetLine(static_cast<unsigned int>(line - first), type);
            text.remove_prefix(std::min(text.size(), shownLength));
            Show(text, type);
            if (line != last)
                Show("\n", type);
            shownLength = 0;
        }
    }
    shownLine_ = last;
    shownLength_ = buffer.GetLine(buffer.GetNumLines() - 1).size();
}

void HostConsole::Show(std::string_view text, unsigned int type)
{
    if (text.empty())
        return;
    if (output_ != nullptr)
        output_->Write(text, type);
    if (logging_)
        SharedOutputStream::GetThreadStream(log_) << text << std::flush;
}

} // namespace quillmarsh::host
