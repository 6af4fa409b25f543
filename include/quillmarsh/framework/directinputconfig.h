// How an application wants the system's DirectInput to be used.
#ifndef QUILLMARSH_FRAMEWORK_DIRECTINPUTCONFIG_H
#define QUILLMARSH_FRAMEWORK_DIRECTINPUTCONFIG_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh
{

/// Configuration of the device group. A plain record; the kernel holds the one in force.
///
/// On a system without DirectInput it is kept, printed and compared like anywhere else, and changes nothing but what
/// drivers read from it.
struct QUILLMARSH_API DirectInputConfig
{
    bool EnableDirectInput = true;
    /// Take the newest version that is there; DirectInputVersion does not count then.
    bool UseLastVersion = true;
    unsigned int DirectInputVersion = 0;
    bool EnableFullscreenExclusiveMode = true;
    /// Devices begin with DirectInput when they can use it: HumanInterfaceDevice::GetUseDirectInputAtInit.
    bool UseAtDeviceInit = true;

    /// Compares all five.
    bool operator==(DirectInputConfig const &other) const = default;
    /// Whether both mean the same: values that do not count, because of others, may differ.
    bool IsLogicallyEqual(DirectInputConfig const &other) const;

    /// Prints one line for each value behind `tabs` tabs.
    void Dump(ostream &out, unsigned int tabs) const;
};

} // namespace quillmarsh

#endif
