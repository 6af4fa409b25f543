#include <quillmarsh/host/sharedstream.h>

#include <deque>

namespace quillmarsh::host
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

SharedStream::SharedStream(TextSink &sink) : OutputStream(nullptr), buffer_(sink)
{
    rdbuf(&buffer_);
}

SharedStream::~SharedStream()
{
    flush();
    rdbuf(nullptr);
}

void SharedStream::SetCurrentOutputType(unsigned int type)
{
    buffer_.SetType(type);
}

SharedStream::Buffer::Buffer(TextSink &sink) : sink_(sink), id_(MakeStreamID()) {}

SharedStream::Buffer::~Buffer() = default;

SharedStream::Buffer::Pending &SharedStream::Buffer::GetPending()
{
    // One entry for each stream that the thread has written to; there are two of them in a host. An entry stays in its
    // place: while the text of one stream is passed on, the thread may begin to write to another.
    struct Entry
    {
        unsigned int id;
        Pending pending;
    };
    static thread_local std::deque<Entry> s_entries;
    for (Entry &entry : s_entries)
    {
        if (entry.id == id_)
            return entry.pending;
    }
    return s_entries.emplace_back(Entry{id_, {}}).pending;
}

void SharedStream::Buffer::Pass(Pending &pending, std::size_t length)
{
    if (length == 0)
        return;
    sink_.OnText(std::string_view(pending.text).substr(0, length), pending.type);
    pending.text.erase(0, length);
}

void SharedStream::Buffer::SetType(unsigned int type)
{
    Pending &pending = GetPending();
    if (type == pending.type)
        return;
    Pass(pending, pending.text.size());
    pending.type = type;
}

SharedStream::Buffer::int_type SharedStream::Buffer::overflow(int_type character)
{
    if (traits_type::eq_int_type(character, traits_type::eof()))
        return traits_type::not_eof(character);
    char const text = traits_type::to_char_type(character);
    xsputn(&text, 1);
    return character;
}

std::streamsize SharedStream::Buffer::xsputn(char const *text, std::streamsize count)
{
    Pending &pending = GetPending();
    std::string_view const added(text, static_cast<std::size_t>(count));
    pending.text += added;
    std::size_t const lineEnd = added.rfind('\n');
    if (lineEnd != std::string_view::npos)
        Pass(pending, pending.text.size() - (added.size() - lineEnd - 1));
    return count;
}

int SharedStream::Buffer::sync()
{
    Pending &pending = GetPending();
    Pass(pending, pending.text.size());
    return 0;
}

} // namespace quillmarsh::host
