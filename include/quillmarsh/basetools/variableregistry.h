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
    /// `name` is for the program's own use.
    explicit VariableRegistry(string const &name = string());
    virtual ~VariableRegistry();

    /// Name of the registry.
    string const &GetName() const { return name_; }

    /// Stores a clone of the proxy; the caller keeps the proxy itself. Returns false when the name is taken.
    bool RegisterVariable(VariableProxy const &proxy);
    /// Deletes the entry of that name, if there is one. An observer may do so while it is called.
    void UnregisterVariable(string const &name);
    /// Deletes all entries.
    void UnregisterAllVariables();

    /// Number of variables.
    unsigned int GetNumVariables() const;
    /// Variable by exact name; null when there is none. Good until the variable is unregistered.
    VariableProxy *GetVariable(string const &name);
    /// Variable by exact name, likewise.
    VariableProxy const *GetVariable(string const &name) const;
    /// Variable by index, in the order of names. Asserts "Index out of range." past the end, and gives a proxy without
    /// a variable then.
    VariableProxy &GetVariable(unsigned int index);
    /// Variable by index, likewise.
    VariableProxy const &GetVariable(unsigned int index) const;

    /// Sets each variable from its own text: a variable that the program has set without its range-checked proxy
    /// returns to its range, and every observer is told once. A real number is rounded to the digits of its text.
    /// Observers may register and unregister variables meanwhile: a variable that was unregistered is not set any more,
    /// and a new one is left alone.
    void ForceValueRanges();

private:
    /// Shared with ForceValueRanges() only, which keeps a proxy alive while it is at work.
    std::vector<std::shared_ptr<VariableProxy>> proxies_;
    string name_;
};

} // namespace quillmarsh

#endif
