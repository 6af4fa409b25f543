#include <quillmarsh/basetools/namedparameter.h>

#include <quillmarsh/basetools/diagnostics.h>

#include <algorithm>
#include <cstring>

namespace quillmarsh
{
namespace
{

constexpr std::size_t s_numReservedParameters = 10;
constexpr char const *s_szWrongType = "Extracting wrong value-type from NamedParameter: ";

/// Value type of a C++ type; one overload for each.
constexpr NamedParameter::eValueType TypeOf(void *const *)
{
    return NamedParameter::e_pointer;
}
constexpr NamedParameter::eValueType TypeOf(bool const *)
{
    return NamedParameter::e_bool;
}
constexpr NamedParameter::eValueType TypeOf(int const *)
{
    return NamedParameter::e_integer;
}
constexpr NamedParameter::eValueType TypeOf(unsigned int const *)
{
    return NamedParameter::e_uinteger;
}
constexpr NamedParameter::eValueType TypeOf(double const *)
{
    return NamedParameter::e_double;
}
constexpr NamedParameter::eValueType TypeOf(string const *)
{
    return NamedParameter::e_string;
}

template<typename T>
bool GetIfTypeFits(NamedParameter const *parameter, T &value)
{
    if (parameter == nullptr || parameter->GetValueType() != TypeOf(&value))
        return false;
    parameter->GetValue(value);
    return true;
}

/// First of the sorted parameters whose name is not below the given one.
template<typename Parameters>
auto LowerBound(Parameters &parameters, string const &name)
{
    return std::lower_bound(parameters.begin(), parameters.end(), name,
                            [](NamedParameter const &parameter, string const &wanted)
                            { return parameter.GetName() < wanted; });
}

} // namespace

NamedParameter::NamedParameter() = default;

NamedParameter::NamedParameter(string const &name, void *const &value) : name_(name)
{
    SetValue(value);
}

NamedParameter::NamedParameter(string const &name, bool const &value) : name_(name)
{
    SetValue(value);
}

NamedParameter::NamedParameter(string const &name, int const &value) : name_(name)
{
    SetValue(value);
}

NamedParameter::NamedParameter(string const &name, unsigned int const &value) : name_(name)
{
    SetValue(value);
}

NamedParameter::NamedParameter(string const &name, double const &value) : name_(name)
{
    SetValue(value);
}

NamedParameter::NamedParameter(string const &name, string const &value) : name_(name)
{
    SetValue(value);
}

NamedParameter::NamedParameter(string const &name, char const *value) : name_(name)
{
    SetValue(value);
}

void NamedParameter::SetName(string const &name)
{
    name_ = name;
}

void NamedParameter::SetValuePointer(void *value)
{
    value_.pointer = value;
    type_ = e_pointer;
}

void NamedParameter::SetValueBool(bool value)
{
    value_.boolean = value;
    type_ = e_bool;
}

void NamedParameter::SetValueInteger(int value)
{
    value_.integer = value;
    type_ = e_integer;
}

void NamedParameter::SetValueUInteger(unsigned int value)
{
    value_.uInteger = value;
    type_ = e_uinteger;
}

void NamedParameter::SetValueDouble(double value)
{
    value_.real = value;
    type_ = e_double;
}

void NamedParameter::SetValueString(string const &value)
{
    string_ = value;
    type_ = e_string;
}

void *NamedParameter::GetValuePointer() const
{
    QUILLMARSH_ASSERT(type_ == e_pointer, s_szWrongType + name_);
    return value_.pointer;
}

bool NamedParameter::GetValueBool() const
{
    QUILLMARSH_ASSERT(type_ == e_bool, s_szWrongType + name_);
    // Read as a byte: the bits of another type are not always a valid bool.
    unsigned char byte = 0;
    std::memcpy(&byte, &value_.boolean, sizeof(byte));
    return byte != 0;
}

int NamedParameter::GetValueInteger() const
{
    QUILLMARSH_ASSERT(type_ == e_integer, s_szWrongType + name_);
    return value_.integer;
}

unsigned int NamedParameter::GetValueUInteger() const
{
    QUILLMARSH_ASSERT(type_ == e_uinteger, s_szWrongType + name_);
    return value_.uInteger;
}

double NamedParameter::GetValueDouble() const
{
    QUILLMARSH_ASSERT(type_ == e_double, s_szWrongType + name_);
    return value_.real;
}

string const &NamedParameter::GetValueString() const
{
    QUILLMARSH_ASSERT(type_ == e_string, s_szWrongType + name_);
    return string_;
}

NamedParameterList::NamedParameterList()
{
    parameters_.reserve(s_numReservedParameters);
}

bool NamedParameterList::Insert(NamedParameter const &parameter, bool replace)
{
    auto const at = LowerBound(parameters_, parameter.GetName());
    bool const isTaken = at != parameters_.end() && at->GetName() == parameter.GetName();
    if (isTaken && !replace)
        return false;
    if (isTaken)
        *at = parameter;
    else
        parameters_.insert(at, parameter);
    return true;
}

void NamedParameterList::Remove(string const &name)
{
    auto const at = LowerBound(parameters_, name);
    if (at != parameters_.end() && at->GetName() == name)
        parameters_.erase(at);
}

void NamedParameterList::Clear()
{
    parameters_.clear();
}

unsigned int NamedParameterList::GetNumParameters() const
{
    return static_cast<unsigned int>(parameters_.size());
}

NamedParameter const &NamedParameterList::GetParameter(unsigned int index) const
{
    static NamedParameter const s_none;
    bool const isThere = index < parameters_.size();
    QUILLMARSH_ASSERT(isThere, "Index out of range.");
    return isThere ? parameters_[index] : s_none;
}

NamedParameter const *NamedParameterList::GetParameter(string const &name) const
{
    auto const at = LowerBound(parameters_, name);
    return at != parameters_.end() && at->GetName() == name ? &*at : nullptr;
}

bool NamedParameterList::GetValue(string const &name, void *&value) const
{
    return GetIfTypeFits(GetParameter(name), value);
}

bool NamedParameterList::GetValue(string const &name, bool &value) const
{
    return GetIfTypeFits(GetParameter(name), value);
}

bool NamedParameterList::GetValue(string const &name, int &value) const
{
    return GetIfTypeFits(GetParameter(name), value);
}

bool NamedParameterList::GetValue(string const &name, unsigned int &value) const
{
    return GetIfTypeFits(GetParameter(name), value);
}

bool NamedParameterList::GetValue(string const &name, double &value) const
{
    return GetIfTypeFits(GetParameter(name), value);
}

bool NamedParameterList::GetValue(string const &name, string &value) const
{
    return GetIfTypeFits(GetParameter(name), value);
}

// GetValue() leaves the default alone when no parameter fits.

void *NamedParameterList::GetValuePointer(string const &name, void *defaultValue) const
{
    GetValue(name, defaultValue);
    return defaultValue;
}

bool NamedParameterList::GetValueBool(string const &name, bool defaultValue) const
{
    GetValue(name, defaultValue);
    return defaultValue;
}

int NamedParameterList::GetValueInteger(string const &name, int defaultValue) const
{
    GetValue(name, defaultValue);
    return defaultValue;
}

unsigned int NamedParameterList::GetValueUInteger(string const &name, unsigned int defaultValue) const
{
    GetValue(name, defaultValue);
    return defaultValue;
}

double NamedParameterList::GetValueDouble(string const &name, double defaultValue) const
{
    GetValue(name, defaultValue);
    return defaultValue;
}

string NamedParameterList::GetValueString(string const &name, string const &defaultValue) const
{
    string value = defaultValue;
    GetValue(name, value);
    return value;
}

} // namespace quillmarsh
