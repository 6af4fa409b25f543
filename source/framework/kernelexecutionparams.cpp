#include <quillmarsh/framework/kernelexecutionparams.h>

#include <quillmarsh/basetools/streameffectors.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/framework/kernel.h>

#include <ostream>

namespace quillmarsh
{

KernelExecutionParams::KernelExecutionParams(bool current)
{
    // Asked for in any case: it is a mistake to build a record before there is a kernel, and the assertion reports it.
    Kernel *const kernel = Kernel::InstancePtr();
    if (current && kernel != nullptr)
    {
        kernel->GetExecutionParams(*this);
        return;
    }
    AutoDispatchGUIEvents = true;
    GUIEventsPreFrameUpdateStates = false;
    AutoClearGUIStats = true;
    AutoDrawGUI = true;
    AutoEndGUIRenderer = true;
    AutoPresentBackBuffer = true;
    EnableHardCleanupConfigLoop = true;
    EnableHardRethrowExit = false;
    LogWinMsgOnMainWindowCleanup = false;
    WaitCloseConfirmationOnExit = false;
    DeveloperMode = false;
}

void KernelExecutionParams::GetKernelCurrent()
{
    if (Kernel *const kernel = Kernel::InstancePtr())
        kernel->GetExecutionParams(*this);
}

void KernelExecutionParams::SetKernelCurrent() const
{
    if (Kernel *const kernel = Kernel::InstancePtr())
        kernel->SetExecutionParams(*this);
}

void KernelExecutionParams::Dump(ostream &out, unsigned int tabs) const
{
    struct Line
    {
        char const *label;
        bool value;
    };
    Line const lines[] = {
        {"AutoSampleSystemKeyboard.....: ", AutoSampleSystemKeyboard},
        {"AutoSampleSystemMouse........: ", AutoSampleSystemMouse},
        {"AutoSampleNonSystemDevices...: ", AutoSampleNonSystemDevices},
        {"AutoDispatchGUIEvents........: ", AutoDispatchGUIEvents},
        {"GUIEventsPreFrameUpdateStates: ", GUIEventsPreFrameUpdateStates},
        {"AutoClearGUIStats............: ", AutoClearGUIStats},
        {"AutoDrawGUI..................: ", AutoDrawGUI},
        {"AutoEndGUIRenderer...........: ", AutoEndGUIRenderer},
        {"AutoPresentBackBuffer........: ", AutoPresentBackBuffer},
        {"EnableHardCleanupConfigLoop..: ", EnableHardCleanupConfigLoop},
        {"EnableHardRethrowExit........: ", EnableHardRethrowExit},
        {"LogWinMsgOnMainWindowCleanup.: ", LogWinMsgOnMainWindowCleanup},
        {"WaitCloseConfirmationOnExit..: ", WaitCloseConfirmationOnExit},
        {"DeveloperMode................: ", DeveloperMode},
    };
    for (Line const &line : lines)
        out << IndentEffector(tabs) << line.label << MakeString(line.value) << std::endl;
}

} // namespace quillmarsh
