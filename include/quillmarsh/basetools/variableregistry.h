// The variables that a program exports, sorted by name.
#ifndef QUILLMARSH_BASETOOLS_VARIABLEREGISTRY_H
#define QUILLMARSH_BASETOOLS_VARIABLEREGISTRY_H

#include <quillmarsh/basetools/variableproxy.h>

#include <memory>
#include <vector>

namespace quillmarsh
{

/// Holds copies of variable proxies in the order of their names. Used from the console's thread.
class QUILLMARSH_API VariableRegistry : NoCopy
{
public:
    explicit VariableRegistry(string const &name = string());
    virtual ~VariableRegistry();

    string const &GetName() const { return name_; }

    /// Keeps a clone of the proxy, which stays the caller's. False when the name is taken.
    bool RegisterVariable(VariableProxy const &proxy);
    /// Deletes the entry of that name, if there is one. An observer may do so while it is called.
    void UnregisterVariable(string const &name);
    /// Deletes all entries.
    void UnregisterAllVariables();

    unsigned int GetNumVariables() const;
    /// By exact name; null when there is none. Good until the variable is unregistered.
    VariableProxy *GetVariable(string const &name);
    VariableProxy const *GetVariable(string const &name) const;
    /// By index in the order of names. Asserts "Index out of range." past the end, and gives a proxy without a variable
    /// then.
    VariableProxy &GetVariable(unsigned int index);
    VariableProxy const &GetVariable(unsigned int index) const;

    /// Sets each variable from its own text: what was changed behind the back of a range-checked proxy comes back into
    /// its range, and every observer is told once. A real number is rounded to the digits of its text. Observers may
    /// register and unregister variables meanwhile: one that has gone is not set any more, a new one is left alone.
    void ForceValueRanges();

private:
    /// Shared with ForceValueRanges() only, which keeps a proxy alive while it is at work.
    std::vector<std::shared_ptr<VariableProxy>> proxies_;
    string name_;
};

} // namespace quillmarsh

#endif
