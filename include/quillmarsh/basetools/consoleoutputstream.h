// Output stream that writes typed lines into a console's output buffer.
#ifndef QUILLMARSH_BASETOOLS_CONSOLEOUTPUTSTREAM_H
#define QUILLMARSH_BASETOOLS_CONSOLEOUTPUTSTREAM_H

#include <quillmarsh/basetools/consoleoutputbuffer.h>
#include <quillmarsh/basetools/outputstream.h>

#include <sstream>

namespace quillmarsh
{

/// Collects text, and appends it to a ConsoleOutputBuffer at each flush.
///
/// Each thread writes through a stream of its own. Text that is flushed in one go stays together in the buffer.
class QUILLMARSH_API ConsoleOutputStream : public OutputStream
{
public:
    /// The buffer is borrowed and outlives the stream. `type` is the output type at first.
    ConsoleOutputStream(ConsoleOutputBuffer &buffer, unsigned int type);
    ~ConsoleOutputStream() override;

    /// Changes the output type. If the new type is another one, the stream is flushed first, so that the text so far
    /// keeps its type.
    void SetCurrentOutputType(unsigned int type) override;

private:
    class ConsoleOutputStreamBuffer : public std::stringbuf
    {
    public:
        ConsoleOutputStreamBuffer(ConsoleOutputBuffer &buffer, unsigned int type);
        ~ConsoleOutputStreamBuffer() override;

        unsigned int GetType() const { return type_; }
        void SetType(unsigned int type) { type_ = type; }

    protected:
        int sync() override;

    private:
        ConsoleOutputBuffer &buffer_;
        unsigned int type_;
        /// The text on its way to the buffer; keeps its storage from one flush to the next.
        string text_;
    };

    ConsoleOutputStreamBuffer streamBuffer_;
};

} // namespace quillmarsh

#endif
