#include <quillmarsh/framework/directinputproxy.h>

namespace quillmarsh
{

namespace
{

// The system's flags of a cooperative level.
constexpr unsigned long s_exclusive = 1;
constexpr unsigned long s_nonExclusive = 2;
constexpr unsigned long s_foreground = 4;
constexpr unsigned long s_background = 8;
constexpr unsigned long s_noWinKey = 16;

} // namespace

DirectInputProxy::DirectInputProxy() = default;

DirectInputProxy::~DirectInputProxy() = default;

DirectInputProxy8::DirectInputProxy8() = default;

DirectInputProxy8::~DirectInputProxy8() = default;

string DirectInputProxy8::GetDirectInputProxyInterfaceName()
{
    return "DirectInputProxy8";
}

string DirectInputProxy8::GetCooperativeLevelDesc(unsigned long flags)
{
    string text;
    if (flags & s_background)
        text += "background";
    else if (flags & s_foreground)
        text += "foreground";

    if (flags & s_exclusive)
        text += " exclusive";
    else if (flags & s_nonExclusive)
        text += " non-exclusive";

    if (flags & s_noWinKey)
        text += " no-win-key";
    return text;
}

} // namespace quillmarsh
