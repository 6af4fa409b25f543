#include <quillmarsh/framework/commands/variablecmd.h>

#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/basetools/variableregistry.h>
#include <quillmarsh/framework/commandtable.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/kernelexecutionparams.h>

namespace quillmarsh::framework_commands
{
namespace
{

constexpr CommandWord s_words[] = {
    CommandWord::Option(VariableCmd::s_szOptionInfo, "print detailed variable info\n"),
    CommandWord::Argument("0) variable-name or prefix", "referenced variable(s)\n"),
    CommandWord::Argument("1) variable-type-specific value",
                          "new value that will be assigned to referenced variable\n"),
};

constexpr char const *s_szNote = "\tIf argument-1 is not specified, all variables with prefix\n"
                                 "\tmatching the argument-0 are printed. To set new value\n"
                                 "\ttype variable's full name for argument-0 and desired value\n"
                                 "\tfor argument-1";

/// Argument by index if it is a string, else null.
string const *GetStringAt(CommandLineParser const &parser, unsigned int index)
{
    bool const isString = index < parser.GetNumArguments() && parser.GetArgument(index) == CommandLineParser::e_string;
    return isString ? &parser.GetArgument(index).String() : nullptr;
}

void DumpInfo(ostream &out, VariableProxy const &variable)
{
    out << "Variable....: " << variable.GetName() << nl;
    out << "Description.: " << variable.GetVarDescription() << nl;
    out << "DevModeOnly.: " << MakeString(variable.IsDeveloperModeOnly()) << nl;
    out << "Type........: " << variable.GetTargetTypeName() << nl;
    out << "Restrictions: " << variable.GetTargetRestrictions() << nl;
    out << "Target......: " << variable.GetTargetObjectName() << nl;
    out << "Value.......: " << variable.GetValueString() << nl;
}

void SetVar(ostream &out, VariableProxy &variable, string const &value)
{
    // The kernel's parameter counts, not the interpreter's copy of it.
    if (variable.IsDeveloperModeOnly() && !KernelExecutionParams(true).DeveloperMode)
    {
        out << "Variable: " << variable.GetName() << " is developer-mode only." << nl;
        return;
    }
    variable.SetValueFromString(value);
    VariableCmd::DumpVar(out, variable);
}

void DumpAllWithPrefix(ostream &out, VariableRegistry const &registry, string const &prefix)
{
    for (unsigned int i = 0; i < registry.GetNumVariables(); ++i)
    {
        VariableProxy const &variable = registry.GetVariable(i);
        if (MatchPrefix(variable.GetName(), prefix))
            VariableCmd::DumpVar(out, variable);
    }
}

} // namespace

VariableCmd::VariableCmd()
{
    SetDefaultName(s_szDefaultName);
    SetShortDesc("Control variables exported by application");
    SetVariableRegistry(nullptr);
}

VariableCmd::~VariableCmd() = default;

void VariableCmd::SetVariableRegistry(VariableRegistry *registry)
{
    registry_ = registry != nullptr ? registry : Kernel::Instance().GetVariableRegistry();
}

bool VariableCmd::ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &)
{
    if (registry_ == nullptr)
        return true;
    string const *const name = GetStringAt(parser, 0);
    string const *const value = GetStringAt(parser, 1);
    VariableProxy *const variable = name != nullptr ? registry_->GetVariable(*name) : nullptr;
    if (variable == nullptr)
    {
        DumpAllWithPrefix(out, *registry_, name != nullptr ? *name : string());
        return true;
    }

    bool const wantsInfo = parser.GetOption(s_szOptionInfo);
    if (wantsInfo)
        DumpInfo(out, *variable);
    if (value != nullptr)
        SetVar(out, *variable, *value);
    else if (!wantsInfo)
        DumpVar(out, *variable);
    return true;
}

void VariableCmd::DumpHelp(ostream &out, CommandLineParser const &parser)
{
    DumpCommandWords(out, parser, s_words, "print all variables");
    out << s_szNote << nl;
}

void VariableCmd::DumpVar(ostream &out, VariableProxy const &variable)
{
    out << variable.GetName() << " = " << variable.GetValueString() << nl;
}

} // namespace quillmarsh::framework_commands
