// Typed parameters with names, and a small dictionary of them.
#ifndef QUILLMARSH_BASETOOLS_NAMEDPARAMETER_H
#define QUILLMARSH_BASETOOLS_NAMEDPARAMETER_H

#include <quillmarsh/platform/types.h>

#include <vector>

namespace quillmarsh
{

/// A name and a typed value, for optional settings that cross an interface whose signatures must not change.
///
/// A plain value type: any thread, one at a time.
class QUILLMARSH_API NamedParameter
{
public:
    /// Type of the value.
    enum eValueType
    {
        e_none = 0,
        e_pointer = 1,
        e_bool = 2,
        e_integer = 3,
        e_uinteger = 4,
        e_double = 5,
        e_string = 6
    };

    /// Makes a parameter without a name and without a value.
    NamedParameter();
    /// @name Parameters with a value
    /// Each takes the name, and the value with its type.
    /// @{
    NamedParameter(string const &name, void *const &value);
    NamedParameter(string const &name, bool const &value);
    NamedParameter(string const &name, int const &value);
    NamedParameter(string const &name, unsigned int const &value);
    NamedParameter(string const &name, double const &value);
    NamedParameter(string const &name, string const &value);
    /// Stores a text; without this form, a literal would count as a bool.
    NamedParameter(string const &name, char const *value);
    /// @}

    /// Sets the name; the value stays.
    void SetName(string const &name);
    /// Name of the parameter.
    string const &GetName() const { return name_; }
    /// Type of the value; e_none at first.
    eValueType GetValueType() const { return type_; }

    /// @name Storing a value
    /// Each stores the value and its type.
    /// @{
    void SetValuePointer(void *value);
    void SetValueBool(bool value);
    void SetValueInteger(int value);
    void SetValueUInteger(unsigned int value);
    void SetValueDouble(double value);
    void SetValueString(string const &value);

    void SetValue(void *const &value) { SetValuePointer(value); }
    void SetValue(bool const &value) { SetValueBool(value); }
    void SetValue(int const &value) { SetValueInteger(value); }
    void SetValue(unsigned int const &value) { SetValueUInteger(value); }
    void SetValue(double const &value) { SetValueDouble(value); }
    void SetValue(string const &value) { SetValueString(value); }
    void SetValue(char const *value) { SetValueString(value); }
    /// @}

    /// @name Reading the value
    /// Each asserts when the stored type is another one, and then reads the bits of the stored value as the wanted
    /// type, without a conversion. A text has storage of its own.
    /// @{
    void *GetValuePointer() const;
    bool GetValueBool() const;
    int GetValueInteger() const;
    unsigned int GetValueUInteger() const;
    double GetValueDouble() const;
    string const &GetValueString() const;

    void GetValue(void *&value) const { value = GetValuePointer(); }
    void GetValue(bool &value) const { value = GetValueBool(); }
    void GetValue(int &value) const { value = GetValueInteger(); }
    void GetValue(unsigned int &value) const { value = GetValueUInteger(); }
    void GetValue(double &value) const { value = GetValueDouble(); }
    void GetValue(string &value) const { value = GetValueString(); }
    /// @}

private:
    union Value
    {
        double real = 0;
        void *pointer;
        bool boolean;
        int integer;
        unsigned int uInteger;
    };

    string name_;
    eValueType type_ = e_none;
    Value value_;
    string string_;
};

/// Parameters in the order of their names, compared as bytes. No name stands twice.
///
/// A plain value type: any thread, one at a time.
class QUILLMARSH_API NamedParameterList
{
public:
    NamedParameterList();

    /// Stores a copy of the parameter in the place of its name. Returns false, and changes nothing, when the name is
    /// taken and `replace` is not set.
    bool Insert(NamedParameter const &parameter, bool replace);
    /// Removes the parameter of that name, if there is one.
    void Remove(string const &name);
    /// Empties the list.
    void Clear();

    /// Number of parameters.
    unsigned int GetNumParameters() const;
    /// Parameter by index, in the order of names. Asserts "Index out of range." past the end, and gives a parameter
    /// without a name then. Good until the list changes.
    NamedParameter const &GetParameter(unsigned int index) const;
    /// Parameter by name; null when there is none. Good until the list changes.
    NamedParameter const *GetParameter(string const &name) const;

    /// @name Values by name
    /// Each returns true when there is such a parameter and its type is exactly that of the output; otherwise the
    /// output is left alone. Nothing is converted: an integer is no unsigned integer.
    /// @{
    bool GetValue(string const &name, void *&value) const;
    bool GetValue(string const &name, bool &value) const;
    bool GetValue(string const &name, int &value) const;
    bool GetValue(string const &name, unsigned int &value) const;
    bool GetValue(string const &name, double &value) const;
    bool GetValue(string const &name, string &value) const;
    /// @}

    /// @name Values by name, with a default
    /// Each returns the default where GetValue() would return false.
    /// @{
    void *GetValuePointer(string const &name, void *defaultValue) const;
    bool GetValueBool(string const &name, bool defaultValue) const;
    int GetValueInteger(string const &name, int defaultValue) const;
    unsigned int GetValueUInteger(string const &name, unsigned int defaultValue) const;
    double GetValueDouble(string const &name, double defaultValue) const;
    string GetValueString(string const &name, string const &defaultValue) const;
    /// @}

private:
    std::vector<NamedParameter> parameters_;
};

} // namespace quillmarsh

#endif
