// How an application wants the system's DirectInput to be used.
#ifndef QUILLMARSH_FRAMEWORK_DIRECTINPUTCONFIG_H
#define QUILLMARSH_FRAMEWORK_DIRECTINPUTCONFIG_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh
{

/// Configuration of the device group. A plain record; the kernel holds the present one.
///
/// A system without DirectInput stores, prints and compares it like any other. It has no other effect there than what
/// drivers make of it.
struct QUILLMARSH_API DirectInputConfig
{
    bool EnableDirectInput = true;
    /// Take the newest version that exists; DirectInputVersion does not count then.
    bool UseLastVersion = true;
    unsigned int DirectInputVersion = 0;
    bool EnableFullscreenExclusiveMode = true;
    /// Devices begin with DirectInput when they can use it: HumanInterfaceDevice::GetUseDirectInputAtInit.
    bool UseAtDeviceInit = true;

    /// Compares all five values.
    bool operator==(DirectInputConfig const &other) const = default;
    /// True when both have the same meaning: values that do not count because of other values may differ.
    bool IsLogicallyEqual(DirectInputConfig const &other) const;

    /// Prints one line for each value behind `tabs` tabs.
    void Dump(ostream &out, unsigned int tabs) const;
};

} // namespace quillmarsh

#endif
