#include <quillmarsh/basetools/variableregistry.h>

#include <algorithm>

namespace quillmarsh
{
namespace
{

// A registered proxy can be renamed through the registry, so a search does not rely on the order.
template<typename Proxies>
auto FindByName(Proxies &proxies, string const &name)
{
    return std::find_if(proxies.begin(), proxies.end(),
                        [&name](AutoPtr<VariableProxy> const &proxy) { return proxy->GetName() == name; });
}

void SortByName(std::vector<AutoPtr<VariableProxy>> &proxies)
{
    std::stable_sort(proxies.begin(), proxies.end(),
                     [](auto const &a, auto const &b) { return a->GetName() < b->GetName(); });
}

} // namespace

VariableRegistry::VariableRegistry(string const &name) : name_(name) {}

VariableRegistry::~VariableRegistry() = default;

bool VariableRegistry::RegisterVariable(VariableProxy const &proxy)
{
    if (GetVariable(proxy.GetName()) != nullptr)
        return false;
    AutoPtr<VariableProxy> clone(proxy.Clone());
    if (clone == nullptr)
        return false;
    proxies_.push_back(std::move(clone));
    SortByName(proxies_);
    return true;
}

void VariableRegistry::UnregisterVariable(string const &name)
{
    // By value: the name may be that of the proxy itself.
    std::erase_if(proxies_, [name](AutoPtr<VariableProxy> const &proxy) { return proxy->GetName() == name; });
    SortByName(proxies_);
}

void VariableRegistry::UnregisterAllVariables()
{
    proxies_.clear();
}

unsigned int VariableRegistry::GetNumVariables() const
{
    return static_cast<unsigned int>(proxies_.size());
}

VariableProxy *VariableRegistry::GetVariable(string const &name)
{
    auto const found = FindByName(proxies_, name);
    return found == proxies_.end() ? nullptr : found->get();
}

VariableProxy const *VariableRegistry::GetVariable(string const &name) const
{
    return const_cast<VariableRegistry *>(this)->GetVariable(name);
}

VariableProxy &VariableRegistry::GetVariable(unsigned int index)
{
    QUILLMARSH_ASSERT(index < proxies_.size(), "Index out of range.");
    return *proxies_[index];
}

VariableProxy const &VariableRegistry::GetVariable(unsigned int index) const
{
    return const_cast<VariableRegistry *>(this)->GetVariable(index);
}

void VariableRegistry::ForceValueRanges()
{
    // By index: an observer may register a variable.
    for (std::size_t i = 0; i < proxies_.size(); ++i)
        proxies_[i]->SetValueFromString(proxies_[i]->GetValueString());
}

} // namespace quillmarsh
