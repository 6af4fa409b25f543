// A desktop without a display.
#ifndef QUILLMARSH_TESTS_SUPPORT_HEADLESS_DESKTOP_H
#define QUILLMARSH_TESTS_SUPPORT_HEADLESS_DESKTOP_H

#include <quillmarsh/platform/displaymodes.h>

#include <gtest/gtest.h>

namespace quillmarsh::tests
{

/// A test on a desktop of 1000 by 700 pixels that nobody sees.
class OnAHeadlessDesktop : public testing::Test
{
protected:
    void SetUp() override
    {
        string reason;
        if (!platform::UseHeadlessDesktop(1000, 700, reason))
            GTEST_SKIP() << reason;
    }
    void TearDown() override { platform::LeaveHeadlessDesktop(); }
};

} // namespace quillmarsh::tests

#endif
