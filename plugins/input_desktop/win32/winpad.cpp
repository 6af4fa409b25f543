#include "winpad.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

#include <windows.h>

#include <mmsystem.h>

namespace input_desktop
{

using namespace quillmarsh;

namespace
{

constexpr float s_hatUnit = 100.0f;

/// An axis of a controller: the fields with its reading and its range, and the flag that tells if it exists.
struct Axis
{
    DWORD JOYINFOEX::*position;
    UINT JOYCAPSA::*minimum;
    UINT JOYCAPSA::*maximum;
    UINT capability;
};

/// In the order of GameController::eAxis. The first two always exist.
constexpr Axis s_axes[] = {
    {&JOYINFOEX::dwXpos, &JOYCAPSA::wXmin, &JOYCAPSA::wXmax, 0},
    {&JOYINFOEX::dwYpos, &JOYCAPSA::wYmin, &JOYCAPSA::wYmax, 0},
    {&JOYINFOEX::dwZpos, &JOYCAPSA::wZmin, &JOYCAPSA::wZmax, JOYCAPS_HASZ},
    {&JOYINFOEX::dwUpos, &JOYCAPSA::wUmin, &JOYCAPSA::wUmax, JOYCAPS_HASU},
    {&JOYINFOEX::dwVpos, &JOYCAPSA::wVmin, &JOYCAPSA::wVmax, JOYCAPS_HASV},
    {&JOYINFOEX::dwRpos, &JOYCAPSA::wRmin, &JOYCAPSA::wRmax, JOYCAPS_HASR},
};

bool GetCaps(unsigned int id, JOYCAPSA &caps)
{
    return joyGetDevCapsA(id, &caps, sizeof(caps)) == JOYERR_NOERROR;
}

bool ReadInfo(unsigned int id, JOYINFOEX &info)
{
    info = {};
    info.dwSize = sizeof(info);
    info.dwFlags = JOY_RETURNALL | JOY_RETURNPOVCTS;
    return joyGetPosEx(id, &info) == JOYERR_NOERROR;
}

class WinPad final : public Pad
{
public:
    WinPad(unsigned int id, JOYCAPSA const &caps) : id_(id), caps_(caps)
    {
        char text[32];
        static_cast<void>(std::snprintf(text, sizeof(text), "0x%04x", caps.wMid));
        desc_.name = caps.szPname;
        desc_.vendor = text;
        static_cast<void>(std::snprintf(text, sizeof(text), "0x%04x", caps.wPid));
        desc_.product = text;
        for (unsigned int i = 0; i < std::size(s_axes); ++i)
            desc_.hasAxis[i] = s_axes[i].capability == 0 || (caps.wCaps & s_axes[i].capability) != 0;
        desc_.numHats = (caps.wCaps & JOYCAPS_HASPOV) != 0 ? 1 : 0;
        desc_.numButtons = caps.wNumButtons;
    }

    bool Read(PadReading &reading) override
    {
        JOYINFOEX info;
        if (!ReadInfo(id_, info))
            return false;
        for (unsigned int i = 0; i < std::size(s_axes); ++i)
            reading.axes[i] = desc_.hasAxis[i] ? Normalize(s_axes[i], info) : 0.0f;
        if (desc_.numHats > 0 && info.dwPOV != JOY_POVCENTERED)
            reading.hats[0] = static_cast<float>(info.dwPOV) / s_hatUnit;
        reading.buttons = info.dwButtons;
        return true;
    }

private:
    float Normalize(Axis const &axis, JOYINFOEX const &info) const
    {
        auto const minimum = static_cast<float>(caps_.*axis.minimum);
        float const range = static_cast<float>(caps_.*axis.maximum) - minimum;
        if (range <= 0.0f)
            return 0.0f;
        return std::clamp((static_cast<float>(info.*axis.position) - minimum) / range * 2.0f - 1.0f, -1.0f, 1.0f);
    }

    unsigned int const id_;
    JOYCAPSA const caps_;
};

} // namespace

void FindWinPads(std::vector<unsigned int> &ids)
{
    ids.clear();
    for (unsigned int id = 0; id < joyGetNumDevs(); ++id)
    {
        JOYINFOEX info;
        if (ReadInfo(id, info))
            ids.push_back(id);
    }
}

string GetWinPadName(unsigned int id)
{
    JOYCAPSA caps;
    return GetCaps(id, caps) ? caps.szPname : "";
}

AutoPtr<Pad> OpenWinPad(unsigned int id)
{
    JOYCAPSA caps;
    return GetCaps(id, caps) ? std::make_unique<WinPad>(id, caps) : nullptr;
}

} // namespace input_desktop
