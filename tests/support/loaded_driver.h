// A device driver loaded from its library, with the first devices that it finds.
#ifndef QUILLMARSH_TESTS_SUPPORT_LOADED_DRIVER_H
#define QUILLMARSH_TESTS_SUPPORT_LOADED_DRIVER_H

#include <quillmarsh/basetools/namedparameter.h>
#include <quillmarsh/devices/orientationtracker.h>
#include <quillmarsh/devices/positiontracker.h>
#include <quillmarsh/framework/directinputconfig.h>
#include <quillmarsh/framework/hiddriver.h>
#include <quillmarsh/framework/humaninterfacedevice.h>
#include <quillmarsh/host/pluginset.h>

#include "tests/support/test_kernel.h"

#include <gtest/gtest.h>

namespace quillmarsh::tests
{

class LoadedDriver
{
public:
    explicit LoadedDriver(char const *fileName) : plugin(Load(fileName)), driver(dynamic_cast<HIDDriver0 &>(*plugin)) {}
    ~LoadedDriver() { Close(); }

    /// Opens the driver again, with all devices that it finds.
    void Open(unsigned int flags = 0)
    {
        Close();
        driver.OpenDriver(DirectInputConfig(), flags);
        isOpen_ = true;
        CreateDevices();
    }
    /// Creates and connects all devices that the open driver finds now, in place of those that there are.
    void CreateDevices()
    {
        devices.clear();
        unsigned int const count = driver.EnumerateDevices();
        for (unsigned int index = 0; index < count; ++index)
        {
            devices.emplace_back(driver.CreateDevice(index));
            devices.back()->ConnectDevice(nullptr);
        }
        EXPECT_EQ(driver.CreateDevice(count), nullptr);
    }
    void Close()
    {
        for (AutoPtr<HumanInterfaceDevice> &device : devices)
        {
            device->StopAsyncSampling();
            device->DisconnectDevice();
        }
        devices.clear();
        if (isOpen_)
            driver.CloseDriver();
        isOpen_ = false;
    }

    TestKernel kernel;
    host::PluginSet plugins;
    AutoPtr<Plugin> plugin;
    HIDDriver0 &driver;
    std::vector<AutoPtr<HumanInterfaceDevice>> devices;

private:
    bool isOpen_ = false;

    AutoPtr<Plugin> Load(char const *fileName)
    {
        plugins.Load(fileName);
        return plugins.Create(*plugins.GetEntries().at(0).descriptor);
    }
};

inline OrientationTracker &GetOrientationTracker(HumanInterfaceDevice &device)
{
    return dynamic_cast<OrientationTracker &>(*device.FindController("OrientationTracker"));
}

inline PositionTracker &GetPositionTracker(HumanInterfaceDevice &device)
{
    return dynamic_cast<PositionTracker &>(*device.FindController("PositionTracker"));
}

/// Returns the axes of a sample as the columns of a matrix. The head looks along the third axis; the second points to
/// its top.
inline mat3 SampleAxes(HumanInterfaceDevice &device)
{
    device.SampleDevice();
    mat3 axes;
    GetOrientationTracker(device).GetOrientation(axes.Row0(), axes.Row1(), axes.Row2());
    return axes.Transposed();
}

} // namespace quillmarsh::tests

#endif
