#include "../wholefile.h"
#include "hostcommands.h"

#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/basetools/variableregistry.h>
#include <quillmarsh/framework/commands/variablecmd.h>

#include <charconv>

namespace quillmarsh::host
{

namespace
{

constexpr char s_szOverwrite[] = "overwrite";

constexpr CommandWord s_words[] = {
    CommandWord::Option(s_szOverwrite, "replace the file if it exists\n"),
    CommandWord::Argument("0) file-name", "script to write\n", command_values::s_file),
};

/// Gives the shortest text that reads as the same number.
template<typename T>
bool GetNumberText(VariableProxy const &variable, string &text)
{
    auto const *const typed = dynamic_cast<TVariableProxy<T> const *>(&variable);
    if (typed == nullptr || typed->GetTarget() == nullptr)
        return false;
    char digits[64];
    text.assign(digits, std::to_chars(std::begin(digits), std::end(digits), *typed->GetTarget()).ptr);
    return true;
}

bool HasLineEnd(string const &text)
{
    return text.find_first_of(string("\n\r\0", 3)) != string::npos;
}

} // namespace

string GetVariableText(VariableProxy const &variable)
{
    string text;
    if (!GetNumberText<float>(variable, text) && !GetNumberText<double>(variable, text))
        text = variable.GetValueString();
    return text;
}

VariableTexts GetVariableTexts(VariableRegistry const &registry)
{
    VariableTexts texts;
    for (unsigned int i = 0; i < registry.GetNumVariables(); ++i)
    {
        VariableProxy const &variable = registry.GetVariable(i);
        if (dynamic_cast<TVariableProxy<void *> const *>(&variable) == nullptr)
            texts.emplace(variable.GetName(), GetVariableText(variable));
    }
    return texts;
}

SaveVariablesCmd::SaveVariablesCmd(HostKernel &kernel, VariableTexts const &startValues)
    : kernel_(kernel),
      startValues_(startValues)
{
    SetDefaultName("save-variables");
    SetShortDesc("Save the variables that differ from the start as a script");
}

std::span<CommandWord const> SaveVariablesCmd::GetWords() const
{
    return s_words;
}

bool SaveVariablesCmd::Execute(ostream &out, CommandArguments const &arguments)
{
    string const *const fileName = arguments.FindArgument(0);
    if (fileName == nullptr || fileName->empty())
        return RefuseLine(out, "The name of the file is missing.");
    string script = "# Variables that differ from the start.\n";
    unsigned int count = 0;
    for (auto const &[name, text] : GetVariableTexts(*kernel_.GetVariableRegistry()))
    {
        auto const start = startValues_.find(name);
        if (start != startValues_.end() && start->second == text)
            continue;
        if (HasLineEnd(name) || HasLineEnd(text))
        {
            out << e_warning << "Not saved: the value of " << name << " has several lines." << nl << e_info;
            continue;
        }
        CommandLineParser const &parser = arguments.GetParser();
        script += framework_commands::VariableCmd::s_szDefaultName + (' ' + parser.FormatWord(name)) + ' ' +
                  parser.FormatWord(text) + '\n';
        ++count;
    }
    string const reason = WriteWholeFile(*fileName, script, arguments.HasOption(s_szOverwrite));
    if (!reason.empty())
    {
        bool const canOverwrite = !arguments.HasOption(s_szOverwrite) && reason == "the file already exists";
        return RefuseLine(out, *fileName + ": " + reason + (canOverwrite ? ", replace it with -overwrite" : ""));
    }
    out << count << (count == 1 ? " variable" : " variables") << " saved to " << *fileName << nl;
    return true;
}

} // namespace quillmarsh::host
