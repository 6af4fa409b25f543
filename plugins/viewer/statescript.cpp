#include "statescript.h"

#include <quillmarsh/basetools/consolebuffers.h>
#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/dataobjects/dataexception.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/stdcommandinterpreter.h>

#include <fstream>
#include <sstream>

namespace viewer
{

using namespace quillmarsh;
using sampled_data::DataException;

namespace
{

/// Far more than the viewer writes.
constexpr std::size_t s_maxByteSize = 1 << 20;

string GetFirstLine(string const &text)
{
    return MakePrintable(text.substr(0, text.find('\n')));
}

/// Keeps the lines of scripts out of the user's history of commands, for its own life.
class HistoryGuard : NoCopy
{
public:
    HistoryGuard() { GetInterpreter().SetConsoleBuffers(&unused_); }
    ~HistoryGuard() { GetInterpreter().SetConsoleBuffers(nullptr); }

    static std_command_interpreter::Interpreter &GetInterpreter()
    {
        return *Kernel::Instance().GetCommandInterpreter();
    }

private:
    ConsoleBuffers unused_;
};

/// Runs a line. Returns the reason of its failure; empty if there is none.
string RunLine(string const &line)
{
    std::ostringstream out;
    try
    {
        if (HistoryGuard::GetInterpreter().InterpretCommandLine(line, out))
            return string();
    }
    catch (Exception const &thrown)
    {
        return thrown.GetMessage();
    }
    string const reason = GetFirstLine(out.str());
    return reason.empty() ? "the line failed" : reason;
}

} // namespace

string ReadStateScript(string const &fileName)
{
    errno = 0;
    std::ifstream file(file_system::GetStreamPath(fileName), std::ios::binary);
    string text;
    if (file)
    {
        text.resize(s_maxByteSize + 1);
        file.read(text.data(), static_cast<std::streamsize>(text.size()));
        text.resize(static_cast<std::size_t>(file.gcount()));
    }
    if (!file && !file.eof())
        throw DataException(fileName + ": " + file_system::GetLastFailureReason());
    if (text.size() > s_maxByteSize)
        throw DataException(fileName + ": is larger than a script of settings");
    if (text.find('\0') != string::npos)
        throw DataException(fileName + ": is no text");
    return text;
}

std::vector<string> RunStateScript(string const &text, string const &name,
                                   std::function<bool(string const &line)> const &accepts)
{
    HistoryGuard const guard;
    std::vector<string> failures;
    std::istringstream lines(text);
    unsigned int number = 0;
    for (string line; std::getline(lines, line);)
    {
        ++number;
        TrimWhitespace(string(line), line);
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        if (line.empty() || line.front() == '#' || !accepts(line))
            continue;
        if (string const reason = RunLine(line); !reason.empty())
        {
            std::ostringstream failure;
            failure << name << '(' << number << "): " << reason;
            failures.push_back(failure.str());
        }
    }
    return failures;
}

void WriteStateScript(string const &fileName, string const &text)
{
    string directory, base, extension;
    file_system::SplitFileName(fileName, directory, base, extension);
    if (!directory.empty() && !file_system::FileExists(directory))
        file_system::CreateDirectoryPath(directory);
    // A full disk leaves the old script as it was.
    string const partName = fileName + ".part";
    errno = 0;
    std::ofstream file(file_system::GetStreamPath(partName), std::ios::binary | std::ios::trunc);
    file << text << std::flush;
    file.close();
    if (file && file_system::MoveFileA(partName, fileName, true))
        return;
    string const reason = file_system::GetLastFailureReason();
    file_system::DeleteFileA(partName);
    throw DataException(fileName + ": " + reason);
}

} // namespace viewer
