// The functions by which Highway's headers choose vector instructions. Its library measures a timer for some milliseconds
// whenever it is loaded, so a program loads it with its first vector code; these functions pass the calls on.
#include "source/platform/linux/ondemand.h"

#include <hwy/base.h>
#include <hwy/targets.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>

namespace quillmarsh::platform
{
namespace
{

/// The functions of the library; all are null when it is missing.
struct Highway
{
    decltype(&hwy::GetChosenTarget) getChosenTarget = nullptr;
    decltype(&hwy::SetSupportedTargetsForTest) setSupportedTargets = nullptr;
    decltype(&hwy::SupportedTargets) supportedTargets = nullptr;
};

Highway LoadHighway()
{
    Highway found;
    OnDemandLoader loader;
    loader.Open("libhwy.so.1");
    loader.Find("_ZN3hwy15GetChosenTargetEv", found.getChosenTarget);
    loader.Find("_ZN3hwy26SetSupportedTargetsForTestEl", found.setSupportedTargets);
    loader.Find("_ZN3hwy16SupportedTargetsEv", found.supportedTargets);
    return loader.GetFailure().empty() ? found : Highway{};
}

Highway const &GetHighway()
{
    static Highway const s_highway = LoadHighway();
    return s_highway;
}

} // namespace
} // namespace quillmarsh::platform

namespace hwy
{

using quillmarsh::platform::GetHighway;

// Without the library, programs use the instructions that every processor of the build has.

ChosenTarget &GetChosenTarget()
{
    static ChosenTarget s_target;
    auto const get = GetHighway().getChosenTarget;
    return get ? get() : s_target;
}

std::int64_t SupportedTargets()
{
    auto const get = GetHighway().supportedTargets;
    return get ? get() : HWY_STATIC_TARGET;
}

void SetSupportedTargetsForTest(std::int64_t targets)
{
    if (auto const set = GetHighway().setSupportedTargets)
        set(targets);
}

/// Ends the process. Only builds with assertions of Highway's call it.
void Abort(char const *file, int line, char const *format, ...)
{
    std::fprintf(stderr, "%s:%d: ", file, line);
    va_list arguments;
    va_start(arguments, format);
    std::vfprintf(stderr, format, arguments);
    va_end(arguments);
    std::fputc('\n', stderr);
    std::abort();
}

} // namespace hwy
