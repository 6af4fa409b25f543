#include <quillmarsh/devices/mouse.h>

#include "source/basetools/clamping.h"
#include "source/devices/dumpline.h"

#include <quillmarsh/framework/humaninterfacedevice.h>

#include <algorithm>
#include <cmath>

namespace quillmarsh
{

namespace
{

constexpr float s_defaultSensitivity = 1.0f;
constexpr float s_defaultSpeed = 1.0f;
constexpr float s_defaultThresholds[] = {64.0f, 256.0f};

/// `sum` plus or minus `delta`. Without a reader the sum of a device grows without limit, and may wrap.
int AddSigned(int sum, int delta, int sign)
{
    return static_cast<int>(static_cast<unsigned int>(sum) +
                            static_cast<unsigned int>(delta) * static_cast<unsigned int>(sign));
}

} // namespace

Mouse::Mouse(bool isSystemMouse) : isSystemMouse_(isSystemMouse)
{
    SetReverseDeltaX(false);
    SetReverseDeltaY(false);
    SetReverseDeltaWheel(false);
    SetRelativeModeSensitivity(s_defaultSensitivity, s_defaultSensitivity);
    SetAbsoluteModeSpeed(s_defaultSpeed);
    SetAbsoluteModeAccelerationThresholds(s_defaultThresholds[0], s_defaultThresholds[1]);
    SetAbsoluteModeAccelerationLevel(0);
    Mouse::ResetInputReadings();
}

Mouse::~Mouse() = default;

string Mouse::GetControllerInterfaceName() const
{
    return "Mouse";
}

void Mouse::DumpControllerInfo(ostream &out, unsigned int tabs) const
{
    DumpLine(out, tabs, "IsSystemMouse: ", isSystemMouse_);
}

void Mouse::ResetInputReadings()
{
    ResetAxisStates();
    ResetButtonStates();
    ResetNumButtonsCache();
}

void Mouse::PreSampleUpdate()
{
    if (IsSampledAsync())
    {
        ClearCurrentButtonStates();
        return;
    }
    ShiftButtonStates();
    ResetDelta(0, 0);
    ResetWheelDelta(0);
}

void Mouse::PostSampleUpdate()
{
    if (!IsSampledAsync())
        UpdateNumButtonsCache();
}

void Mouse::OnBeginAsyncSampleRead()
{
    UpdateNumButtonsCache();
}

void Mouse::OnEndAsyncSampleRead()
{
    ShiftCopyButtonStates();
    ResetDelta(0, 0);
    ResetWheelDelta(0);
}

void Mouse::ActivateSyncWithSystemCursor(bool activate)
{
    isSyncWithSystemCursorActive_ = activate;
    OnSyncWithSystemCursorChanged();
}

void Mouse::ActivateRelativeMode(bool activate)
{
    isRelativeModeActive_ = activate;
    ResetAxisStates();
    OnRelativeModeChanged();
}

void Mouse::SetRelativeModeSensitivity(float x, float y)
{
    relativeModeSensitivityX_ = std::isnan(x) ? s_defaultSensitivity : x;
    relativeModeSensitivityY_ = std::isnan(y) ? s_defaultSensitivity : y;
}

void Mouse::GetRelativeModeSensitivity(float &x, float &y) const
{
    x = relativeModeSensitivityX_;
    y = relativeModeSensitivityY_;
}

void Mouse::SetAbsoluteModeSpeed(float speed)
{
    absoluteModeSpeed_ = RaiseSetting(speed, 0.0f, s_defaultSpeed);
}

void Mouse::SetAbsoluteModeAccelerationThresholds(float first, float second)
{
    absoluteModeAccelerationThresholds_[0] = RaiseSetting(first, 0.0f, s_defaultThresholds[0]);
    absoluteModeAccelerationThresholds_[1] =
        RaiseSetting(second, absoluteModeAccelerationThresholds_[0], s_defaultThresholds[1]);
}

void Mouse::GetAbsoluteModeAccelerationThresholds(float &first, float &second) const
{
    first = absoluteModeAccelerationThresholds_[0];
    second = absoluteModeAccelerationThresholds_[1];
}

void Mouse::SetAbsoluteModeAccelerationLevel(unsigned int level)
{
    absoluteModeAccelerationLevel_ = std::min(level, s_numAccelerationLevels);
}

void Mouse::SetPosition(int x, int y, bool insideClientArea)
{
    positionX_ = x;
    positionY_ = y;
    isPositionInsideClientArea_ = insideClientArea;
}

void Mouse::ResetDelta(int x, int y)
{
    deltaX_ = AddSigned(0, x, deltaSignX_);
    deltaY_ = AddSigned(0, y, deltaSignY_);
}

void Mouse::AccumDelta(int x, int y)
{
    deltaX_ = AddSigned(deltaX_, x, deltaSignX_);
    deltaY_ = AddSigned(deltaY_, y, deltaSignY_);
}

void Mouse::ResetWheelDelta(int delta)
{
    deltaWheel_ = AddSigned(0, delta, deltaSignWheel_);
}

void Mouse::AccumWheelDelta(int delta)
{
    deltaWheel_ = AddSigned(deltaWheel_, delta, deltaSignWheel_);
}

void Mouse::ApplyAbsoluteModeModifiers(float deltaX, float deltaY, float &outX, float &outY) const
{
    for (unsigned int i = 0; i < absoluteModeAccelerationLevel_; ++i)
    {
        float const threshold = absoluteModeAccelerationThresholds_[i];
        if (std::fabs(deltaX) > threshold || std::fabs(deltaY) > threshold)
        {
            deltaX *= 2.0f;
            deltaY *= 2.0f;
        }
    }
    outX = deltaX * absoluteModeSpeed_;
    outY = deltaY * absoluteModeSpeed_;
}

void Mouse::ApplyRelativeModeModifiers(float deltaX, float deltaY, float &outX, float &outY) const
{
    outX = deltaX * relativeModeSensitivityX_;
    outY = deltaY * relativeModeSensitivityY_;
}

void Mouse::ResetAxisStates()
{
    SetPosition(0, 0, false);
    ResetDelta(0, 0);
    ResetWheelDelta(0);
}

void Mouse::ResetNumButtonsCache()
{
    numButtonsPressed_ = 0;
    numButtonsDown_ = 0;
    numButtonsUp_ = 0;
}

void Mouse::UpdateNumButtonsCache()
{
    numButtonsPressed_ = buttonStates_.CountPressed();
    numButtonsDown_ = buttonStates_.CountDown();
    numButtonsUp_ = buttonStates_.CountUp();
}

} // namespace quillmarsh
