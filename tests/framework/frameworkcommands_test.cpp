#include <quillmarsh/basetools/variableregistry.h>
#include <quillmarsh/framework/commands/crashcmd.h>
#include <quillmarsh/framework/commands/frameworkcommands.h>
#include <quillmarsh/framework/frameworkprofiler.h>
#include <quillmarsh/framework/stdcommandinterpreter.h>

#include "tests/support/failures.h"
#include "tests/support/scripted_dialogs.h"
#include "tests/support/test_kernel.h"

#include <gtest/gtest.h>

namespace quillmarsh::framework_commands
{
namespace
{

using tests::ScriptedDialogs;

class FrameworkCommands : public testing::Test
{
protected:
    FrameworkCommands()
    {
        interpreter = std::make_unique<std_command_interpreter::Interpreter>();
        interpreter->SetDeveloperModeActive(true);
        CreateAndRegisterAllCommands(*interpreter, nullptr, 0, 0);
    }

    string Run(string const &line)
    {
        std::ostringstream out;
        bool const result = interpreter->InterpretCommandLine(line, out);
        return out.str() + (result ? "true" : "false");
    }

    tests::TestKernel kernel;
    Profiler &profiler = *kernel.GetProfiler();
    VariableRegistry &registry = *kernel.GetVariableRegistry();
    AutoPtr<std_command_interpreter::Interpreter> interpreter;
};

TEST_F(FrameworkCommands, ExitAsksTheKernel)
{
    EXPECT_EQ(Run("exit"), "true");
    EXPECT_EQ(kernel.numExitRequests, 1u);
    EXPECT_FALSE(kernel.params.WaitCloseConfirmationOnExit);
    EXPECT_EQ(Run("exit -w"), "true");
    EXPECT_EQ(kernel.numExitRequests, 2u);
    EXPECT_TRUE(kernel.params.WaitCloseConfirmationOnExit);
}

TEST_F(FrameworkCommands, CrashForcesTheFirstFailureAskedFor)
{
    {
        ScriptedDialogs dialogs({platform::eDialogAnswer::e_retry, platform::eDialogAnswer::e_retry});
        EXPECT_EQ(Run("crash -throw -assert -hre"), "true");
        EXPECT_EQ(Run("crash -verify"), "true");
        auto const requests = dialogs.TakeRequests();
        ASSERT_EQ(requests.size(), 2u);
        EXPECT_EQ(requests[0].title, "Assert Failed");
        EXPECT_NE(requests[0].text.find("\n! Forced assert by crash-command."), string::npos);
        EXPECT_EQ(requests[1].title, "Assert Failed");
        EXPECT_NE(requests[1].text.find("\n! Forced verify by crash-command."), string::npos);
    }
    EXPECT_FALSE(kernel.params.EnableHardRethrowExit);
    EXPECT_EQ(tests::MessageOf<ApplicationException>([&] { Run("crash -throw -zeroptrr"); },
                                                     "source/framework/commands/crashcmd.cpp"),
              "Forced throw by crash-command.");
}

TEST_F(FrameworkCommands, CrashSetsParameters)
{
    EXPECT_EQ(Run("crash -hccl -nohccl -hre -logmwc=on"), "true");
    EXPECT_FALSE(kernel.params.EnableHardCleanupConfigLoop);
    EXPECT_TRUE(kernel.params.EnableHardRethrowExit);
    EXPECT_TRUE(kernel.params.LogWinMsgOnMainWindowCleanup);
    EXPECT_EQ(Run("crash -hccl -nohre -logmwc=maybe"), "true");
    EXPECT_TRUE(kernel.params.EnableHardCleanupConfigLoop);
    EXPECT_FALSE(kernel.params.EnableHardRethrowExit);
    EXPECT_TRUE(kernel.params.LogWinMsgOnMainWindowCleanup);
}

TEST_F(FrameworkCommands, CrashDereferencesZeroPointers)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    for (string const option : {CrashCmd::s_szOptionZeroPtrRead, CrashCmd::s_szOptionZeroPtrWrite})
        EXPECT_DEATH(Run("crash -" + option), "");
}

TEST_F(FrameworkCommands, VarShowsAndSetsVariables)
{
    int speed = 5;
    float speedUp = 1.5f;
    bool secret = false;
    registry.RegisterVariable(VariableProxyRangeCheckedInt(&speed, 0, 10, "speed", "how fast"));
    registry.RegisterVariable(VariableProxyFloat(&speedUp, "speed-up"));
    registry.RegisterVariable(VariableProxyBool(&secret, "secret", "", true));
    string const all = "secret = false\nspeed = 5\nspeed-up = 1.5\ntrue";
    EXPECT_EQ(Run("var"), all);
    EXPECT_EQ(Run("var -i speed"), all);
    EXPECT_EQ(Run("var s"), all);
    EXPECT_EQ(Run("var spee 7"), "speed = 5\nspeed-up = 1.5\ntrue");
    EXPECT_EQ(Run("var speed"), "speed = 5\ntrue");
    EXPECT_EQ(Run("var x"), "true");
    EXPECT_EQ(Run("var speed 15"), "speed = 10\ntrue");
    EXPECT_EQ(Run("var speed -i"), "Variable....: speed\nDescription.: how fast\nDevModeOnly.: false\n"
                                   "Type........: int\nRestrictions: range=[0, 10]\nTarget......: " +
                                       registry.GetVariable("speed")->GetTargetObjectName() +
                                       "\nValue.......: 10\ntrue");
    EXPECT_EQ(Run("var secret yes"), "Variable: secret is developer-mode only.\ntrue");
    EXPECT_FALSE(secret);
    kernel.params.DeveloperMode = true;
    EXPECT_EQ(Run("var secret yes"), "secret = true\ntrue");
}

TEST_F(FrameworkCommands, ProfilerSamplesACleanPeriod)
{
    string const states = "RecursionHandlerEnabled: true\nMaxExpectedStackDepth..: 2\nAutoResetThreshold.....: 0\n"
                          "IterationCount.........: 0\nElapsedSeconds.........: 0\n";
    EXPECT_EQ(Run("profiler -rh=on -auto-reset=0 -max-depth=1"), states + "Profiler running.......: false\ntrue");
    EXPECT_EQ(Run("profiler -run"), states + "Profiler running.\ntrue");
    EXPECT_EQ(Run("profiler -run -rh=x"), states + "Profiler running.......: true\ntrue");
    profiler.EnterRootNode();
    profiler.ExitRootNode();

    string const cycle = Run("profiler -stop -dump -ec -clear -reset -run");
    string const begin = "Profiler stopped.\nProfile statistics:\nRecursionHandlerEnabled.........: true\n";
    EXPECT_EQ(cycle.substr(0, begin.size()), begin);
    EXPECT_NE(cycle.find(" EntryCounts   | BlockNames\n Min  Avg  Max | \n   1    1    1 | Root\n\n"
                         "Cleaning profiler nodes.\nReseting profiler statistics.\nProfiler running.\ntrue"),
              string::npos)
        << cycle;
    EXPECT_EQ(Run("profiler -stop -stop"), "Profiler stopped.\n" + states + "Profiler running.......: false\ntrue");
}

TEST(FrameworkProfiler, SentriesNeedAnEnabledProfiler)
{
    auto const runFrame = []
    {
        QUILLMARSH_PROFILE_ITERATION();
        QUILLMARSH_PROFILE_BLOCK("outer");
        {
            QUILLMARSH_PROFILE_BLOCK("inner");
        }
        QUILLMARSH_PROFILE_BLOCK("after");
    };
    runFrame();
    ScriptedDialogs dialogs;
    {
        FrameworkProfiler profiler;
        EXPECT_EQ(&FrameworkProfiler::Instance(), &profiler);
        runFrame();
        EXPECT_EQ(profiler.GetRootNode().GetNumChildren(), 0u);
        profiler.Enable(true);
        runFrame();
        EXPECT_EQ(profiler.GetIterationCount(), 1u);
        ProfilerNode const *const outer = profiler.GetRootNode().GetChild(0);
        EXPECT_EQ(outer->GetNumChildren(), 2u);
        {
            QUILLMARSH_PROFILE_ITERATION();
            QUILLMARSH_PROFILE_BLOCK("outer");
            profiler.Enable(false);
        }
        EXPECT_EQ(profiler.GetIterationCount(), 1u);
        {
            FrameworkProfiler const second;
        }
        EXPECT_EQ(dialogs.TakeTexts(), std::vector<string>{"FrameworkProfiler singleton already created."});
        static_cast<void>(FrameworkProfiler::InstancePtr());
        EXPECT_EQ(dialogs.TakeTexts(), std::vector<string>{"FrameworkProfiler singleton is not created."});
        runFrame();
    }
    EXPECT_EQ(dialogs.TakeTexts(), std::vector<string>{"Destructing non-existent FrameworkProfiler singleton."});
}

} // namespace
} // namespace quillmarsh::framework_commands
