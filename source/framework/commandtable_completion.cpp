#include <quillmarsh/framework/commandtable.h>

#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/framework/humaninterfacedevice.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/plugin.h>

#include <algorithm>

namespace quillmarsh
{
namespace
{

using eKind = CommandWord::eKind;
using UnfinishedWord = CommandLineParser::UnfinishedWord;

/// One entry of a directory.
struct FileEntry
{
    string name;
    bool isDirectory;
};

/// Lists one directory.
class FileLister : public file_system::FileSystemWalker
{
public:
    std::vector<FileEntry> entries;

private:
    void OnFile(unsigned int, unsigned int, string const &, string const &name) override
    {
        entries.push_back({name, false});
    }
    bool OnDirectory(unsigned int, unsigned int, string const &, string const &name) override
    {
        entries.push_back({name, true});
        return false;
    }
};

/// Length of a path up to and with its last separator. Windows takes both slashes.
std::size_t GetDirectoryLength(string const &path)
{
    char const separators[] = {'/', file_system::GetPathSeparator(), '\0'};
    std::size_t const last = path.find_last_of(separators);
    return last == string::npos ? 0 : last + 1;
}

} // namespace

void CompletionOffers::Add(string const &text, string const &description, bool isWhole)
{
    Add({text, description, "", isWhole});
}

void CompletionOffers::AddPlain(string const &text, string const &description, bool isWhole)
{
    Add({text, description, text, isWhole});
}

void CompletionOffers::Add(CompletionCandidate candidate)
{
    bool const canBeTyped = MatchPrefix(candidate.text, prefix_) && MakePrintable(candidate.text) == candidate.text;
    if (!canBeTyped || !texts_.insert(candidate.text).second)
        return;
    candidate.description = MakePrintable(candidate.description);
    candidates_.push_back(std::move(candidate));
}

void OfferBooleans(CompletionOffers &offers)
{
    for (char const *const word : {"true", "false"})
        offers.Add(word);
    if (offers.GetPrefix().empty())
        return;
    for (char const *const word : {"yes", "no", "on", "off", "1", "0"})
        offers.Add(word);
}

void OfferFiles(CompletionOffers &offers)
{
    string const &prefix = offers.GetPrefix();
    string const directory = prefix.substr(0, GetDirectoryLength(prefix));
    bool const wantsHidden = MatchNext(prefix.substr(directory.size()), '.');
    FileLister lister;
    lister.Walk(directory.empty() ? "." : directory);
    std::sort(lister.entries.begin(), lister.entries.end(),
              [](FileEntry const &a, FileEntry const &b) { return a.name < b.name; });
    for (FileEntry const &entry : lister.entries)
    {
        string text = directory + entry.name;
        if (!MatchPrefix(text, prefix) || (entry.name.front() == '.' && !wantsHidden))
            continue;
        if (entry.isDirectory)
            text += directory.empty() ? file_system::GetPathSeparator() : directory.back();
        offers.Add(text, "", !entry.isDirectory);
    }
}

void OfferDevices(CompletionOffers &offers)
{
    Kernel &kernel = Kernel::Instance();
    for (unsigned int i = 0; i < kernel.GetNumHumanInterfaceDevices(); ++i)
    {
        if (HumanInterfaceDevice const *const device = kernel.GetHumanInterfaceDevice(i))
        {
            HumanInterfaceDeviceInfo const &info = device->GetDeviceInfo();
            offers.Add(MakeString(info.GetCreationID()), info.GetDeviceDescription());
        }
    }
}

void OfferPlugins(CompletionOffers &offers)
{
    Kernel &kernel = Kernel::Instance();
    PluginInfo info;
    for (unsigned int i = 0; i < kernel.GetNumPlugins(); ++i)
    {
        if (kernel.GetPluginInfo(i, info))
            offers.Add(info.GetPluginName(), info.GetDescription());
    }
}

void CommandArguments::OfferWords(UnfinishedWord const &word, CommandLineParser const &ahead,
                                  CompletionOffers &offers) const
{
    switch (word.kind)
    {
    case UnfinishedWord::eKind::e_command:
        return;
    case UnfinishedWord::eKind::e_option:
        OfferOptions(offers);
        return;
    case UnfinishedWord::eKind::e_value:
    {
        CommandWord const *const named = FindWord(eKind::e_assignment, word.assignment);
        OfferValues(named != nullptr ? named : FindWord(eKind::e_anyAssignment, word.assignment), offers);
        return;
    }
    case UnfinishedWord::eKind::e_string:
        break;
    }
    OfferArgument(ahead, offers);
    bool const mayBecomeOption = word.text.empty() && !word.isQuoted;
    if (offers.GetCandidates().empty() && mayBecomeOption)
        OfferOptions(offers);
}

void CommandArguments::OfferOptions(CompletionOffers &offers) const
{
    for (CommandWord const &word : words_)
    {
        string value;
        bool const isAssignment = word.kind == eKind::e_assignment;
        bool const isUsed = isAssignment ? parser_.GetAssignment(word.name, value) : parser_.GetOption(word.name);
        if (word.description == nullptr || isUsed || (!isAssignment && word.kind != eKind::e_option))
            continue;
        string description = word.description;
        description.erase(description.find_last_not_of('\n') + 1);
        if (isAssignment)
            offers.AddPlain(parser_.FormatAssignmentHelp(word.name, "", "", 0), string(word.value) + ": " + description,
                            false);
        else
            offers.AddPlain(parser_.FormatOptionHelp(word.name, "", 0), description);
    }
}

void CommandArguments::OfferArgument(CommandLineParser const &ahead, CompletionOffers &offers) const
{
    unsigned int numStrings = 0;
    for (unsigned int i = 0; i < ahead.GetNumArguments(); ++i)
        numStrings += ahead.GetArgument(i) == CommandLineParser::e_string;
    CommandWord const *const word = FindArgumentWord(numStrings);
    bool const isTooLate =
        word != nullptr && word->kind == eKind::e_leadingArgument && ahead.GetNumArguments() != numStrings;
    if (!isTooLate)
        OfferValues(word, offers);
}

void CommandArguments::OfferValues(CommandWord const *word, CompletionOffers &offers) const
{
    if (word != nullptr && word->accepted.offer != nullptr)
        word->accepted.offer(*this, offers);
}

} // namespace quillmarsh
