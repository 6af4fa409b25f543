// Keyboard and mouse of the window that has the focus, as devices.
#ifndef QUILLMARSH_PLUGINS_INPUT_DESKTOP_DESKTOPDEVICES_H
#define QUILLMARSH_PLUGINS_INPUT_DESKTOP_DESKTOPDEVICES_H

#include "desktop.h"

#include <quillmarsh/framework/humaninterfacedevice.h>

#include <atomic>

namespace input_desktop
{

class DesktopKeyboard final : public quillmarsh::Keyboard
{
public:
    DesktopKeyboard(quillmarsh::HumanInterfaceDevice &device, Desktop &desktop);

    /// Maps a key by the modifiers and locks of the last sample. Frame thread only.
    bool MapKeyToCharacter(quillmarsh::eKey key, char &character) override;
    /// Does nothing: the system maps keys to characters.
    void OnCharacterMappingChanged() override {}
    void Sample();

private:
    Desktop &desktop_;
    std::atomic<bool> isCapsLockOn_{false};
    std::atomic<bool> isNumLockOn_{false};
};

/// In relative mode, and without synchronisation, the system's cursor is hidden and held in the window. Without
/// synchronisation the mouse has its own position, to which its modified movements are added. When synchronisation
/// begins again, the system's cursor moves to that position.
class DesktopMouse final : public quillmarsh::Mouse
{
public:
    DesktopMouse(quillmarsh::HumanInterfaceDevice &device, Desktop &desktop);

    void OnRelativeModeChanged() override;
    void OnSyncWithSystemCursorChanged() override;
    void Sample();

private:
    void Place(PointerSample const &sample, int moveX, int moveY);
    void UpdateCursor(bool mustMove);

    Desktop &desktop_;
    // The modes, for the sampling thread.
    std::atomic<bool> isRelative_{false};
    std::atomic<bool> isSynced_{true};
    std::atomic<int> ownX_{0};
    std::atomic<int> ownY_{0};
    // Fractions of a pixel that have not been reported yet.
    float restX_ = 0;
    float restY_ = 0;
};

/// A device with this single controller.
template<typename Controller>
class DesktopDevice final : public quillmarsh::HumanInterfaceDevice
{
public:
    DesktopDevice(Desktop &desktop, quillmarsh::string const &description)
        : desktop_(desktop),
          controller_(*this, desktop)
    {
        DeviceInfo().SetDeviceDescription(description);
        DeviceInfo().SetModelType(controller_.GetControllerInterfaceName());
        DeviceInfo().SetHardwarePort("Window");
    }

    unsigned int GetNumControllers() override { return 1; }
    quillmarsh::HIDController *GetController(unsigned int index) override
    {
        return index == 0 ? &controller_ : nullptr;
    }
    void ConnectDevice(HWND) override { desktop_.ForgetThePast(); }
    void DisconnectDevice() override { desktop_.Wish({}); }
    void SampleDevice() override { controller_.Sample(); }

protected:
    void ApplyUseDirectInput(bool) override {}

private:
    Desktop &desktop_;
    Controller controller_;
};

} // namespace input_desktop

#endif
