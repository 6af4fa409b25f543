#include "hostcommands.h"

#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/framework/plugin.h>

#include <algorithm>
#include <iterator>

namespace quillmarsh::host
{

namespace
{

constexpr CommandWord s_words[] = {
    CommandWord::Argument("0) plug-in name", "print all that the plug-in tells about itself\n",
                          command_values::s_plugin),
};

/// Names of the types for people, indexed by type.
constexpr char const *s_typeNames[] = {"generic extension", "application",     "DirectInput proxy",
                                       "device driver",     "video subsystem", "video renderer"};

string GetTypeName(PluginInfo const &info)
{
    unsigned int const type = info.GetPluginType();
    return type < std::size(s_typeNames) ? s_typeNames[type] : "unknown type";
}

string GetLibrary(PluginSet::Entry const &entry)
{
    return entry.fileName.empty() ? "the program itself" : entry.fileName;
}

/// Prints rows with columns of equal width; the last column is as it is.
void PrintTable(ostream &out, std::vector<std::vector<string>> const &rows)
{
    std::vector<std::size_t> widths;
    for (std::vector<string> const &row : rows)
    {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], row[i].size());
    }
    for (std::vector<string> const &row : rows)
    {
        string line;
        for (std::size_t i = 0; i + 1 < row.size(); ++i)
            line += row[i] + string(widths[i] + 2 - row[i].size(), ' ');
        out << line << row.back() << nl;
    }
}

} // namespace

ListPluginsCmd::ListPluginsCmd(HostKernel &kernel) : kernel_(kernel)
{
    SetDefaultName("list-plugins");
    SetShortDesc("List the plug-ins and their libraries");
}

std::span<CommandWord const> ListPluginsCmd::GetWords() const
{
    return s_words;
}

string ListPluginsCmd::GetDefaultBehavior() const
{
    return "list name, type, version and library of each plug-in, and the libraries that were refused";
}

bool ListPluginsCmd::Execute(ostream &out, CommandArguments const &arguments)
{
    PluginSet const &plugins = kernel_.GetPlugins();
    string const *const name = arguments.FindArgument(0);
    std::vector<std::vector<string>> rows;
    for (PluginSet::Entry const &entry : plugins.GetEntries())
    {
        PluginInfo const &info = entry.descriptor->GetPluginInfo();
        if (name == nullptr)
            rows.push_back(
                {info.GetPluginName(), GetTypeName(info), info.GetPluginVersion().MakeString(), GetLibrary(entry)});
        else if (info.GetPluginName() == *name)
        {
            out << "Plug-in of " << GetLibrary(entry) << ":\n";
            info.Dump(out, 1);
        }
    }
    PrintTable(out, rows);
    if (name != nullptr)
        return true;
    for (PluginSet::Refusal const &refusal : plugins.GetRefusals())
        out << e_warning << "Refused: " << refusal.reason << nl << e_info;
    if (rows.empty())
        out << "There are no plug-ins." << nl;
    return true;
}

} // namespace quillmarsh::host
