#include <quillmarsh/basetools/variableproxy.h>

#include <atomic>

namespace quillmarsh
{
namespace
{

std::atomic<VariableProxy::Observer *> s_globalObserver{nullptr};

} // namespace

VariableProxy::Observer::~Observer() = default;

void VariableProxy::Observer::OnValueChanged(VariableProxy const &) {}

VariableProxy::VariableProxy(string const &name, string const &description, bool developerModeOnly, Observer *observer)
    : observer_(observer),
      developerModeOnly_(developerModeOnly),
      name_(name),
      description_(description)
{
}

VariableProxy::VariableProxy(VariableProxy const &) = default;
VariableProxy &VariableProxy::operator=(VariableProxy const &) = default;
VariableProxy::~VariableProxy() = default;

string VariableProxy::GetTargetRestrictions() const
{
    return string();
}

void VariableProxy::SetName(string const &name)
{
    name_ = name;
}

void VariableProxy::SetVarDescription(string const &description)
{
    description_ = description;
}

void VariableProxy::SetDeveloperModeOnly(bool developerModeOnly)
{
    developerModeOnly_ = developerModeOnly;
}

void VariableProxy::SetObserver(Observer *observer)
{
    observer_ = observer;
}

void VariableProxy::SetGlobalObserver(Observer *observer)
{
    s_globalObserver.store(observer, std::memory_order_release);
}

VariableProxy::Observer *VariableProxy::GetGlobalObserver()
{
    return s_globalObserver.load(std::memory_order_acquire);
}

void VariableProxy::NotifyObserverAboutValueChange() const
{
    Observer *const observer = observer_ != nullptr ? observer_ : GetGlobalObserver();
    if (observer != nullptr)
        observer->OnValueChanged(*this);
}

// Not inline, so that each class has its table of virtual operations in this module only.
#define QUILLMARSH_DEFINE_VARIABLE_PROXY(className, type)                                                              \
    className::className(type *target, string const &name, string const &description, bool developerModeOnly,          \
                         VariableProxy::Observer *observer)                                                            \
        : TVariableProxy<type>(target, name, description, developerModeOnly, observer)                                 \
    {                                                                                                                  \
    }                                                                                                                  \
    className *className::Clone() const                                                                                \
    {                                                                                                                  \
        return new className(*this);                                                                                   \
    }

#define QUILLMARSH_DEFINE_VARIABLE_PROXY_RANGE_CHECKED(className, type)                                                \
    className::className(type *target, type minimum, type maximum, string const &name, string const &description,      \
                         bool developerModeOnly, VariableProxy::Observer *observer)                                    \
        : TVariableProxyRangeChecked<type>(target, minimum, maximum, name, description, developerModeOnly, observer)   \
    {                                                                                                                  \
    }                                                                                                                  \
    className *className::Clone() const                                                                                \
    {                                                                                                                  \
        return new className(*this);                                                                                   \
    }

QUILLMARSH_DEFINE_VARIABLE_PROXY(VariableProxyVoidPointer, void *)
QUILLMARSH_DEFINE_VARIABLE_PROXY(VariableProxyBool, bool)
QUILLMARSH_DEFINE_VARIABLE_PROXY(VariableProxyInt, int)
QUILLMARSH_DEFINE_VARIABLE_PROXY(VariableProxyUInt, unsigned int)
QUILLMARSH_DEFINE_VARIABLE_PROXY(VariableProxyFloat, float)
QUILLMARSH_DEFINE_VARIABLE_PROXY(VariableProxyDouble, double)
QUILLMARSH_DEFINE_VARIABLE_PROXY(VariableProxyString, string)
QUILLMARSH_DEFINE_VARIABLE_PROXY_RANGE_CHECKED(VariableProxyRangeCheckedInt, int)
QUILLMARSH_DEFINE_VARIABLE_PROXY_RANGE_CHECKED(VariableProxyRangeCheckedUInt, unsigned int)
QUILLMARSH_DEFINE_VARIABLE_PROXY_RANGE_CHECKED(VariableProxyRangeCheckedFloat, float)
QUILLMARSH_DEFINE_VARIABLE_PROXY_RANGE_CHECKED(VariableProxyRangeCheckedDouble, double)

} // namespace quillmarsh
