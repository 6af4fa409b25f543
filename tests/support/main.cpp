// Main program of the tests: a dialog that no test expects is a failure.
#include "tests/support/scripted_dialogs.h"

#include <gtest/gtest.h>

#if defined(_WIN32)
#include "source/platform/win32/windows.h"
#endif

int main(int argc, char **argv)
{
#if defined(_WIN32)
    // Keeps windows and debuggers away when a test or its child process crashes.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
#endif
    quillmarsh::tests::HandledDialogs const dialogs([](std::string const &text)
                                                    { ADD_FAILURE() << "Unexpected dialog: " << text; });
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
