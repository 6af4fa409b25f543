#include "tests/support/gui_screen.h"

#include <quillmarsh/devices/keyboardlayout.h>
#include <quillmarsh/framework/samplereadsentry.h>
#include <quillmarsh/gui/gui_buttons.h>
#include <quillmarsh/gui/gui_componentpath.h>
#include <quillmarsh/gui/gui_robot.h>

#include <gtest/gtest.h>

namespace quillmarsh::tests
{
namespace
{

using namespace gui;
using Lines = std::vector<string>;

string ThrownMessage(std::function<void()> const &call)
{
    try
    {
        call();
    }
    catch (GUIException const &thrown)
    {
        return thrown.GetMessage();
    }
    return "nothing was thrown";
}

class Panel : public Component
{
public:
    Panel(string text, vec2 const &position, vec2 const &size, Component *parent = nullptr) : caption(std::move(text))
    {
        SetPosition(position);
        SetSize(size);
        if (parent != nullptr)
            AttachTo(*parent);
    }

    string GetCaption() const override { return caption; }

    string caption;
};

/// Button of the library with a caption.
class NamedButton : public Button
{
public:
    NamedButton(string caption, vec2 const &position, Component &parent, unsigned int commandID)
        : Button(&parent, &parent, commandID, e_style_push, 0),
          caption_(std::move(caption))
    {
        SetPosition(position);
        SetSize(40, 20);
    }

    string GetCaption() const override { return caption_; }

private:
    string caption_;
};

/// Panel that counts the commands of its buttons.
class CountingPanel : public Panel
{
public:
    using Panel::Panel;

    bool OnCommand(unsigned int commandID) override
    {
        commands.push_back(commandID);
        return true;
    }

    std::vector<unsigned int> commands;
};

/// Field that takes characters.
class Field : public Panel
{
public:
    using Panel::Panel;

    bool OnKeyboardQueryFocus(bool, eMouseButton, bool &want, bool &needCharacters) override
    {
        want = needCharacters = true;
        return true;
    }
    using Component::OnKeyboardQueryFocus;
    bool OnKeyboardKey(bool down, eKey key, unsigned int, char character) override
    {
        if (down && character != 0)
            caption += character;
        if (down && key == e_key_enter)
            caption += "<Enter>";
        return true;
    }
    using Component::OnKeyboardKey;
};

/// True if a text has a part.
testing::AssertionResult Contains(string const &text, string const &part)
{
    if (text.find(part) != string::npos)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << '"' << part << "\" is not in: " << text;
}

/// A manager in a window of 640 by 480 pixels, whose mouse and keyboard are those of a robot.
class GuiRobot : public testing::Test
{
protected:
    using Doors = GuiDesk::DeskKernel;

    GuiRobot()
    {
        Doors::GUIManager_OnWindowResize(640, 480);
        Connect();
        files.SetCanFocus(true);
        open.SetShaderName("plain");
    }
    ~GuiRobot() override { Doors::GUIManager_DisconnectHumanInterfaceDevices(); }

    void Connect()
    {
        Doors::GUIManager_BeginConnectHumanInterfaceDevices();
        Doors::GUIManager_ConnectHumanInterfaceDevice(*mouse);
        Doors::GUIManager_ConnectHumanInterfaceDevice(*keyboard);
        Doors::GUIManager_EndConnectHumanInterfaceDevices();
    }

    void Frame()
    {
        ++numFrames;
        if (onFrame)
            onFrame();
        for (HumanInterfaceDevice *const device : {mouse.get(), keyboard.get()})
        {
            if (!device->IsAsyncSamplingActive())
                SampleReadSentry const sentry(*device, true);
        }
        kernel.timeDelta = timeDelta;
        manager.DispatchInputEvents();
    }

    string ClickFailure(string const &path)
    {
        return ThrownMessage([&] { robot.Click(path); });
    }

