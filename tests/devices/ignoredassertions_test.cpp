// After an ignored assertion, accessors neither read nor write out of range.
#include <quillmarsh/basetools/commandlineparser.h>
#include <quillmarsh/basetools/consolebuffers.h>
#include <quillmarsh/basetools/elementprocessors.h>
#include <quillmarsh/basetools/namedparameter.h>
#include <quillmarsh/basetools/profilernode.h>
#include <quillmarsh/basetools/uid.h>
#include <quillmarsh/basetools/variableregistry.h>
#include <quillmarsh/devices/keyboard.h>
#include <quillmarsh/devices/staticgestures.h>
#include <quillmarsh/framework/plugin.h>
#include <quillmarsh/framework/samplereadsentry.h>

#include "tests/support/scripted_dialogs.h"

#include <gtest/gtest.h>

namespace quillmarsh::tests
{
namespace
{

constexpr char const *s_szPastEnd = "Index out of range.";
constexpr char const *s_szNull = "Invalid argument.";
constexpr char const *s_szNoDevice = "Parent-HID not set for HIDController: ";

/// A keyboard without a device.
class LonelyKeyboard : public Keyboard
{
public:
    LonelyKeyboard() : Keyboard(false) {}
    bool MapKeyToCharacter(eKey, char &) override { return false; }
    void OnCharacterMappingChanged() override {}
    using Keyboard::SetKeyPressed;
};

/// Counts the elements that it processes.
class CountingProcessor final : public element_processors::ElementProcessorInplace<unsigned char>
{
public:
    void Process(unsigned char *) override { ++count; }
    unsigned int count = 0;
};

struct Access
{
    char const *name;
    char const *message;
    /// Returns the result in a few letters.
    string (*get)();
    char const *expected;
};

constexpr Access s_accesses[] = {
    {"line of a buffer", s_szPastEnd,
     []
     {
         ConsoleOutputBuffer const buffer;
         unsigned int type = 7;
         string const line = buffer.GetLine(1, type);
         return line + std::to_string(type);
     },
     "0"},
    {"command of the history", "Input-command index out of range.",
     [] { return ConsoleBuffers().GetCommandFromHistory(0); }, ""},
    {"argument of a command line", s_szPastEnd,
     []
     {
         CommandLineParser parser;
         parser.Parse("foo a b");
         parser.Parse("foo");
         return parser.GetArgument(0).String();
     },
     ""},
    {"parameter of a list", s_szPastEnd,
     []
     {
         NamedParameterList parameters;
         parameters.Insert(NamedParameter("a", 1), false);
         return parameters.GetParameter(1).GetName() + std::to_string(parameters.GetParameter(0).GetValueInteger());
     },
     "1"},
    {"variable of a registry", s_szPastEnd, [] { return VariableRegistry().GetVariable(0u).GetValueString(); },
     "Unknown"},
    {"word of an id", s_szPastEnd, [] { return std::to_string(UID(7, 0, 0, 0)[4]); }, "7"},
    {"child of a profiler's node", s_szPastEnd,
     [] { return string(ProfilerNode("n", nullptr).GetChild(0) == nullptr ? "null" : ""); }, "null"},
    {"elements at null", s_szNull,
     []
     {
         CountingProcessor processor;
         element_processors::ProcessElementsInplace3D<unsigned char>(processor, 2, 2, 2, nullptr, {4, 2, 1});
         return std::to_string(processor.count);
     },
     "0"},
    {"condition of a gesture", s_szPastEnd,
     [] { return std::to_string(static_gestures::Gesture(1, "g").GetCondition(0).sensor); }, "0"},
    {"sample without a device", s_szNoDevice,
     []
     {
         LonelyKeyboard keyboard;
         keyboard.SetKeyPressed(e_key_a);
         keyboard.PreSampleUpdate();
         return string(keyboard.KeyUp(e_key_a) != 0 ? "up" : "");
     },
     "up"},
    {"sentries without a device", s_szNoDevice,
     []
     {
         LonelyKeyboard keyboard;
         SampleReadSentry const present(keyboard, true);
         AsyncSampleReadSentry const old(keyboard, true);
         return string();
     },
     ""},
};

TEST(IgnoredAssertions, LeaveNothingOutOfRange)
{
    for (Access const &access : s_accesses)
    {
        ScriptedDialogs dialogs(platform::eDialogAnswer::e_retry);
        EXPECT_EQ(access.get(), access.expected) << access.name;
        std::vector<string> const texts = dialogs.TakeTexts();
        if (!QUILLMARSH_ASSERTIONS)
            continue;
        ASSERT_FALSE(texts.empty()) << access.name;
        EXPECT_TRUE(texts[0].starts_with(access.message)) << access.name << ": " << texts[0];
    }
}

} // namespace
} // namespace quillmarsh::tests
