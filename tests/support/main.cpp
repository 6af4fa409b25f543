// Main program of the tests: a dialog that no test expects is a failure.
#include "tests/support/scripted_dialogs.h"

#include <gtest/gtest.h>

#include <cstdlib>

#if defined(_WIN32)
#include "source/platform/win32/windows.h"
#endif

int main(int argc, char **argv)
{
#if defined(_WIN32)
    // Keeps windows and debuggers away when a test or its child process crashes.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
#else
    // Tests neither run the start script of whoever runs them, nor load his plug-ins, nor add to his history.
    setenv("XDG_CONFIG_HOME", "/nonexistent", 1);
    setenv("XDG_DATA_HOME", "/nonexistent", 1);
    unsetenv("QUILLMARSH_PLUGIN_PATH");
    unsetenv("XDG_STATE_HOME");
#endif
    quillmarsh::tests::HandledDialogs const dialogs([](std::string const &text)
                                                    { ADD_FAILURE() << "Unexpected dialog: " << text; });
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
