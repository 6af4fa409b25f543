#include <quillmarsh/basetools/sharedoutputstream.h>

#include "source/platform/threadvalue.h"

#include <atomic>
#include <list>

namespace quillmarsh
{
namespace
{

std::shared_ptr<unsigned int const> MakeStreamID()
{
    static std::atomic<unsigned int> s_lastID{0};
    return std::make_shared<unsigned int const>(++s_lastID);
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
    /// Expires with the shared stream.
    std::weak_ptr<unsigned int const> life;
    string text;
    /// What the sink writes while it takes `text`.
    string late;
    bool isPassing = false;
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
        std::list<ThreadRecord> list;
    };
    static auto &s_slot = *new platform::ThreadValueSlot;
    if (s_slot.Get() == nullptr)
        s_slot.Set(std::make_unique<Records>());
    std::list<ThreadRecord> &records = static_cast<Records *>(s_slot.Get())->list;
    for (ThreadRecord &record : records)
    {
        if (record.streamID == *id_)
            return record;
    }
    // The records of ended streams go, so that the list stays short however many streams there were.
    records.remove_if([](ThreadRecord const &record) { return record.life.expired(); });
    ThreadRecord &added = records.emplace_back();
    added.streamID = *id_;
    added.life = id_;
    return added;
}

void SharedOutputStream::Buffer::Pass(ThreadRecord &record, std::size_t length)
{
    if (length == 0 || record.isPassing)
        return;
    record.isPassing = true;
    try
    {
        sink_.OnText(std::string_view(record.text).substr(0, length), record.type);
    }
    catch (...)
    {
        record.isPassing = false;
        throw;
    }
    record.isPassing = false;
    record.text.replace(0, length, record.late);
    record.late.clear();
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
    if (record.isPassing)
    {
        record.late += added;
        return count;
    }
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
