// Output stream that several threads print to.
#ifndef QUILLMARSH_BASETOOLS_SHAREDOUTPUTSTREAM_H
#define QUILLMARSH_BASETOOLS_SHAREDOUTPUTSTREAM_H

#include <quillmarsh/basetools/outputstream.h>

#include <memory>
#include <streambuf>
#include <string_view>
#include <thread>

namespace quillmarsh
{

/// Receives the text of a SharedOutputStream.
class QUILLMARSH_API TextSink
{
public:
    virtual ~TextSink();
    /// Takes a text of one output type: whole lines, or what a thread had written when it flushed. Any thread, also
    /// several at once. `text` is good during the call. A sink may print to the stream whose text it takes: this waits,
    /// and is passed on in front of what the thread writes next, with its type.
    virtual void OnText(std::string_view text, unsigned int type) = 0;
};

/// Output stream that several threads print to at once.
///
/// A standard stream keeps format flags, width and state in itself, and every `<<` touches them. So each thread prints
/// to a stream of its own, which GetThreadStream() gives: the shared stream itself on the thread that made it, another
/// one on each other thread. GetConOut() and GetLogOut() of framework/kernel.h give that stream by themselves.
/// \code
/// shared.GetThreadStream() << std::hex << address << std::endl;
/// \endcode
/// The text of a thread reaches the sink when the thread ends a line, flushes, or selects another output type, so that
/// lines stay whole. What a thread has written after its last line or flush is lost when it ends. The stream outlives
/// all printing.
class QUILLMARSH_API SharedOutputStream : public OutputStream
{
public:
    /// The sink is borrowed and outlives the stream.
    explicit SharedOutputStream(TextSink &sink);
    /// Flushes what the calling thread has written.
    ~SharedOutputStream() override;

    /// The stream that the calling thread prints to. It belongs to the shared stream, starts with the standard's
    /// format, and is good until either the thread or the shared stream ends. Any thread.
    OutputStream &GetThreadStream();
    /// The same for a stream that may be a shared one: any other stream is returned as it is.
    static ostream &GetThreadStream(ostream &stream);

    /// Selects the type of what the calling thread writes from now on. Any thread.
    void SetCurrentOutputType(unsigned int type) override;

private:
    class ThreadStream;
    struct ThreadRecord;

    /// Has no text of its own, so that the streams of all threads can share it: the text of a thread is kept in the
    /// record of that thread.
    class Buffer : public std::streambuf
    {
    public:
        explicit Buffer(TextSink &sink);
        ~Buffer() override;

        ThreadRecord &GetThreadRecord();
        void SetType(unsigned int type);

    protected:
        int_type overflow(int_type character) override;
        std::streamsize xsputn(char const *text, std::streamsize count) override;
        int sync() override;

    private:
        void Pass(ThreadRecord &record, std::size_t length);

        TextSink &sink_;
        /// Tells this stream from an earlier one in the records of the threads.
        std::shared_ptr<unsigned int const> const id_;
    };

    std::thread::id const owner_;
    Buffer buffer_;
};

} // namespace quillmarsh

#endif
