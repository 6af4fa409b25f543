#include "variablesetting.h"

#include "arguments.h"

namespace quillmarsh::host
{

namespace
{

/// Whether the proxy is one of a `T`; `converts` then tells about the value.
template<typename T>
bool TestValue(VariableProxy const &proxy, string const &text, bool &converts)
{
    if (dynamic_cast<TVariableProxy<T> const *>(&proxy) == nullptr)
        return false;
    T value{};
    converts = ToValue(text, value);
    return true;
}

/// Proxies of other types take what they take.
template<typename... Types>
bool Converts(VariableProxy const &proxy, string const &text)
{
    bool converts = true;
    static_cast<void>((... || TestValue<Types>(proxy, text, converts)));
    return converts;
}

} // namespace

void SetVariable(VariableRegistry &registry, string const &name, string const &value, bool developerMode)
{
    VariableProxy *const proxy = registry.GetVariable(name);
    if (proxy == nullptr)
        ThrowWrongArgument("--set: there is no variable '" + name + "'");
    if (proxy->IsDeveloperModeOnly() && !developerMode)
        ThrowWrongArgument("--set: the variable '" + name + "' wants --developer-mode");
    if (!Converts<void *, bool, int, unsigned int, float, double, string>(*proxy, value))
    {
        ThrowWrongArgument("--set: '" + value + "' is no value for the variable '" + name + "' of type " +
                           proxy->GetTargetTypeName());
    }
    proxy->SetValueFromString(value);
}

} // namespace quillmarsh::host
