// Keeps the lines that a user types for later sessions.
#ifndef QUILLMARSH_HOST_CONSOLEHISTORY_H
#define QUILLMARSH_HOST_CONSOLEHISTORY_H

#include <quillmarsh/platform/types.h>

#include <functional>
#include <vector>

namespace quillmarsh
{
class ConsoleBuffers;
}

namespace quillmarsh::host
{

/// Keeps the lines that a user types in a file of the user, which several sessions may share.
///
/// Each line is appended at once, so that a program that crashes loses none. Only the user may read the file. Lines that
/// nobody can have typed, because they have control characters or broken UTF-8, are skipped. Frame thread only.
class ConsoleHistory : NoCopy
{
public:
    /// An empty file name keeps nothing. `report` shows the user once why nothing is kept.
    ConsoleHistory(string const &fileName, std::function<void(string const &)> report);

    /// Makes the kept lines the history of the buffers, as many as they hold. Of a huge file only the end is read, and
    /// only the newest lines stay in it.
    void Load(ConsoleBuffers &buffers);
    /// Keeps a line. A line that begins with a blank is not kept, nor is one that the user has just entered.
    void Add(string const &line);

private:
    bool ReadEnd(string &text, bool &isCut) const;
    void Shorten(std::vector<string> const &lines);
    void GiveUp(string const &reason);

    string fileName_;
    std::function<void(string const &)> report_;
    string lastLine_;
    /// The file ends in the middle of a line.
    bool lacksLineEnd_ = false;
};

/// Returns the history's file of this user, in the directory of what programs remember; empty for a user without one.
string GetHistoryFileName();

/// Returns the script of this user that runs at the start of a console: "start.txt" in the directory "quillmarsh" of the
/// user's settings. Empty when there is no such file.
string FindStartScript();

} // namespace quillmarsh::host

#endif
