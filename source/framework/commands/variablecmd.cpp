#include <quillmarsh/framework/commands/variablecmd.h>

#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/basetools/variableregistry.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/kernelexecutionparams.h>

namespace quillmarsh::framework_commands
{
namespace
{

// A command without a registry does nothing, and accepts everything.
VariableRegistry *GetRegistry(CommandArguments const &line)
{
    return static_cast<VariableCmd const &>(line.GetCommand()).GetVariableRegistry();
}

/// True when the proxy is one of a `T`; `converts` then tells about the value.
template<typename T>
bool TestValue(VariableProxy const &variable, string const &text, bool &converts)
{
    if (dynamic_cast<TVariableProxy<T> const *>(&variable) == nullptr)
        return false;
    T value{};
    // ToValue() reads a negative number as an unsigned one, modulo its range; nobody means that.
    converts = std::is_same_v<T, unsigned int> ? command_values::IsUnsigned(text) : ToValue(text, value);
    return true;
}

/// Variables of other types take what they take.
template<typename... Types>
bool Converts(VariableProxy const &variable, string const &text)
{
    bool converts = true;
    static_cast<void>((... || TestValue<Types>(variable, text, converts)));
    return converts;
}

/// With a value on the line only a whole name will do.
bool IsNameOrPrefix(CommandArguments const &line, string const &text)
{
    VariableRegistry *const registry = GetRegistry(line);
    if (registry == nullptr || registry->GetVariable(text) != nullptr)
        return true;
    if (line.FindArgument(1) != nullptr)
        return false;
    for (unsigned int i = 0; i < registry->GetNumVariables(); ++i)
    {
        if (MatchPrefix(registry->GetVariable(i).GetName(), text))
            return true;
    }
    return false;
}

bool IsValue(CommandArguments const &line, string const &text)
{
    VariableRegistry *const registry = GetRegistry(line);
    string const *const name = line.FindArgument(0);
    VariableProxy const *const variable =
        registry != nullptr && name != nullptr ? registry->GetVariable(*name) : nullptr;
    return variable == nullptr || VariableCmd::AcceptsValue(*variable, text);
}

/// Developers' variables can always be read.
void OfferNames(CommandArguments const &line, CompletionOffers &offers)
{
    VariableRegistry const *const registry = GetRegistry(line);
    for (unsigned int i = 0; registry != nullptr && i < registry->GetNumVariables(); ++i)
    {
        VariableProxy const &variable = registry->GetVariable(i);
        string const &description = variable.GetVarDescription();
        offers.Add(variable.GetName(),
                   "= " + variable.GetValueString() + (description.empty() ? "" : ": " + description));
    }
}

/// Offers both ends of a range; an end at the limit of the type is none.
template<typename T>
void OfferRange(VariableProxy const &variable, CompletionOffers &offers)
{
    auto const *const checked = dynamic_cast<TVariableProxyRangeChecked<T> const *>(&variable);
    if (checked == nullptr)
        return;
    using Limits = std::numeric_limits<T>;
    if (std::isfinite(static_cast<double>(checked->GetMinimum())) && checked->GetMinimum() != Limits::lowest())
        offers.Add(MakeString(checked->GetMinimum()), "the lowest value");
    if (std::isfinite(static_cast<double>(checked->GetMaximum())) && checked->GetMaximum() != Limits::max())
        offers.Add(MakeString(checked->GetMaximum()), "the highest value");
}

void OfferValues(CommandArguments const &line, CompletionOffers &offers)
{
    VariableRegistry *const registry = GetRegistry(line);
    string const *const name = line.FindArgument(0);
    VariableProxy const *const variable =
        registry != nullptr && name != nullptr ? registry->GetVariable(*name) : nullptr;
    if (variable == nullptr)
        return;
    if (dynamic_cast<TVariableProxy<bool> const *>(variable) != nullptr)
    {
        OfferBooleans(offers);
        return;
    }
    offers.Add(variable->GetValueString(), "the present value");
    OfferRange<int>(*variable, offers);
    OfferRange<unsigned int>(*variable, offers);
    OfferRange<float>(*variable, offers);
    OfferRange<double>(*variable, offers);
}

constexpr CommandValue s_nameOrPrefix{"the name of a variable, nor what such a name begins with", &IsNameOrPrefix,
                                      &OfferNames};
constexpr CommandValue s_value{"a value of the variable's type", &IsValue, &OfferValues};

constexpr CommandWord s_words[] = {
    CommandWord::Option(VariableCmd::s_szOptionInfo, "print detailed variable info\n"),
    CommandWord::LeadingArgument("0) variable-name or prefix", "referenced variable(s)\n", s_nameOrPrefix),
    CommandWord::LeadingArgument("1) variable-type-specific value",
                                 "new value that will be assigned to referenced variable\n", s_value),
};

constexpr char const *s_szNote = "\tIf argument-1 is not specified, all variables with prefix\n"
                                 "\tmatching the argument-0 are printed. To set new value\n"
                                 "\ttype variable's full name for argument-0 and desired value\n"
                                 "\tfor argument-1";

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
    CommandArguments const arguments(*this, parser, s_words);
    string const *const name = arguments.FindArgument(0);
    string const *const value = arguments.FindArgument(1);
    VariableProxy *const variable = name != nullptr ? registry_->GetVariable(*name) : nullptr;
    if (variable == nullptr)
    {
        DumpAllWithPrefix(out, *registry_, name != nullptr ? *name : string());
        return true;
    }

    bool const wantsInfo = arguments.HasOption(s_szOptionInfo);
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

std::span<CommandWord const> VariableCmd::GetWords() const
{
    return s_words;
}

bool VariableCmd::AcceptsValue(VariableProxy const &variable, string const &text)
{
    return Converts<void *, bool, int, unsigned int, float, double, string>(variable, text);
}

void VariableCmd::DumpVar(ostream &out, VariableProxy const &variable)
{
    out << variable.GetName() << " = " << variable.GetValueString() << nl;
}

} // namespace quillmarsh::framework_commands
