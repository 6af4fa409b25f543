#include "folder.h"

#include "loader.h"

#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/dataobjects/datafiles.h>

#include <algorithm>
#include <map>

namespace viewer
{

using namespace quillmarsh;

namespace
{

unsigned char ToLower(char c)
{
    return static_cast<unsigned char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
}

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// Skips the zeros at the front of a number, and returns the position behind its last digit.
std::size_t FindNumber(string const &text, std::size_t &at)
{
    while (at + 1 < text.size() && text[at] == '0' && IsDigit(text[at + 1]))
        ++at;
    std::size_t end = at;
    while (end < text.size() && IsDigit(text[end]))
        ++end;
    return end;
}

/// Compares names as people sort them: letters of both cases are equal, and numbers count by their value. Negative if
/// `a` comes first.
int CompareNames(string const &a, string const &b)
{
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < a.size() && j < b.size())
    {
        if (IsDigit(a[i]) && IsDigit(b[j]))
        {
            std::size_t const endA = FindNumber(a, i);
            std::size_t const endB = FindNumber(b, j);
            if (endA - i != endB - j)
                return endA - i < endB - j ? -1 : 1;
            if (int const order = a.compare(i, endA - i, b, j, endB - j); order != 0)
                return order;
            i = endA;
            j = endB;
        }
        else if (ToLower(a[i]) != ToLower(b[j]))
            return ToLower(a[i]) < ToLower(b[j]) ? -1 : 1;
        else
        {
            ++i;
            ++j;
        }
    }
    return static_cast<int>(i < a.size()) - static_cast<int>(j < b.size());
}

/// The order of a folder. Names that differ in case or in zeros only have an order, too.
bool ComesFirst(FolderEntry const &a, FolderEntry const &b)
{
    if (a.isFolder != b.isFolder)
        return a.isFolder;
    int const order = CompareNames(a.name, b.name);
    return order != 0 ? order < 0 : a.name < b.name;
}

/// Extensions of known types, in lower case, with the number of dimensions of their data.
class KnownTypes
{
public:
    KnownTypes()
    {
        std::vector<string> extensions;
        BreakIntoLines(sampled_data::GetExtensions(), extensions, ' ');
        for (string const &extension : extensions)
        {
            if (auto const type = sampled_data::FindFileType(extension))
            {
                string lower = extension;
                LowerCase(lower);
                types_[lower] = static_cast<unsigned int>(type->numDimensions);
            }
        }
    }

    /// Looks for the longest extension that is known; false if there is none.
    bool Find(string name, unsigned int &numDimensions) const
    {
        LowerCase(name);
        for (std::size_t dot = name.find('.'); dot != string::npos; dot = name.find('.', dot + 1))
        {
            if (auto const found = types_.find(name.substr(dot)); found != types_.end())
            {
                numDimensions = found->second;
                return true;
            }
        }
        return false;
    }

private:
    std::map<string, unsigned int> types_;
};

class Reader : public file_system::FileSystemWalker
{
public:
    std::vector<FolderEntry> entries;

protected:
    void OnFile(unsigned int, unsigned int, string const &path, string const &name) override
    {
        FolderEntry entry = {name};
        if (IsHidden(name) || !types_.Find(name, entry.numDimensions))
            return;
        FileStamp const stamp = GetFileStamp(path + name);
        entry.byteSize = stamp.byteSize;
        entry.time = stamp.time;
        entries.push_back(std::move(entry));
    }

    bool OnDirectory(unsigned int, unsigned int, string const &, string const &name) override
    {
        if (!IsHidden(name))
            entries.push_back({name, true});
        return false;
    }

private:
    static bool IsHidden(string const &name) { return name.starts_with('.'); }

    KnownTypes types_;
};

} // namespace

bool Folder::Read(string const &path, string &reason)
{
    string full = file_system::GetFullPathNameA(path, true);
    Reader reader;
    if (full.empty() || !reader.Walk(full))
    {
        bool const isThere = file_system::GetFileType(path, true) == std::filesystem::file_type::directory;
        reason = path + ": " + (isThere ? file_system::GetLastFailureReason() : "is no folder");
        return false;
    }
    std::map<string, FolderEntry const *> known;
    if (full == path_)
    {
        for (FolderEntry const &entry : all_)
            known[entry.name] = &entry;
    }
    for (FolderEntry &entry : reader.entries)
    {
        auto const found = known.find(entry.name);
        if (found != known.end() && found->second->byteSize == entry.byteSize && found->second->time == entry.time)
            entry.failure = found->second->failure;
    }
    std::sort(reader.entries.begin(), reader.entries.end(), ComesFirst);
    all_ = std::move(reader.entries);
    path_ = std::move(full);
    Filter();
    return true;
}

void Folder::SetFilter(string const &words)
{
    if (words == filter_)
        return;
    filter_ = words;
    Filter();
}

void Folder::SetFailure(string const &name, string const &failure)
{
    bool isChanged = false;
    for (std::vector<FolderEntry> *const entries : {&all_, &shown_})
    {
        for (FolderEntry &entry : *entries)
        {
            if (entry.name != name || entry.failure == failure)
                continue;
            entry.failure = failure;
            isChanged = true;
        }
    }
    revision_ += isChanged ? 1 : 0;
}

string Folder::FindNeighbour(string const &fileName, bool forward) const
{
    std::vector<FolderEntry const *> files;
    for (FolderEntry const &entry : shown_)
    {
        if (!entry.isFolder)
            files.push_back(&entry);
    }
    // The name itself may be filtered out, or gone from the folder: its neighbours are those of its place.
    string const name = fileName.starts_with(path_) ? fileName.substr(path_.size()) : fileName;
    FolderEntry const wanted = {name};
    auto const after =
        std::find_if(files.begin(), files.end(), [&](auto *entry) { return ComesFirst(wanted, *entry); });
    auto const place =
        std::find_if(files.begin(), files.end(), [&](auto *entry) { return !ComesFirst(*entry, wanted); });
    if (files.empty() || (files.size() == 1 && files[0]->name == name))
        return string();
    FolderEntry const *const next = after == files.end() ? files.front() : *after;
    FolderEntry const *const previous = place == files.begin() ? files.back() : *std::prev(place);
    return path_ + (forward ? next : previous)->name;
}

void Folder::Filter()
{
    std::vector<string> words;
    string lower = filter_;
    LowerCase(lower);
    BreakIntoLines(lower, words, ' ');
    shown_.clear();
    for (FolderEntry const &entry : all_)
    {
        string name = entry.name;
        LowerCase(name);
        auto const isInName = [&](string const &word) { return name.find(word) != string::npos; };
        if (std::all_of(words.begin(), words.end(), isInName))
            shown_.push_back(entry);
    }
    ++revision_;
}

} // namespace viewer
