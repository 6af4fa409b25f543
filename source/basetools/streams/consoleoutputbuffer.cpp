#include <quillmarsh/basetools/consoleoutputbuffer.h>

#include <quillmarsh/basetools/diagnostics.h>

#include <algorithm>
#include <utility>

namespace quillmarsh
{
namespace
{

/// The next line reuses the storage of a dropped line, unless that is larger than this: a few long lines would hold
/// much memory for ever.
constexpr std::size_t s_maxRecycledCapacity = 1024;

} // namespace

ConsoleOutputBuffer::Observer::~Observer() = default;

ConsoleOutputBuffer::ConsoleOutputBuffer(unsigned int lineLimit)
    : lineLimit_(std::max(lineLimit, 1u)),
      lines_(1),
      widthCounts_{{0, 1}}
{
}

ConsoleOutputBuffer::~ConsoleOutputBuffer() = default;

void ConsoleOutputBuffer::Lock() const
{
    criticalSection_.Enter();
}

void ConsoleOutputBuffer::Unlock() const
{
    criticalSection_.Leave();
}

void ConsoleOutputBuffer::AddObserver(Observer &observer)
{
    CriticalSectionSentry const lock(criticalSection_);
    observers_.Add(&observer);
    NotifyObservers();
}

void ConsoleOutputBuffer::RemoveObserver(Observer &observer)
{
    CriticalSectionSentry const lock(criticalSection_);
    observers_.Remove(&observer);
}

void ConsoleOutputBuffer::SetLineLimit(unsigned int limit)
{
    CriticalSectionSentry const lock(criticalSection_);
    lineLimit_ = std::max(limit, 1u);
    while (lines_.size() > lineLimit_)
        DropOldestLine();
    RefreshMaxColumns();
    NotifyObservers();
}

unsigned int ConsoleOutputBuffer::GetLineLimit() const
{
    return lineLimit_;
}

void ConsoleOutputBuffer::SetTabWidth(unsigned int width)
{
    CriticalSectionSentry const lock(criticalSection_);
    tabWidth_ = std::max(width, 1u);
}

unsigned int ConsoleOutputBuffer::GetTabWidth() const
{
    return tabWidth_;
}

void ConsoleOutputBuffer::Clear()
{
    CriticalSectionSentry const lock(criticalSection_);
    numDroppedLines_ += lines_.size();
    lines_.clear();
    widthCounts_.clear();
    lines_.emplace_back();
    CountLength(0);
    RefreshMaxColumns();
    NotifyObservers();
}

void ConsoleOutputBuffer::Append(string const &text, unsigned int type)
{
    bool hasBroken = false;
    if (lines_.back().type != type)
    {
        if (lines_.back().text.empty())
            lines_.back().type = type;
        else
        {
            BreakLine(type);
            hasBroken = true;
        }
    }
    if (text.empty() && !hasBroken)
        return;

    std::string_view rest = text;
    for (std::size_t at = rest.find('\n'); at != std::string_view::npos; at = rest.find('\n'))
    {
        AddToOpenLine(rest.substr(0, at));
        BreakLine(type);
        rest.remove_prefix(at + 1);
    }
    AddToOpenLine(rest);
    RefreshMaxColumns();
    NotifyObservers();
}

unsigned int ConsoleOutputBuffer::GetNumLines() const
{
    return static_cast<unsigned int>(lines_.size());
}

string const &ConsoleOutputBuffer::GetLine(unsigned int index) const
{
    unsigned int type = 0;
    return GetLine(index, type);
}

string const &ConsoleOutputBuffer::GetLine(unsigned int index, unsigned int &type) const
{
    static Line const noLine;
    bool const isHeld = index < lines_.size();
    QUILLMARSH_ASSERT(isHeld, "Index out of range.");
    Line const &line = isHeld ? lines_[index] : noLine;
    type = line.type;
    return line.text;
}

unsigned long long ConsoleOutputBuffer::GetNumDroppedLines() const
{
    return numDroppedLines_;
}

unsigned int ConsoleOutputBuffer::GetMaxColumns() const
{
    return maxColumns_;
}

/// Opens a line, in the storage of the line that is dropped for it.
void ConsoleOutputBuffer::BreakLine(unsigned int type)
{
    Line line;
    while (lines_.size() >= lineLimit_)
        line.text = DropOldestLine();
    line.text.clear();
    line.type = type;
    lines_.push_back(std::move(line));
    CountLength(0);
}

string ConsoleOutputBuffer::DropOldestLine()
{
    string text = std::move(lines_.front().text);
    lines_.pop_front();
    ++numDroppedLines_;
    UncountLength(text.size());
    return text.capacity() > s_maxRecycledCapacity ? string() : std::move(text);
}

void ConsoleOutputBuffer::AddToOpenLine(std::string_view text)
{
    if (text.empty())
        return;
    string &line = lines_.back().text;
    UncountLength(line.size());
    for (std::size_t at = text.find('\t'); at != std::string_view::npos; at = text.find('\t'))
    {
        line.append(text.substr(0, at));
        line.append(tabWidth_, ' ');
        text.remove_prefix(at + 1);
    }
    line.append(text);
    CountLength(line.size());
}

void ConsoleOutputBuffer::CountLength(std::size_t length)
{
    auto const key = static_cast<unsigned int>(length);
    auto const found = widthCounts_.lower_bound(key);
    if (found != widthCounts_.end() && found->first == key)
        ++found->second;
    else if (spareCount_)
    {
        spareCount_.key() = key;
        spareCount_.mapped() = 1;
        widthCounts_.insert(found, std::move(spareCount_));
    }
    else
        widthCounts_.emplace_hint(found, key, 1u);
}

void ConsoleOutputBuffer::UncountLength(std::size_t length)
{
    auto const found = widthCounts_.find(static_cast<unsigned int>(length));
    if (--found->second == 0)
        spareCount_ = widthCounts_.extract(found);
}

void ConsoleOutputBuffer::RefreshMaxColumns()
{
    maxColumns_ = widthCounts_.rbegin()->first;
}

void ConsoleOutputBuffer::NotifyObservers()
{
    observers_.ForEach([this](Observer &observer) { observer.OnChanged(*this); });
}

} // namespace quillmarsh
