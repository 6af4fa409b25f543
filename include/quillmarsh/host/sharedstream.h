// Output stream that several threads write to.
#ifndef QUILLMARSH_HOST_SHAREDSTREAM_H
#define QUILLMARSH_HOST_SHAREDSTREAM_H

#include <quillmarsh/basetools/outputstream.h>

#include <atomic>
#include <mutex>
#include <string_view>

namespace quillmarsh::host
{

/// Receives the text of a SharedStream.
class TextSink
{
public:
    virtual ~TextSink();
    /// Text of one output type. Called on any thread, also by several at once.
    virtual void OnText(std::string_view text, unsigned int type) = 0;
};

/// Output stream that several threads may write to at once.
///
/// What a thread writes is kept apart from what others write, and reaches the sink when the thread ends a line, flushes,
/// or selects another type: lines stay whole. Format flags are common to all threads.
class SharedStream : public OutputStream
{
public:
    /// The sink is borrowed and outlives the stream.
    explicit SharedStream(TextSink &sink);
    ~SharedStream() override;

    /// Selects the type of what the calling thread writes.
    void SetCurrentOutputType(unsigned int type) override;

private:
    class Buffer : public std::streambuf
    {
    public:
        explicit Buffer(TextSink &sink);
        ~Buffer() override;

        void SetType(unsigned int type);

    protected:
        int_type overflow(int_type character) override;
        std::streamsize xsputn(char const *text, std::streamsize count) override;
        int sync() override;

    private:
        struct Pending
        {
            string text;
            unsigned int type = 0;
        };

        Pending &GetPending();
        void Pass(Pending &pending, std::size_t length);

        TextSink &sink_;
        /// Tells this stream from an earlier one in what threads keep of their own.
        unsigned int const id_;
    };

    Buffer buffer_;
};

} // namespace quillmarsh::host

#endif
