#include "tests/support/scripted_dialogs.h"
#include "tests/support/test_kernel.h"

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/basetools/sharedoutputstream.h>
#include <quillmarsh/framework/application.h>
#include <quillmarsh/framework/failuredesc.h>
#include <quillmarsh/framework/kernelthreadinfo.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>

namespace quillmarsh
{
namespace
{

using tests::DumpText;
using tests::ScriptedDialogs;
using tests::TestKernel;
using Texts = std::vector<string>;

class TestApplication : public Application
{
};

TEST(Kernel, IsASingleton)
{
    ScriptedDialogs dialogs(platform::eDialogAnswer::e_retry);
    EXPECT_EQ(nullptr, Kernel::InstancePtr());
    {
        TestKernel kernel;
        EXPECT_EQ(&kernel, &Kernel::Instance());
        kernel.conOut << "console";
        EXPECT_EQ(static_cast<ostream *>(&kernel.conOut), &GetConOut());
        EXPECT_EQ(static_cast<ostream *>(&kernel.logOut), &GetLogOut());
        {
            TestKernel second;
            EXPECT_EQ(&second, Kernel::InstancePtr());
        }
        // The end of the second kernel has left no instance.
    }
    Texts texts = dialogs.TakeTexts();
    // The objects that a kernel owns assert as well.
    std::erase_if(texts, [](string const &text) { return text.find("Kernel singleton") == string::npos; });
    EXPECT_EQ((Texts{"Kernel singleton is not created.", "Kernel singleton already created.",
                     "Destructing non-existent Kernel singleton."}),
              texts);
}

TEST(Kernel, GivesEachThreadStreamsOfItsOwn)
{
    struct Streams : TextSink
    {
        void OnText(std::string_view, unsigned int) override {}
        SharedOutputStream con{*this}, log{*this};
    };
    // The streams outlive the kernel.
    class SharingKernel : public Streams, public TestKernel
    {
    public:
        SharingKernel() { SetOutputStreams(con, log); }
    };
    SharingKernel kernel;
    EXPECT_EQ(&GetConOut(), static_cast<ostream *>(&kernel.con));
    std::thread([&] { EXPECT_EQ(&GetConOut(), static_cast<ostream *>(&kernel.con.GetThreadStream())); }).join();
    std::thread([&] { EXPECT_EQ(&GetLogOut(), static_cast<ostream *>(&kernel.log.GetThreadStream())); }).join();
}

TEST(Kernel, NeedsAnApplication)
{
    TestKernel kernel;
    TestApplication application;
    kernel.SetApplication(&application);
    EXPECT_EQ(&application, &kernel.GetApplication());

    kernel.SetApplication(nullptr);
    string const text = tests::TextOfLastDialog([&] { kernel.GetApplication(); });
    EXPECT_NE(string::npos, text.find("! No active application."));
}

TEST(Kernel, ObserversLeaveItByThemselves)
{
    struct Both : FrameObserver, ReconfigObserver
    {
        void OnFrame(bool &, unsigned int, double) override {}
    };
    TestKernel kernel;
    {
        Both known;
        Both unknown;
        kernel.AddFrameObserver(&known);
        kernel.AddReconfigObserver(&known);
        EXPECT_EQ(1u, kernel.GetNumFrameObservers());
    }
    EXPECT_EQ(0u, kernel.GetNumFrameObservers());
    EXPECT_EQ(0u, kernel.GetNumReconfigObservers());
}

constexpr char s_szDefaultParams[] = "\tAutoSampleSystemKeyboard.....: true\n"
                                     "\tAutoSampleSystemMouse........: true\n"
                                     "\tAutoSampleNonSystemDevices...: true\n"
                                     "\tAutoDispatchGUIEvents........: true\n"
                                     "\tGUIEventsPreFrameUpdateStates: false\n"
                                     "\tAutoClearGUIStats............: true\n"
                                     "\tAutoDrawGUI..................: true\n"
                                     "\tAutoEndGUIRenderer...........: true\n"
                                     "\tAutoPresentBackBuffer........: true\n"
                                     "\tEnableHardCleanupConfigLoop..: true\n"
                                     "\tEnableHardRethrowExit........: false\n"
                                     "\tLogWinMsgOnMainWindowCleanup.: false\n"
                                     "\tWaitCloseConfirmationOnExit..: false\n"
                                     "\tDeveloperMode................: false\n";

TEST(KernelExecutionParams, ComesFromKernelOrDefaults)
{
    TestKernel kernel;
    kernel.params.DeveloperMode = true;
    kernel.params.AutoSampleSystemMouse = false;
    EXPECT_EQ(s_szDefaultParams, DumpText(KernelExecutionParams(false), 1));
    EXPECT_TRUE(kernel.params.DeveloperMode);

    KernelExecutionParams params;
    EXPECT_TRUE(params.DeveloperMode);
    EXPECT_FALSE(params.AutoSampleSystemMouse);
    params.AutoDrawGUI = false;
    params.SetKernelCurrent();
    KernelExecutionParams again(false);
    again.GetKernelCurrent();
    EXPECT_FALSE(again.AutoDrawGUI);
    EXPECT_TRUE(again.DeveloperMode);
}

TEST(KernelExecutionParams, WantsAKernelEvenForDefaults)
{
    for (bool current : {false, true})
    {
        ScriptedDialogs dialogs(platform::eDialogAnswer::e_retry);
        KernelExecutionParams params(current);
        EXPECT_EQ(s_szDefaultParams, DumpText(params, 1));
        params.GetKernelCurrent();
        params.SetKernelCurrent();
        Texts const texts = dialogs.TakeTexts();
        EXPECT_EQ(Texts(texts.size(), "Kernel singleton is not created."), texts);
        EXPECT_FALSE(texts.empty());
    }
}

TEST(KernelThreadInfo, DumpsEachField)
{
    KernelThreadInfo info;
    info.ThreadHandle = reinterpret_cast<HANDLE>(0x1f0);
    info.ThreadID = 77;
    info.Priority = -2;
    EXPECT_EQ("ThreadHandle.......: 0x1f0\nThreadID...........: 77\nPriority...........: -2\n"
              "EnablePriorityBoost: true\n",
              DumpText(info, 0));
}

/// Returns the flags of a description in the order of their fields, as digits.
string Digits(FailureDesc const &desc)
{
    string digits;
    for (bool flag : {desc.StandardException, desc.LibraryException, desc.KernelFailure, desc.GUIFailure,
                      desc.GenericExtensionFailure, desc.ApplicationFailure, desc.VideoSubsystemFailure,
                      desc.VideoRendererFailure, desc.DeviceFailure, desc.GenericSubsystemFailure})
        digits += flag ? '1' : '0';
    return digits;
}

template<typename... Exceptions>
string DigitsOf()
{
    return (... + (Digits(FailureDesc(e_kernel_running, std::make_unique<Exceptions>().get())).substr(2) + " "));
}

TEST(FailureDesc, KnowsTheKindOfFailure)
{
    std::runtime_error const standard("x");
    HIDException const ours;
    EXPECT_EQ("0000000000", Digits(FailureDesc()));
    EXPECT_EQ(e_kernel_devices, FailureDesc(e_kernel_devices, nullptr, nullptr).KernelLevel);
    EXPECT_EQ("1000000000", Digits(FailureDesc(e_kernel_none, nullptr, &standard)));
    EXPECT_EQ("0100000010", Digits(FailureDesc(e_kernel_none, &ours)));
    EXPECT_EQ("00000000 10000000 01000000 00100000 00010000 ",
              (DigitsOf<SystemResourceException, KernelException, GUIException, GenericExtensionException,
                        ApplicationException>()));
    EXPECT_EQ("00001000 00001000 00000100 00000010 00000010 00000001 ",
              (DigitsOf<VideoSubsystemException, VideoSubsystemRecoverableException, VideoRendererException,
                        DirectInputProxyException, HIDDriverException, GenericSubsystemException>()));
}

TEST(Application, StartupRecordsDumpTheirPaths)
{
    Application::StartupInfo info;
    info.CommandLine = "unseen";
    info.ProcessDirectory = "a";
    info.UserHomeDirectory = "b";
    info.UserProfileDirectory = "c";
    info.AppProfileDirectory = "d";
    info.AppLogFilename = "e";
    std::ostringstream out;
    info.DumpPaths(out, 1);
    EXPECT_EQ("\tProcessDirectory....: a\n\tUserHomeDirectory...: b\n\tUserProfileDirectory: c\n"
              "\tAppProfileDirectory.: d\n\tAppLogFilename......: e\n",
              out.str());

    Application::StartupResult result;
    EXPECT_TRUE(result.ContinueStartup && result.EnableConsole && !result.WaitCloseConfirmation);
    result.AppWindowText = "w";
    out.str("");
    result.DumpPaths(out, 0);
    EXPECT_EQ("ProcessDirectory...: \nAppProfileDirectory: \nAppLogFilename.....: \nAppWindowText......: w\n",
              out.str());
}

} // namespace
} // namespace quillmarsh
