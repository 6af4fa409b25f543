#include <quillmarsh/basetools/sharedoutputstream.h>

#include "source/platform/threadvalue.h"

#include <atomic>
#include <deque>

namespace quillmarsh
{
namespace
{

unsigned int MakeStreamID()
{
    static std::atomic<unsigned int> s_lastID{0};
    return ++s_lastID;
}

} // namespace

TextSink::~TextSink() = default;

/// Stream of a thread other than the one that made the shared stream.
class SharedOutputStream::ThreadStream : public OutputStream
{
public:
    explicit ThreadStream(Buffer &buffer) : OutputStream(&buffer), buffer_(buffer) {}
    ~ThreadStream() override
    {
        // The thread may end after the shared stream.
        exceptions(std::ios_base::goodbit);
        rdbuf(nullptr);
    }

    void SetCurrentOutputType(unsigned int type) override { buffer_.SetType(type); }

private:
    Buffer &buffer_;
};

/// State of a thread for one shared stream.
struct SharedOutputStream::ThreadRecord
{
    unsigned int streamID;
    string text;
    unsigned int type = 0;
    AutoPtr<ThreadStream> stream;
};

SharedOutputStream::SharedOutputStream(TextSink &sink)
    : OutputStream(nullptr),
      owner_(std::this_thread::get_id()),
      buffer_(sink)
{
    rdbuf(&buffer_);
}

SharedOutputStream::~SharedOutputStream()
{
    exceptions(std::ios_base::goodbit);
    flush();
    rdbuf(nullptr);
}

OutputStream &SharedOutputStream::GetThreadStream()
{
    if (std::this_thread::get_id() == owner_)
        return *this;
    ThreadRecord &record = buffer_.GetThreadRecord();
    if (record.stream == nullptr)
        record.stream = std::make_unique<ThreadStream>(buffer_);
    return *record.stream;
}

ostream &SharedOutputStream::GetThreadStream(ostream &stream)
{
    auto *const shared = dynamic_cast<SharedOutputStream *>(&stream);
    return shared != nullptr ? shared->GetThreadStream() : stream;
}

void SharedOutputStream::SetCurrentOutputType(unsigned int type)
{
    buffer_.SetType(type);
}

SharedOutputStream::Buffer::Buffer(TextSink &sink) : sink_(sink), id_(MakeStreamID()) {}

SharedOutputStream::Buffer::~Buffer() = default;

SharedOutputStream::ThreadRecord &SharedOutputStream::Buffer::GetThreadRecord()
{
    // A host has two shared streams, so the search is short. A record must keep its address: while the text of one
    // stream is passed on, the thread may begin to write to another.
    struct Records : platform::ThreadValue
    {
        std::deque<ThreadRecord> list;
    };
    static auto &s_slot = *new platform::ThreadValueSlot;
    if (s_slot.Get() == nullptr)
        s_slot.Set(std::make_unique<Records>());
    std::deque<ThreadRecord> &records = static_cast<Records *>(s_slot.Get())->list;
    for (ThreadRecord &record : records)
    {
        if (record.streamID == id_)
            return record;
    }
    return records.emplace_back(ThreadRecord{id_, {}, 0, nullptr});
}

void SharedOutputStream::Buffer::Pass(ThreadRecord &record, std::size_t length)
{
    if (length == 0)
        return;
    sink_.OnText(std::string_view(record.text).substr(0, length), record.type);
    record.text.erase(0, length);
}

void SharedOutputStream::Buffer::SetType(unsigned int type)
{
    ThreadRecord &record = GetThreadRecord();
    if (type == record.type)
        return;
    Pass(record, record.text.size());
    record.type = type;
}

SharedOutputStream::Buffer::int_type SharedOutputStream::Buffer::overflow(int_type character)
{
    if (traits_type::eq_int_type(character, traits_type::eof()))
        return traits_type::not_eof(character);
    char const text = traits_type::to_char_type(character);
    xsputn(&text, 1);
    return character;
}

std::streamsize SharedOutputStream::Buffer::xsputn(char const *text, std::streamsize count)
{
    ThreadRecord &record = GetThreadRecord();
    std::string_view const added(text, static_cast<std::size_t>(count));
    record.text += added;
    std::size_t const lineEnd = added.rfind('\n');
    if (lineEnd != std::string_view::npos)
        Pass(record, record.text.size() - (added.size() - lineEnd - 1));
    return count;
}

int SharedOutputStream::Buffer::sync()
{
    ThreadRecord &record = GetThreadRecord();
    Pass(record, record.text.size());
    return 0;
}

} // namespace quillmarsh
