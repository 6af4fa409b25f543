// What the leak check shall not see.
#ifndef QUILLMARSH_TESTS_SUPPORT_LEAKS_H
#define QUILLMARSH_TESTS_SUPPORT_LEAKS_H

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

} // namespace quillmarsh::tests

#endif
