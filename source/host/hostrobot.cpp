#include <quillmarsh/host/hostrobot.h>

#include <quillmarsh/host/hostkernel.h>

#include <quillmarsh/devices/keyboard.h>
#include <quillmarsh/devices/mouse.h>
#include <quillmarsh/framework/hiddriver.h>

#include <utility>

namespace quillmarsh::host
{

namespace
{

constexpr char s_szDriverName[] = "robot";
constexpr unsigned int s_numDevices = 2;
/// Time without work after which the devices go.
constexpr double s_maxIdleSeconds = 2;
/// Frames in which the devices come, if nobody refuses them.
constexpr unsigned int s_maxFramesWithoutDevices = 10;

} // namespace

/// Offers the devices while they are wanted.
class HostRobot::Driver final : public HIDDriver0
{
public:
    explicit Driver(HostRobot &owner) : owner_(owner) {}

    void OpenDriver(DirectInputConfig const &, unsigned int) override {}
    void CloseDriver() override { owner_.areConnected_ = false; }
    unsigned int EnumerateDevices() override
    {
        owner_.areConnected_ = owner_.areWanted_;
        return owner_.areWanted_ ? s_numDevices : 0;
    }
    HumanInterfaceDevice *CreateDevice(unsigned int index) override
    {
        return (index == 0 ? owner_.robot_.CreateMouse() : owner_.robot_.CreateKeyboard()).release();
    }
    bool PollDeviceChanges() override { return owner_.Poll(); }

private:
    HostRobot &owner_;
};

HostRobot::HostRobot(HostKernel &kernel) : kernel_(kernel) {}

HostRobot::~HostRobot() = default;

void HostRobot::Begin()
{
    idleSeconds_ = 0;
    if (std::exchange(hasDriver_, true))
        return;
    areWanted_ = true;
    kernel_.GetDevices().AddDriver(s_szDriverName, [this] { return std::make_unique<Driver>(*this); });
    if (kernel_.GetKernelLevel() != e_kernel_none)
        kernel_.RequestHIDReconfig(0);
}

string HostRobot::TakeFailure()
{
    framesWithoutDevices_ = robot_.IsBusy() && !HasOwnDevices() ? framesWithoutDevices_ + 1 : 0;
    if (framesWithoutDevices_ > s_maxFramesWithoutDevices)
    {
        robot_.Stop();
        failure_ = "The robot has no mouse and keyboard: the application has refused them.";
    }
    return std::exchange(failure_, {});
}

bool HostRobot::Poll()
{
    idleSeconds_ = robot_.IsBusy() ? 0 : idleSeconds_ + kernel_.GetFrameTimeDelta();
    bool const isTired = idleSeconds_ > s_maxIdleSeconds && !stays_ && HasOtherDevices();
    areWanted_ = robot_.IsBusy() || (areWanted_ && !isTired);
    if (areConnected_ != areWanted_)
        return true;
    try
    {
        if (areConnected_ && HostKernel::HasGUI() && HasOwnDevices())
            robot_.Advance();
    }
    catch (GUIException const &thrown)
    {
        failure_ = thrown.GetMessage();
    }
    return false;
}

bool HostRobot::HasOwnDevices() const
{
    unsigned int count = 0;
    for (unsigned int i = 0; i < kernel_.GetNumHumanInterfaceDevices(); ++i)
        count += kernel_.GetHumanInterfaceDevice(i)->GetDeviceInfo().GetCreatorPluginName() == s_szDriverName ? 1 : 0;
    return count == s_numDevices;
}

bool HostRobot::HasOtherDevices() const
{
    bool hasMouse = false;
    bool hasKeyboard = false;
    for (unsigned int i = s_numDevices; i < kernel_.GetNumHumanInterfaceDevices(); ++i)
    {
        HumanInterfaceDevice &device = *kernel_.GetHumanInterfaceDevice(i);
        auto const *const mouse = dynamic_cast<Mouse *>(device.FindController("Mouse"));
        auto const *const keyboard = dynamic_cast<Keyboard *>(device.FindController("Keyboard"));
        hasMouse = hasMouse || (mouse != nullptr && mouse->IsSystemMouse());
        hasKeyboard = hasKeyboard || (keyboard != nullptr && keyboard->IsSystemKeyboard());
    }
    return hasMouse && hasKeyboard;
}

} // namespace quillmarsh::host
