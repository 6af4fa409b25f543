// What the leak check shall not see.
#ifndef QUILLMARSH_TESTS_SUPPORT_LEAKS_H
#define QUILLMARSH_TESTS_SUPPORT_LEAKS_H

#include "tests/support/environment_variable.h"

// The leak check's own, in builds that have one.
extern "C" void __lsan_disable() __attribute__((weak)); // NOLINT(bugprone-reserved-identifier)
extern "C" void __lsan_enable() __attribute__((weak));  // NOLINT(bugprone-reserved-identifier)

namespace quillmarsh::tests
{

/// While it exists, what the calling thread allocates counts as no leak. For libraries that are unloaded before the leak
/// check looks: it knows them by no name that could stand in leaks.supp.
class NoLeakCheck
{
public:
    NoLeakCheck()
    {
        if (__lsan_disable)
            __lsan_disable();
    }
    ~NoLeakCheck()
    {
        if (__lsan_enable)
            __lsan_enable();
    }
    NoLeakCheck(NoLeakCheck const &) = delete;
    NoLeakCheck &operator=(NoLeakCheck const &) = delete;
};

/// While it exists, programs that are started look for no leaks at their end: drivers of graphics cards leave some.
struct NoLeakCheckInChildren
{
    EnvironmentVariable const options{"LSAN_OPTIONS", "detect_leaks=0"};
};

} // namespace quillmarsh::tests

#endif
