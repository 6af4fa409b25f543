#include <quillmarsh/host/consolehistory.h>

#include "wholefile.h"

#include <quillmarsh/basetools/consolebuffers.h>
#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/basetools/texttools.h>

#include <algorithm>
#include <cerrno>
#include <fstream>

namespace quillmarsh::host
{

namespace
{

/// Bytes of the file that are read. A longer file is cut to its newest lines.
constexpr std::streamoff s_maxRead = 1 << 20;
/// Longer lines are not kept.
constexpr std::size_t s_maxLineLength = 4096;

bool IsWorthKeeping(string const &line)
{
    return !line.empty() && line.size() <= s_maxLineLength && !IsBlank(line.front()) &&
           MakePrintable(line, true) == line;
}

/// Creates the file for the user alone, and its directory as well where there is none yet.
void CreatePrivateFile(string const &fileName)
{
    string directory;
    string base;
    string extension;
    file_system::SplitFileName(fileName, directory, base, extension);
    using std::filesystem::perms;
    std::error_code ignored;
    if (!file_system::DirectoryExists(directory) && file_system::CreateDirectoryPath(directory))
        std::filesystem::permissions(file_system::GetStreamPath(directory), perms::owner_all, ignored);
    std::filesystem::path const path = file_system::GetStreamPath(fileName);
    std::ofstream(path, std::ios::app | std::ios::binary).flush();
    std::filesystem::permissions(path, perms::owner_read | perms::owner_write, ignored);
}

} // namespace

ConsoleHistory::ConsoleHistory(string const &fileName, std::function<void(string const &)> report)
    : fileName_(fileName),
      report_(std::move(report))
{
}

void ConsoleHistory::Load(ConsoleBuffers &buffers)
{
    string text;
    bool isCut = false;
    buffers.ClearCommandHistory();
    if (!ReadEnd(text, isCut))
        return;
    lacksLineEnd_ = !text.empty() && text.back() != '\n';
    std::vector<string> lines;
    BreakIntoLines(text, lines);
    // The first line may be the end of a longer one.
    if (isCut && !lines.empty())
        lines.erase(lines.begin());
    for (string &line : lines)
    {
        if (line.ends_with('\r'))
            line.pop_back();
    }
    std::erase_if(lines, [](string const &line) { return !IsWorthKeeping(line); });
    std::size_t const maxLines = buffers.GetMaxCommandsInHistory();
    if (lines.size() > maxLines)
        lines.erase(lines.begin(), lines.end() - static_cast<std::ptrdiff_t>(maxLines));
    for (string const &line : lines)
        buffers.PushCommandInHistory(line);
    if (!lines.empty())
        lastLine_ = lines.back();
    if (isCut)
        Shorten(lines);
}

/// Reads the end of the file. False when there is no file yet, and after GiveUp().
bool ConsoleHistory::ReadEnd(string &text, bool &isCut) const
{
    using std::filesystem::file_type;
    // Anything else, such as a pipe, could make the program wait.
    if (fileName_.empty() || file_system::GetFileType(fileName_, true) != file_type::regular)
        return false;
    std::ifstream file(file_system::GetStreamPath(fileName_), std::ios::binary | std::ios::ate);
    std::streamoff const size = file.tellg();
    if (!file || size < 0)
        return false;
    isCut = size > s_maxRead;
    text.resize(static_cast<std::size_t>(std::min(size, s_maxRead)));
    file.seekg(-static_cast<std::streamoff>(text.size()), std::ios::end);
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(file.gcount()));
    return true;
}

/// Leaves only these lines in the file. A failure does no harm: the file stays as it is.
void ConsoleHistory::Shorten(std::vector<string> const &lines)
{
    string text;
    for (string const &line : lines)
        text += line + '\n';
    if (WriteWholeFile(fileName_, text, true).empty())
        lacksLineEnd_ = false;
}

void ConsoleHistory::Add(string const &line)
{
    if (fileName_.empty() || line == lastLine_ || !IsWorthKeeping(line))
        return;
    bool const exists = file_system::FileExists(fileName_);
    if (exists && file_system::GetFileType(fileName_, true) != std::filesystem::file_type::regular)
        return GiveUp("it is not a file");
    if (!exists)
        CreatePrivateFile(fileName_);
    errno = 0;
    std::ofstream file(file_system::GetStreamPath(fileName_), std::ios::app | std::ios::binary);
    // In one piece, because other sessions may append at the same time.
    file << (lacksLineEnd_ ? "\n" : "") + line + '\n' << std::flush;
    if (!file)
        return GiveUp(file_system::GetLastFailureReason());
    lacksLineEnd_ = false;
    lastLine_ = line;
}

void ConsoleHistory::GiveUp(string const &reason)
{
    report_("the history is not kept: cannot write '" + fileName_ + "': " + reason);
    fileName_.clear();
}

string GetHistoryFileName()
{
    return file_system::GetUserStateFileName("history");
}

string FindStartScript()
{
    string const name = file_system::GetUserConfigFileName("start.txt");
    return file_system::FileExists(name) ? name : "";
}

} // namespace quillmarsh::host
