#include <quillmarsh/basetools/consoleoutputstream.h>

namespace quillmarsh
{

ConsoleOutputStream::ConsoleOutputStreamBuffer::ConsoleOutputStreamBuffer(ConsoleOutputBuffer &buffer,
                                                                          unsigned int type)
    : std::stringbuf(std::ios_base::out),
      buffer_(buffer),
      type_(type)
{
}

ConsoleOutputStream::ConsoleOutputStreamBuffer::~ConsoleOutputStreamBuffer() = default;

int ConsoleOutputStream::ConsoleOutputStreamBuffer::sync()
{
    // The text is taken out first, so that it is not written twice if an observer throws or writes here again. Emptying
    // the buffer by a text that stays keeps its storage; a moved text would replace it.
    static string const noText;
    text_.assign(view());
    str(noText);
    ConsoleOutputBufferSentry const lock(buffer_);
    buffer_.Append(text_, type_);
    return 0;
}

ConsoleOutputStream::ConsoleOutputStream(ConsoleOutputBuffer &buffer, unsigned int type)
    : OutputStream(nullptr),
      streamBuffer_(buffer, type)
{
    std::ios::rdbuf(&streamBuffer_);
}

ConsoleOutputStream::~ConsoleOutputStream()
{
    exceptions(std::ios_base::goodbit);
    flush();
    // The base class flushes too, when the buffer is destroyed already.
    std::ios::rdbuf(nullptr);
}

void ConsoleOutputStream::SetCurrentOutputType(unsigned int type)
{
    if (type == streamBuffer_.GetType())
        return;
    flush();
    streamBuffer_.SetType(type);
}

} // namespace quillmarsh
