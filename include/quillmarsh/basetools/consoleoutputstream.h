// Output stream that writes typed lines into a console's output buffer.
#ifndef QUILLMARSH_BASETOOLS_CONSOLEOUTPUTSTREAM_H
#define QUILLMARSH_BASETOOLS_CONSOLEOUTPUTSTREAM_H

#include <quillmarsh/basetools/consoleoutputbuffer.h>
#include <quillmarsh/basetools/outputstream.h>

#include <sstream>

namespace quillmarsh
{

/// Collects text, and appends it to a ConsoleOutputBuffer when it is flushed.
///
/// Each thread writes through a stream of its own; what is flushed at once stays together in the buffer.
class QUILLMARSH_API ConsoleOutputStream : public OutputStream
{
public:
    /// The buffer is borrowed and outlives the stream. `type` is the output type to begin with.
    ConsoleOutputStream(ConsoleOutputBuffer &buffer, unsigned int type);
    ~ConsoleOutputStream() override;

    /// If the type differs from the current one: flushes, so that the text so far keeps its type, and changes it.
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
        /// The text under way to the buffer; keeps its storage from one sync to the next.
        string text_;
    };

    ConsoleOutputStreamBuffer streamBuffer_;
};

} // namespace quillmarsh

#endif
