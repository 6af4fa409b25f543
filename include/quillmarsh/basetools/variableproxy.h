// Proxies that export a program's variables to the console.
#ifndef QUILLMARSH_BASETOOLS_VARIABLEPROXY_H
#define QUILLMARSH_BASETOOLS_VARIABLEPROXY_H

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/platform/types.h>

#include <cmath>
#include <limits>
#include <type_traits>
#include <typeinfo>

namespace quillmarsh
{

/// Refers to a variable of the program, reads and writes it as text, and tells an observer of changes.
///
/// The variable is borrowed. Proxies are used from the console's thread; a variable that other threads use too must be
/// safe for that itself. Only the global observer may be set and read by any thread.
class QUILLMARSH_API VariableProxy
{
public:
    /// Is told of values that were set through a proxy, on the thread that sets them.
    class QUILLMARSH_API Observer
    {
    public:
        virtual ~Observer();
        /// The variable was set, to another value or to the same one.
        virtual void OnValueChanged(VariableProxy const &proxy);
    };

    virtual ~VariableProxy();

    /// Sets the variable from a text, and tells the observer. A text that does not convert leaves the value alone, and
    /// the observer is still told. Nothing happens without a variable.
    virtual void SetValueFromString(string const &text) = 0;
    /// Value of the variable as a text; "Unknown" without a variable.
    virtual string GetValueString() const = 0;
    /// Makes a proxy of the same kind for the same variable. The caller owns it.
    virtual VariableProxy *Clone() const = 0;
    /// Plain name of the type of the variable.
    virtual string GetTargetTypeName() const = 0;
    /// Text that describes which values the variable may have; empty when it may have any.
    virtual string GetTargetRestrictions() const;
    /// Type and address of the variable; "NA" without a variable.
    virtual string GetTargetObjectName() const = 0;

    /// @name Name, description, and who may use the variable
    /// All three are stored as they are given: empty and false at first.
    /// @{
    void SetName(string const &name);
    string const &GetName() const { return name_; }
    void SetVarDescription(string const &description);
    string const &GetVarDescription() const { return description_; }
    void SetDeveloperModeOnly(bool developerModeOnly);
    bool IsDeveloperModeOnly() const { return developerModeOnly_; }
    /// @}

    /// @name Observers
    /// They are borrowed; null means none. A proxy that has an observer of its own does not tell the global one.
    /// @{
    void SetObserver(Observer *observer);
    Observer *GetObserver() const { return observer_; }
    static void SetGlobalObserver(Observer *observer);
    static Observer *GetGlobalObserver();
    /// @}

protected:
    explicit VariableProxy(string const &name = string(), string const &description = string(),
                           bool developerModeOnly = false, Observer *observer = nullptr);
    VariableProxy(VariableProxy const &);
    VariableProxy &operator=(VariableProxy const &);

    /// Tells the observer of the proxy or, if the proxy has none, the global one.
    void NotifyObserverAboutValueChange() const;

private:
    Observer *observer_;
    bool developerModeOnly_;
    string name_;
    string description_;
};

/// Proxy of a variable of any type that ToValue() and ToString() know.
template<typename T>
class QUILLMARSH_API_TEMPLATE TVariableProxy : public VariableProxy
{
public:
    /// Sets the variable and tells the observer. Nothing happens without a variable.
    void SetValue(T value)
    {
        if (target_ == nullptr)
            return;
        *target_ = value;
        NotifyObserverAboutValueChange();
    }

    /// The variable; null for none.
    T *GetTarget() const { return target_; }

    void SetValueFromString(string const &text) override
    {
        if (target_ == nullptr)
            return;
        T value = *target_;
        ToValue(text, value);
        SetValue(value);
    }

    string GetValueString() const override { return target_ == nullptr ? "Unknown" : MakeString(*target_); }
    string GetTargetTypeName() const override { return FormatClassName(GetTypeName(typeid(T))); }

    string GetTargetObjectName() const override
    {
        return target_ == nullptr ? "NA" : FormatObjectName(GetTypeName(typeid(T)), target_);
    }

protected:
    explicit TVariableProxy(T *target = nullptr, string const &name = string(), string const &description = string(),
                            bool developerModeOnly = false, VariableProxy::Observer *observer = nullptr)
        : VariableProxy(name, description, developerModeOnly, observer),
          target_(target)
    {
    }

private:
    T *target_;
};

/// Proxy of a variable that stays in a range, both ends included. An end that is NaN is no limit.
template<typename T>
class QUILLMARSH_API_TEMPLATE TVariableProxyRangeChecked : public TVariableProxy<T>
{
public:
    /// Sets the variable to the value, clamped to the range, and tells the observer. With a minimum above the maximum,
    /// a value at or above the maximum gives the maximum. NaN gives the minimum.
    void SetValue(T value)
    {
        T inRange = value;
        if (!(value > minimum_))
            inRange = minimum_;
        if (value >= maximum_)
            inRange = maximum_;
        TVariableProxy<T>::SetValue(inRange);
    }

