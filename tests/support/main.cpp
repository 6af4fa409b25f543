// Main program of the tests: a dialog that no test expects is a failure.
#include <quillmarsh/platform/dialogs.h>

#include <gtest/gtest.h>

#if defined(_WIN32)
#include "source/platform/win32/windows.h"
#endif

namespace
{

class FailingDialogs : public quillmarsh::platform::DialogPresenter
{
public:
    quillmarsh::platform::eDialogAnswer Present(quillmarsh::platform::DialogRequest const &request) override
    {
        ADD_FAILURE() << "Unexpected dialog: " << request.title << '\n' << request.text;
        return quillmarsh::platform::eDialogAnswer::e_ignore;
    }
};

} // namespace

int main(int argc, char **argv)
{
#if defined(_WIN32)
    // Keeps windows and debuggers away when a test or its child process crashes.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
#endif
    FailingDialogs dialogs;
    quillmarsh::platform::SetDialogPresenter(&dialogs);
    testing::InitGoogleTest(&argc, argv);
    int const result = RUN_ALL_TESTS();
    quillmarsh::platform::SetDialogPresenter(nullptr);
    return result;
}
