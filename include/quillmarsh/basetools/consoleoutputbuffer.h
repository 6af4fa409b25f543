// Bounded list of typed text lines that a console shows.
#ifndef QUILLMARSH_BASETOOLS_CONSOLEOUTPUTBUFFER_H
#define QUILLMARSH_BASETOOLS_CONSOLEOUTPUTBUFFER_H

#include <quillmarsh/basetools/observerlist.h>
#include <quillmarsh/basetools/syncprimitives.h>

#include <atomic>
#include <deque>
#include <map>
#include <string_view>

namespace quillmarsh
{

/// What a console shows, kept apart from any window.
///
/// There is always an open last line, to which text is added; the oldest lines fall off at the limit. Each line is of
/// one output type (OutputStream::eOutputType).
///
/// Any thread may write, through a ConsoleOutputStream of its own; a reader holds the lock around what it reads. The
/// operations that change the buffer take the lock themselves, except Append().
class QUILLMARSH_API ConsoleOutputBuffer : NoCopy
{
public:
    /// Hears of each change. It is called on the thread that makes the change, with the buffer locked: it may read the
    /// buffer, add and remove observers, and must not wait for another thread that wants the lock.
    class QUILLMARSH_API Observer
    {
    public:
        virtual ~Observer();
        /// The buffer has changed.
        virtual void OnChanged(ConsoleOutputBuffer const &buffer) = 0;
    };

    static constexpr unsigned int s_defaultLineLimit = 300;

    /// A limit of 0 counts as 1.
    explicit ConsoleOutputBuffer(unsigned int lineLimit = s_defaultLineLimit);
    ~ConsoleOutputBuffer();

    /// @name Lock
    /// A thread that holds it may take it again. ConsoleOutputBufferSentry holds it for a scope.
    /// @{
    void Lock() const;
    void Unlock() const;
    /// @}

    /// @name Observers, borrowed
    /// @{

    /// Adds the observer unless it is there already, and then notifies all of them, so that a new one hears at once.
    void AddObserver(Observer &observer);
    /// Removes the observer if it is there; notifies nobody.
    void RemoveObserver(Observer &observer);

    /// @}
    /// @name Settings
    /// @{

    /// Greatest number of lines, at least 1. Drops the oldest lines that are too many, and notifies.
    void SetLineLimit(unsigned int limit);
    unsigned int GetLineLimit() const;
    /// Number of blanks that a tab becomes, at least 1. Lines that are stored stay as they are.
    void SetTabWidth(unsigned int width);
    unsigned int GetTabWidth() const;

    /// @}
    /// @name Writing
    /// @{

    /// Drops all lines, opens a new one of type 0, and notifies.
    void Clear();

    /// Adds text at the end, and notifies. The caller holds the lock.
    ///
    /// A line feed opens a new line, a tab becomes blanks, every other character is kept. A type other than that of the
    /// open line opens a new line too, unless the open line is still empty. An empty text that opens no line notifies
    /// nobody.
    void Append(string const &text, unsigned int type);

    /// @}
    /// @name Reading, under the lock
    /// @{

    unsigned int GetNumLines() const;
    /// Lines that fell off or were cleared since the beginning: the number, from 0, of the line with index 0. An
    /// observer finds by it what is new to it.
    unsigned long long GetNumDroppedLines() const;
    /// Line by index, 0 the oldest. Asserts "Index out of range." past the end, and gives an empty text then.
    string const &GetLine(unsigned int index) const;
    /// The same, with the line's type.
    string const &GetLine(unsigned int index, unsigned int &type) const;
    /// Length in characters of the longest line held; constant time.
    unsigned int GetMaxColumns() const;

    /// @}

private:
    struct Line
    {
        string text;
        unsigned int type = 0;
    };
    using WidthCounts = std::map<unsigned int, unsigned int>;

    void BreakLine(unsigned int type);
    void AddToOpenLine(std::string_view text);
    string DropOldestLine();
    void CountLength(std::size_t length);
    void UncountLength(std::size_t length);
    void RefreshMaxColumns();
    void NotifyObservers();

    mutable CriticalSection criticalSection_;
    ObserverList<Observer> observers_;
    std::atomic<unsigned int> lineLimit_;
    std::atomic<unsigned int> tabWidth_{4};
    std::deque<Line> lines_;
    unsigned long long numDroppedLines_ = 0;
    unsigned int maxColumns_ = 0;
    WidthCounts widthCounts_;
    /// A node that the map gave up, kept for the next length that is new to it.
    WidthCounts::node_type spareCount_;
};

/// Holds the lock of a console's output buffer for a scope.
class ConsoleOutputBufferSentry : NoCopy
{
public:
    /// The buffer is borrowed and outlives the sentry.
    explicit ConsoleOutputBufferSentry(ConsoleOutputBuffer const &buffer) : buffer_(buffer) { buffer_.Lock(); }
    ~ConsoleOutputBufferSentry() { buffer_.Unlock(); }

private:
    ConsoleOutputBuffer const &buffer_;
};

} // namespace quillmarsh

#endif
