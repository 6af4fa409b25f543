#include "tests/support/scratch_directory.h"

#include <quillmarsh/basetools/variableregistry.h>
#include <quillmarsh/framework/commands/screenshotcmd.h>
#include <quillmarsh/framework/stdcommandinterpreter.h>
#include <quillmarsh/host/session.h>

#include <gtest/gtest.h>

#include <sstream>

namespace quillmarsh::tests
{
namespace
{

using framework_commands::ScreenShotCmd;

TEST(ScreenshotSettings, SetTheCommand)
{
    class TestApplication : public Application
    {
    };
    ScratchDirectory const scratch;
    for (char const *const name : {"shot.0041.color.png", "shot.7", "shot.x.png", "shot.123456789.png", "other.99.png"})
        scratch.Write(name, "");
    host::Session session({.report = [](string const &message) { ADD_FAILURE() << message; }});
    ASSERT_TRUE(session.Open(std::make_unique<TestApplication>()));
    host::HostKernel &kernel = session.GetKernel();
    auto const findCommand = [&kernel]
    { return dynamic_cast<ScreenShotCmd *>(kernel.GetCommandInterpreter()->FindExternalCommand("screenshot")); };
    auto const run = [&kernel](string const &line)
    {
        std::ostringstream out;
        EXPECT_TRUE(kernel.GetCommandInterpreter()->InterpretCommandLine(line, out)) << line;
    };
    ScreenShotCmd *const command = findCommand();
    ASSERT_NE(nullptr, command);
    EXPECT_EQ("PNG//screenshot",
              command->GetFileFormat() + '/' + command->GetFileExtension() + '/' + command->GetBaseFilename());
    EXPECT_EQ(4u, command->GetSerialNumberWidth());

    // What the application has set stays until its own variable is set.
    command->SetFileExtension("picture");
    run("var screenshot.name shot");
    run("var screenshot.folder '" + scratch.GetPath().string() + "'");
    run("var screenshot.format jpeg");
    run("var screenshot.digits 12");
    run("var screenshot.overwrite yes");
    EXPECT_EQ(scratch / "shot", command->GetBaseFilename());
    EXPECT_EQ(42u, command->GetSerialNumber());
    EXPECT_EQ("JPEG", command->GetFileFormat());
    EXPECT_EQ(8u, command->GetSerialNumberWidth());
    EXPECT_TRUE(command->GetAllowFileOverwrite());
    EXPECT_EQ("picture", command->GetFileExtension());

    kernel.GetCommandInterpreter()->DeleteAllExternalCommands();
    kernel.GetVariableRegistry()->GetVariable("screenshot.name")->SetValueFromString("gone");
    session.Close();
    EXPECT_EQ(nullptr, kernel.GetVariableRegistry()->GetVariable("screenshot.name"));
}

} // namespace
} // namespace quillmarsh::tests
