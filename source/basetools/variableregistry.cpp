#include <quillmarsh/basetools/variableregistry.h>

#include <algorithm>

namespace quillmarsh
{
namespace
{

// A registered proxy can be renamed, so that a search cannot rely on the order.
template<typename Proxies>
auto FindByName(Proxies &proxies, string const &name)
{
    return std::find_if(proxies.begin(), proxies.end(),
                        [&name](std::shared_ptr<VariableProxy> const &proxy) { return proxy->GetName() == name; });
}

void SortByName(std::vector<std::shared_ptr<VariableProxy>> &proxies)
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
    std::shared_ptr<VariableProxy> clone(proxy.Clone());
    if (clone == nullptr)
        return false;
    proxies_.push_back(std::move(clone));
    SortByName(proxies_);
    return true;
}

void VariableRegistry::UnregisterVariable(string const &name)
{
    // The name is copied: it may be that of the proxy itself.
    std::erase_if(proxies_, [name](std::shared_ptr<VariableProxy> const &proxy) { return proxy->GetName() == name; });
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
    static VariableProxyVoidPointer s_none;
    bool const isThere = index < proxies_.size();
    QUILLMARSH_ASSERT(isThere, "Index out of range.");
    return isThere ? *proxies_[index] : s_none;
}

VariableProxy const &VariableRegistry::GetVariable(unsigned int index) const
{
    return const_cast<VariableRegistry *>(this)->GetVariable(index);
}

void VariableRegistry::ForceValueRanges()
{
    std::vector<std::shared_ptr<VariableProxy>> const proxies = proxies_;
    for (std::shared_ptr<VariableProxy> const &proxy : proxies)
    {
        if (std::find(proxies_.begin(), proxies_.end(), proxy) != proxies_.end())
            proxy->SetValueFromString(proxy->GetValueString());
    }
}

} // namespace quillmarsh
