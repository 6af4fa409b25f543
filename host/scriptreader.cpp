#include "scriptreader.h"

#include "arguments.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <vector>

namespace quillmarsh::host
{

/// State that the reader's thread and the frame thread share. It outlives the reader if the thread cannot be cancelled.
struct ScriptReader::State
{
    static constexpr std::size_t s_maxLinesAhead = 1000;

    AutoPtr<system::Input> input;
    std::function<void()> onLines;

    std::mutex mutex;
    std::condition_variable condition;
    std::deque<SourceLine> lines;
    bool closed = false;
    bool atEnd = false;
    bool somebodyWaits = false;

    void Read();
    void Complete(SourceLine &line, std::vector<SourceLine> &complete);
    bool Push(std::vector<SourceLine> const &complete);
    void Announce(std::unique_lock<std::mutex> const &lock);
};

void ScriptReader::State::Read()
{
    std::vector<char> buffer(1 << 16);
    std::vector<SourceLine> complete;
    SourceLine line;
    line.number = 1;
    while (std::size_t const size = input->Read(buffer.data(), buffer.size()))
    {
        std::string_view rest(buffer.data(), size);
        for (std::size_t end; (end = rest.find('\n')) != std::string_view::npos; rest.remove_prefix(end + 1))
        {
            line.text += rest.substr(0, end);
            Complete(line, complete);
        }
        line.text += rest;
        if (!Push(complete))
            return;
        complete.clear();
    }
    if (!line.text.empty())
        Complete(line, complete);
    if (!Push(complete))
        return;
    std::unique_lock lock(mutex);
    atEnd = true;
    Announce(lock);
}

/// Adds the line to the complete ones, and begins the next line.
void ScriptReader::State::Complete(SourceLine &line, std::vector<SourceLine> &complete)
{
    constexpr char byteOrderMark[] = "\xEF\xBB\xBF";
    if (line.number == 1 && line.text.starts_with(byteOrderMark))
        line.text.erase(0, std::size(byteOrderMark) - 1);
    if (line.text.ends_with('\r'))
        line.text.pop_back();
    complete.push_back(line);
    line.text.clear();
    ++line.number;
}

/// Passes on all lines of one read together, so that no frame runs between them. False when the reader is closed.
bool ScriptReader::State::Push(std::vector<SourceLine> const &complete)
{
    std::unique_lock lock(mutex);
    condition.wait(lock, [this] { return closed || lines.size() < s_maxLinesAhead; });
    if (closed)
        return false;
    lines.insert(lines.end(), complete.begin(), complete.end());
    if (!complete.empty())
        Announce(lock);
    return true;
}

void ScriptReader::State::Announce(std::unique_lock<std::mutex> const &)
{
    if (somebodyWaits && !closed)
        onLines();
    somebodyWaits = false;
    condition.notify_all();
}

ScriptReader::ScriptReader(string const &fileName, std::function<void()> onLines)
    : name_(fileName == "-" ? "standard input" : fileName),
      state_(std::make_shared<State>())
{
    string error;
    state_->input = system::Input::Open(fileName, error);
    if (state_->input == nullptr)
        ThrowWrongArgument("cannot read the script '" + fileName + "': " + error);
    state_->onLines = std::move(onLines);
    thread_ = std::thread([state = state_] { state->Read(); });
}

ScriptReader::~ScriptReader()
{
    {
        std::lock_guard const lock(state_->mutex);
        state_->closed = true;
    }
    state_->condition.notify_all();
    if (state_->input->Cancel())
        thread_.join();
    else
        thread_.detach();
}

LineSource::eNext ScriptReader::Take(SourceLine &line)
{
    std::unique_lock lock(state_->mutex);
    // A file never has to be waited for, so its lines must not depend on the speed of the reader's thread.
    if (state_->input->IsFile())
        state_->condition.wait(lock, [this] { return state_->atEnd || !state_->lines.empty(); });
    if (state_->lines.empty())
    {
        state_->somebodyWaits = true;
        return state_->atEnd ? eNext::e_end : eNext::e_none;
    }
    line = std::move(state_->lines.front());
    state_->lines.pop_front();
    state_->condition.notify_all();
    return eNext::e_line;
}

void ScriptReader::OnDone() {}

bool ScriptReader::IsTyped() const
{
    return false;
}

string const &ScriptReader::GetName() const
{
    return name_;
}

} // namespace quillmarsh::host