    /// Lowest value of the range.
    T GetMinimum() const { return minimum_; }
    /// Highest value of the range.
    T GetMaximum() const { return maximum_; }

    void SetValueFromString(string const &text) override
    {
        if (this->GetTarget() == nullptr)
            return;
        T value = *this->GetTarget();
        ToValue(text, value);
        SetValue(value);
    }

    /// "range=[minimum, maximum]".
    string GetTargetRestrictions() const override
    {
        return "range=[" + MakeString(minimum_) + ", " + MakeString(maximum_) + "]";
    }

protected:
    explicit TVariableProxyRangeChecked(T *target = nullptr, T minimum = {}, T maximum = {},
                                        string const &name = string(), string const &description = string(),
                                        bool developerModeOnly = false, VariableProxy::Observer *observer = nullptr)
        : TVariableProxy<T>(target, name, description, developerModeOnly, observer),
          minimum_(minimum),
          maximum_(maximum)
    {
        if constexpr (std::is_floating_point_v<T>)
        {
            if (std::isnan(minimum_))
                minimum_ = -std::numeric_limits<T>::infinity();
            if (std::isnan(maximum_))
                maximum_ = std::numeric_limits<T>::infinity();
        }
    }

private:
    T minimum_;
    T maximum_;
};

#define QUILLMARSH_DECLARE_VARIABLE_PROXY(className, type)                                                             \
    class QUILLMARSH_API className : public TVariableProxy<type>                                                       \
    {                                                                                                                  \
    public:                                                                                                            \
        explicit className(type *target = nullptr, string const &name = string(),                                      \
                           string const &description = string(), bool developerModeOnly = false,                       \
                           VariableProxy::Observer *observer = nullptr);                                               \
        className *Clone() const override;                                                                             \
    }

#define QUILLMARSH_DECLARE_VARIABLE_PROXY_RANGE_CHECKED(className, type)                                               \
    class QUILLMARSH_API className : public TVariableProxyRangeChecked<type>                                           \
    {                                                                                                                  \
    public:                                                                                                            \
        explicit className(type *target = nullptr, type minimum = {}, type maximum = {},                               \
                           string const &name = string(), string const &description = string(),                        \
                           bool developerModeOnly = false, VariableProxy::Observer *observer = nullptr);               \
        className *Clone() const override;                                                                             \
    }

/// @name Proxies of variables of any value
/// @{
QUILLMARSH_DECLARE_VARIABLE_PROXY(VariableProxyVoidPointer, void *);
QUILLMARSH_DECLARE_VARIABLE_PROXY(VariableProxyBool, bool);
QUILLMARSH_DECLARE_VARIABLE_PROXY(VariableProxyInt, int);
QUILLMARSH_DECLARE_VARIABLE_PROXY(VariableProxyUInt, unsigned int);
QUILLMARSH_DECLARE_VARIABLE_PROXY(VariableProxyFloat, float);
QUILLMARSH_DECLARE_VARIABLE_PROXY(VariableProxyDouble, double);
QUILLMARSH_DECLARE_VARIABLE_PROXY(VariableProxyString, string);
/// @}

/// @name Proxies of variables that stay in a range
/// @{
QUILLMARSH_DECLARE_VARIABLE_PROXY_RANGE_CHECKED(VariableProxyRangeCheckedInt, int);
QUILLMARSH_DECLARE_VARIABLE_PROXY_RANGE_CHECKED(VariableProxyRangeCheckedUInt, unsigned int);
QUILLMARSH_DECLARE_VARIABLE_PROXY_RANGE_CHECKED(VariableProxyRangeCheckedFloat, float);
QUILLMARSH_DECLARE_VARIABLE_PROXY_RANGE_CHECKED(VariableProxyRangeCheckedDouble, double);
/// @}

#undef QUILLMARSH_DECLARE_VARIABLE_PROXY
#undef QUILLMARSH_DECLARE_VARIABLE_PROXY_RANGE_CHECKED

} // namespace quillmarsh

#endif