    Doors kernel;
    Manager manager;
    PlainShader shader{"plain"};
    int numFrames = 0;
    double timeDelta = 0.01;
    std::function<void()> onFrame;
    Robot robot{[this] { Frame(); }};
    AutoPtr<HumanInterfaceDevice> mouse = robot.CreateMouse();
    AutoPtr<HumanInterfaceDevice> keyboard = robot.CreateKeyboard();
    CountingPanel &files = *new CountingPanel("Files", {10, 10}, {300, 200});
    NamedButton &open = *new NamedButton("Open", {10, 10}, files, 7);
    NamedButton &close = *new NamedButton("Close", {60, 10}, files, 8);
    Panel &list = *new Panel("", {10, 50}, {100, 100}, &files);
    Field &field = *new Field("", {10, 160}, {100, 20}, &files);
};

TEST_F(GuiRobot, PathsLeadToComponents)
{
    new Panel("it's *", {0, 0}, {10, 10}, &list);
    new Panel("Größe", {0, 0}, {10, 10}, &list);
    Component *const first = list.GetChild(0);
    Component *const second = list.GetChild(1);
    struct
    {
        char const *path;
        std::vector<Component *> found;
    } const cases[] = {
        {"CountingPanel 'Files' / NamedButton 'Open'", {&open}},
        {"/CountingPanel/NamedButton", {&open, &close}},
        {"/CountingPanel//Panel", {&list, first, second}},
        {"Panel", {&list, first, second}},
        {"/Panel", {}},
        {"NamedButton[1]", {&close}},
        {"/*/*[1]", {&close}},
        {"*//*[1]", {&close, second}},
        {"'Open'", {&open}},
        {"* \"Open\"", {&open}},
        {"'O*n'", {&open}},
        {"'?pen'", {&open}},
        {"'it\\'s \\*'", {first}},
        {"'Größe'", {second}},
        {"'*r??e'", {second}},
        {"'*r???e'", {}},
        {"Panel[2]", {second}},
        {"Panel[3]", {}},
        {"Pane", {}},
        {"Files", {}},
    };
    for (auto const &[path, found] : cases)
        EXPECT_EQ(ComponentPath(path).FindAll(manager), found) << path;
    for (Component *const component : {first, second, static_cast<Component *>(&open), static_cast<Component *>(&list)})
        EXPECT_EQ(&Robot::Find(ComponentPath::Make(*component)), component) << ComponentPath::Make(*component);
    EXPECT_EQ(ComponentPath::Make(*first), "/CountingPanel 'Files'/Panel/Panel 'it\\'s \\*'");
    EXPECT_EQ(ComponentPath::Make(*second), "/CountingPanel 'Files'/Panel/Panel 'Größe'");
    new Panel("", {0, 0}, {10, 10}, &files);
    EXPECT_EQ(ComponentPath::Make(list), "/CountingPanel 'Files'/Panel[0]");
}

TEST_F(GuiRobot, RefusesPathsThatCannotBeRead)
{
    struct
    {
        char const *path;
        char const *message;
    } const cases[] = {
        {"", "The path  is wrong at character 1: a class or a caption in quotes is expected."},
        {"Panel /", "The path Panel / is wrong at character 8: a class or a caption in quotes is expected."},
        {"Panel Button", "The path Panel Button is wrong at character 7: a \"/\" is expected."},
        {"Panel 'Files", "The path Panel 'Files is wrong at character 7: the quote has no end."},
        {"Panel 'Files\\", "The path Panel 'Files\\ is wrong at character 7: the quote has no end."},
        {"Panel[x]", "The path Panel[x] is wrong at character 7: an index from 0 on and a \"]\" are expected."},
        {"Panel[1", "The path Panel[1 is wrong at character 8: an index from 0 on and a \"]\" are expected."},
        {"'\xc3'", "The path '\xc3' is no UTF-8."},
    };
    for (auto const &[path, message] : cases)
        EXPECT_EQ(ThrownMessage([&, p = path] { ComponentPath const parsed(p); }), message);
}

TEST_F(GuiRobot, SaysWhatItSawInstead)
{
    EXPECT_EQ(ClickFailure("CountingPanel 'Files' / NamedButton 'Opne'"),
              "The robot cannot click CountingPanel 'Files' / NamedButton 'Opne': there is no such component. There is "
              "no NamedButton 'Opne'. The path leads to /CountingPanel 'Files', which has the children NamedButton "
              "'Open', NamedButton 'Close', Panel, Field. Similar: /CountingPanel 'Files'/NamedButton 'Open', "
              "/CountingPanel 'Files'/NamedButton 'Close'.");
    EXPECT_EQ(numFrames, 30) << "it looks for a while";
    EXPECT_EQ(ClickFailure("NamedButton"),
              "The robot cannot click NamedButton: several components fit. The path leads to 2 components: "
              "/CountingPanel 'Files'/NamedButton 'Open', /CountingPanel 'Files'/NamedButton 'Close'.");
    EXPECT_TRUE(Contains(ClickFailure("/Nothing"), "The top-level components are CountingPanel 'Files'."));

    files.SetVisible(false);
    EXPECT_EQ(ClickFailure("'Open'"),
              "The robot cannot click 'Open': it is hidden together with /CountingPanel 'Files'.");
    files.SetVisible(true);
    open.SetVisible(false);
    EXPECT_TRUE(Contains(ClickFailure("'Open'"), "it is hidden."));
    open.SetVisible(true);
    open.SetEnabled(false);
    EXPECT_TRUE(Contains(ClickFailure("'Open'"), "it is disabled."));
    open.SetEnabled(true);
    open.SetPosition(700, 10);
    files.ReportDirtyGeometry();
    EXPECT_TRUE(Contains(ClickFailure("'Open'"), "it is outside of the window: it stands at 710,20 with a size of "
                                                 "40x20, and the window has a size of 640x480."));
    open.SetPosition(10, 10);
    files.ReportDirtyGeometry();
    Panel &cover = *new Panel("Cover", {0, 0}, {200, 100});
    EXPECT_TRUE(Contains(ClickFailure("'Open'"), "it is covered by /Panel 'Cover'."));
    cover.SetPosition(400, 400);
    cover.ReportDirtyGeometry();
    manager.RunModal(cover);
    EXPECT_TRUE(Contains(ClickFailure("'Open'"), "it cannot be reached while /Panel 'Cover' is modal."));
    manager.EndModal(cover);
    EXPECT_TRUE(files.commands.empty());
    robot.Click("'Open'");
    EXPECT_EQ(files.commands, std::vector<unsigned int>{7}) << "a failure leaves nothing behind";
}

TEST_F(GuiRobot, ClicksAsAHandDoes)
{
    MessageLog log;
    RecordingComponent &probe = *new RecordingComponent(log, "p", {400, 100}, {51, 51});
    probe.wantsFocus = true;
    robot.Click("RecordingComponent");
    EXPECT_EQ(log.Take(), (Lines{"p enter direct", "p activate by mouse button 0 @25,25", "p down 0 @25,25",
                                 "p want focus by mouse", "p got focus", "p up 0 @25,25"}));
    EXPECT_EQ(numFrames, 4) << "one for a new component to be there, one for each change";
    robot.Click("RecordingComponent", e_mouse_button_right, vec2(3, 4));
    EXPECT_EQ(log.Take(), (Lines{"p activate by mouse button 1 @3,4", "p down 1 @3,4", "p up 1 @3,4"}));
    robot.Click("RecordingComponent", e_mouse_button_right);
    EXPECT_EQ(log.Take(), (Lines{"p down 1 @25,25", "p up 1 @25,25"})) << "no double click by accident";
    robot.DoubleClick("RecordingComponent");
    Lines const lines = log.Take();
    EXPECT_EQ(Lines(lines.end() - 4, lines.end()),
              (Lines{"p down 0 @25,25", "p up 0 @25,25", "p down 0 double @25,25", "p up 0 @25,25"}));
    robot.Turn("RecordingComponent", -240);
    EXPECT_EQ(log.Take(), Lines{"p wheel -240 @25,25"});
    robot.DragBy("RecordingComponent", {10, 5});
    EXPECT_EQ(log.Take(), (Lines{"p down 0 @25,25", "p up 0 @35,30"}));
    robot.Move("'Close'");
    EXPECT_EQ(log.Take(), Lines{"p exit"});

    Panel &cover = *new Panel("Cover", {400, 100}, {40, 51});
    robot.Click("RecordingComponent");
    EXPECT_EQ(log.Take().back(), "p up 0 @40,3") << "where it is not covered";
    cover.SetVisible(false);
    timeDelta = 0.2;
    EXPECT_TRUE(Contains(ThrownMessage([&] { robot.DoubleClick("RecordingComponent"); }),
                         "the frames are too slow: 0.4 s passed between the presses"));
    timeDelta = 0;
    robot.Click("'Open'");
    EXPECT_TRUE(Contains(ClickFailure("'Open'"), "no time passes between the frames"));
    probe.SetVisible(false);
}

TEST_F(GuiRobot, ClicksOnceMoreWhenTheWindowIgnoresAClick)
{
    Doors::GUIManager_NotifyApplicationWindowActive(true);
    robot.Click("'Open'");
    robot.Click("'Close'");
    EXPECT_EQ(files.commands, (std::vector<unsigned int>{7, 8}));
}

TEST_F(GuiRobot, DragsMoveWindowsAndLeadToOthers)
{
    Panel &title = *new Panel("Title", {0, 0}, {300, 8}, &files);
    title.SetDefaultCommandArea(e_area_move);
    Component &corner = *new Panel("Corner", {500, 400}, {20, 20});
    robot.DragBy("'Title'", {100, 50});
    EXPECT_EQ(files.GetPosition(), vec2(110, 60));
    robot.Drag("'Title'", "'Corner'");
    EXPECT_EQ(files.GetPosition(), corner.GetPosition() + vec2(10, 10) - vec2(150, 4));
    string const message = ThrownMessage([&] { robot.Drag("'Title'", "'Nowhere'"); });
    EXPECT_TRUE(Contains(message, "the other component is not there. There is no 'Nowhere'."));
    Frame();
    EXPECT_FALSE(manager.IsButtonPressed()) << "a failure releases the button";
}

TEST_F(GuiRobot, TypesTheWholeOfLatin1)
{
    string latin1;
    string utf8;
    for (unsigned int code = 0x20; code < 0x100; ++code)
    {
        if (code >= 0x7f && code < 0xa0)
            continue;
        latin1 += static_cast<char>(code);
        utf8 += code < 0x80 ? string(1, static_cast<char>(code))
                            : string{static_cast<char>(0xc0 | code >> 6), static_cast<char>(0x80 | (code & 0x3f))};
        KeyStroke stroke;
        char character = 0;
        ASSERT_TRUE(FindLayoutStroke(latin1.back(), stroke)) << code;
        EXPECT_TRUE(FindLayoutCharacter(stroke, character));
        EXPECT_EQ(character, latin1.back());
    }
    EXPECT_TRUE(Contains(ThrownMessage([&] { robot.Type("a"); }),
                         "no component takes characters; nothing has the keyboard focus."));
    robot.Click("Field");
    robot.Type(utf8 + "\n");
    EXPECT_EQ(field.caption, latin1 + "<Enter>");
    EXPECT_FALSE(manager.IsKeyPressed());
    EXPECT_EQ(ThrownMessage([&] { robot.Type("\x01"); }), "The character with the code 1 cannot be typed.");
    EXPECT_EQ(ThrownMessage([&] { robot.Type("€"); }),
              "The text '€' has characters that are not in Latin-1, or is no UTF-8.");
    manager.SetCycleQueueKeys(e_key_x, Manager::s_noKeyModifier, e_key_modifier_shift);
    EXPECT_TRUE(Contains(ThrownMessage([&] { robot.Type("axb"); }), "the key X does not reach any component"));
}

TEST_F(GuiRobot, PressesChords)
{
    MessageLog log;
    RecordingComponent &probe = *new RecordingComponent(log, "p", {400, 100}, {50, 50});
    probe.wantsFocus = true;
    robot.Click("RecordingComponent");
    log.Take();
    robot.Key("ctrl + Shift+end");
    EXPECT_EQ(log.Take(), (Lines{"p key down L-Control", "p key down L-Shift", "p key down End", "p key up End",
                                 "p key up L-Shift", "p key up L-Control"}));
    robot.HoldKeys("Alt");
    EXPECT_TRUE(manager.IsKeyModifierPressed(e_key_modifier_alt));
    robot.ReleaseKeys("Alt");
    EXPECT_FALSE(manager.IsKeyModifierPressed());
    EXPECT_EQ(ThrownMessage([&] { robot.Key("Ctrl+Any"); }),
              "There is no key 'Any', which the chord 'Ctrl+Any' names.");
    EXPECT_EQ(ThrownMessage([&] { robot.Key(""); }), "A chord has no keys.");
}

TEST_F(GuiRobot, WaitsForWhatComesAndGoes)
{
    robot.WaitFrames(5);
    EXPECT_EQ(numFrames, 5);
    robot.WaitSeconds(0.095);
    EXPECT_EQ(numFrames, 15);
    Panel &late = *new Panel("Late", {400, 10}, {20, 20});
    late.SetVisible(false);
    onFrame = [&] { late.SetVisible(numFrames >= 20 && numFrames < 30); };
    robot.WaitFor("'Late'");
    EXPECT_EQ(numFrames, 20);
    robot.WaitForEnd("'Late'");
    EXPECT_EQ(numFrames, 30);
    robot.WaitForEnd("'Never'");
    onFrame = [&] { list.caption = numFrames >= 40 ? "Länge…" : "none"; };
    robot.WaitForText("/*/Panel", "Länge…");
    EXPECT_EQ(numFrames, 40);
    robot.WaitUntil([&] { return numFrames == 50; }, "the frame is there");
    EXPECT_EQ(numFrames, 50);
    EXPECT_EQ(ThrownMessage([&] { robot.WaitForText("/*/Panel", "none", 3); }),
              "The robot cannot wait any longer until /*/Panel has the text \"none\": its text is \"Länge…\" after 3 "
              "frames.");
    EXPECT_TRUE(Contains(ThrownMessage([&] { robot.WaitForEnd("'Open'", 3); }), "it is still there after 3 frames."));
    EXPECT_TRUE(Contains(ThrownMessage([&] { robot.WaitFor("'Late'", 3); }), "it is hidden after 3 frames."));
    robot.SetWaitLimit(2);
    EXPECT_EQ(ThrownMessage([&] { robot.WaitUntil([] { return false; }, "it rains"); }),
              "The robot cannot wait any longer until it rains: it is not so after 2 frames.");
    onFrame = nullptr;
}

TEST_F(GuiRobot, OperationsWaitInAQueueWithoutAFunctionForFrames)
{
    Doors::GUIManager_DisconnectHumanInterfaceDevices();
    Robot queued;
    mouse = queued.CreateMouse();
    keyboard = queued.CreateKeyboard();
    Connect();
    queued.Click("'Open'");
    queued.Click("'Close'");
    EXPECT_TRUE(queued.IsBusy());
    int numChanges = 0;
    for (; queued.Advance(); ++numChanges)
        Frame();
    EXPECT_EQ(numChanges, 6 + 1) << "six changes, and a frame in which the components became known";
    EXPECT_FALSE(queued.IsBusy());
    EXPECT_EQ(files.commands, (std::vector<unsigned int>{7, 8}));
    queued.Click("'Gone'");
    queued.Click("'Open'");
    queued.SetPatience(0);
    EXPECT_THROW(queued.Advance(), RobotException);
    EXPECT_FALSE(queued.IsBusy()) << "a failure drops the rest";
    queued.PressButton();
    queued.Stop();
    EXPECT_FALSE(queued.Advance());
    EXPECT_EQ(ClickFailure("'Open'"), "The robot cannot click 'Open': the GUI does not use the mouse of the robot, "
                                      "which must be connected ahead of others.");
}

TEST_F(GuiRobot, LosesNoChangeWhenAThreadSamples)
{
    for (HumanInterfaceDevice *const device : {mouse.get(), keyboard.get()})
    {
        device->EnableMaxSampleRate(true);
        device->SetMaxSampleRate(1000);
        device->StartAsyncSampling();
    }
    robot.SetWaitLimit(1000000);
    // Frames without time: keys are held for many of them, and must not repeat.
    timeDelta = 0;
    robot.Click("'Open'");
    robot.Click("Field");
    robot.Type("Hello, world");
    mouse->StopAsyncSampling();
    keyboard->StopAsyncSampling();
    EXPECT_EQ(files.commands, std::vector<unsigned int>{7});
    EXPECT_EQ(field.caption, "Hello, world");
}

} // namespace
} // namespace quillmarsh::tests
