// Records that identify a device of the system's DirectInput.
#ifndef QUILLMARSH_FRAMEWORK_DIRECTINPUTDEVICEINFO_H
#define QUILLMARSH_FRAMEWORK_DIRECTINPUTDEVICEINFO_H

#include <quillmarsh/basetools/windows/winutils.h>

namespace quillmarsh
{

/// Identity of a device instance, the same for all versions of DirectInput. A value type: any thread, one at a time.
struct QUILLMARSH_API DirectInputDeviceInstanceInfo
{
    win_utils::Guid InstanceGUID;
    win_utils::Guid ProductGUID;
    string InstanceName;
    string ProductName;

    /// Sets the identifiers to zero and both names to "Unknown".
    DirectInputDeviceInstanceInfo();
    /// Copies the values.
    DirectInputDeviceInstanceInfo(win_utils::Guid const &instanceGUID, win_utils::Guid const &productGUID,
                                  string const &instanceName, string const &productName);

    /// Compares all four values.
    bool operator==(DirectInputDeviceInstanceInfo const &other) const = default;

    /// Prints one line for each value behind `tabs` tabs.
    void DumpInfo(ostream &out, unsigned int tabs) const;
};

/// Identity of a device instance as version 8 of DirectInput describes it. A value type: any thread, one at a time.
class QUILLMARSH_API DirectInputDeviceInstanceInfo8
{
public:
    /// @name Copies
    /// Each copies the system's record, or that of another object.
    /// @{
    explicit DirectInputDeviceInstanceInfo8(DIDEVICEINSTANCEA const &instance);
    DirectInputDeviceInstanceInfo8(DirectInputDeviceInstanceInfo8 const &other);
    DirectInputDeviceInstanceInfo8 &operator=(DIDEVICEINSTANCEA const &instance);
    DirectInputDeviceInstanceInfo8 &operator=(DirectInputDeviceInstanceInfo8 const &other);
    ~DirectInputDeviceInstanceInfo8();
    /// @}

    /// Compares field by field; bytes behind the end of a name do not count.
    bool operator==(DirectInputDeviceInstanceInfo8 const &other) const;

    /// The system's record.
    DIDEVICEINSTANCEA const &GetInstance() const { return *instance_; }
    /// Fills the record that all versions have in common.
    void CopyInfo(DirectInputDeviceInstanceInfo &info) const;

    /// Prints one line for each value, with readable names of the device's type, behind `tabs` tabs.
    void DumpInfo(ostream &out, unsigned int tabs) const;

private:
    static void FormatDeviceType(unsigned int type, unsigned int subType, string &typeText, string &subTypeText);

    AutoPtr<DIDEVICEINSTANCEA> instance_;
};

} // namespace quillmarsh

#endif
