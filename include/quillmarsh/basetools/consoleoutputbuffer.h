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

/// The text that a console shows. It does not depend on any window.
///
/// The last line is always open: text is added to it. The oldest lines are dropped at the limit. Each line has one
/// output type (OutputStream::eOutputType).
///
/// Any thread may write, through a ConsoleOutputStream of its own; a reader holds the lock while it reads. The
/// operations that change the buffer take the lock themselves, except Append().
class QUILLMARSH_API ConsoleOutputBuffer : NoCopy
{
public:
    /// Is told of each change, on the thread that makes the change and with the buffer locked. It may read the buffer,
    /// add and remove observers; it must not wait for another thread that wants the lock.
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

    /// Adds the observer unless it is there already, and then notifies all observers, so that a new one knows the state
    /// at once.
    void AddObserver(Observer &observer);
    /// Removes the observer; harmless if it was never added. Notifies nobody.
    void RemoveObserver(Observer &observer);

    /// @}
    /// @name Settings
    /// @{

    /// Sets the greatest number of lines, at least 1, drops the oldest lines above it, and notifies.
    void SetLineLimit(unsigned int limit);
    /// Greatest number of lines. Any thread, without the lock.
    unsigned int GetLineLimit() const;
    /// Sets the number of blanks that a tab becomes, at least 1. Lines that are stored stay as they are.
    void SetTabWidth(unsigned int width);
    /// Number of blanks that a tab becomes; 4 at first. Any thread, without the lock.
    unsigned int GetTabWidth() const;

    /// @}
    /// @name Writing
    /// @{

    /// Drops all lines, opens a new one of type 0, and notifies.
    void Clear();

    /// Adds text at the end, and notifies. The caller holds the lock.
    ///
    /// A line feed opens a new line, a tab becomes blanks, and every other character is kept. If the type is not that
    /// of the open line, a new line is opened too, unless the open line is still empty. An empty text that opens no
    /// line notifies nobody.
    void Append(string const &text, unsigned int type);

    /// @}
    /// @name Reading, under the lock
    /// @{

    /// Number of lines, at least 1.
    unsigned int GetNumLines() const;
    /// Number of lines that were dropped or cleared since the buffer was made. It is also the number, from 0, of the
    /// line with index 0, so that an observer can find the lines that are new to it.
    unsigned long long GetNumDroppedLines() const;
    /// Line by index, 0 the oldest. Asserts "Index out of range." past the end, and gives an empty text then.
    string const &GetLine(unsigned int index) const;
    /// The same line with its type.
    string const &GetLine(unsigned int index, unsigned int &type) const;
    /// Length in characters of the longest line that is held. Takes constant time.
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
    /// A node that was taken out of the map, kept for the next length that is new to the map.
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
