// Recordings: reading, writing, playing and recording of devices.
#include "plugins/input_recording/playeddevice.h"
#include "plugins/input_recording/recorder.h"
#include "plugins/input_recording/recordingreader.h"

#include "tests/support/failures.h"
#include "tests/support/host_process.h"
#include "tests/support/scratch_directory.h"
#include "tests/support/test_kernel.h"

#include <quillmarsh/devices/gamecontroller.h>
#include <quillmarsh/devices/keyboard.h>
#include <quillmarsh/devices/mouse.h>
#include <quillmarsh/devices/orientationtracker.h>
#include <quillmarsh/devices/positiontracker.h>
#include <quillmarsh/devices/staticgestures.h>
#include <quillmarsh/mathtools/vector3.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <thread>

namespace quillmarsh::tests
{
namespace
{

using namespace input_recording;

/// Parses a recording with these lines after its signature.
Recording Parse(string const &lines)
{
    return ParseRecording("quillmarsh-recording 1\n" + lines, "r.txt");
}

constexpr char s_szAllKinds[] = "description All kinds\n"
                                "controller keyboard\n"
                                "controller mouse\n"
                                "controller orientation-tracker quaternion\n"
                                "controller position-tracker\n"
                                "controller glove left WristRoll IndexJointInner\n"
                                "controller game-controller X RZ slider0 hat1 buttons:12\n"
                                "0 keyboard keys=A,L-Shift\n"
                                "0 mouse move=3,-4 wheel=120 position=10,20 inside=1 buttons=0,5\n"
                                "0 orientation-tracker quaternion=0,0.6,0,0.8\n"
                                "0 position-tracker position=1,-2,0.035\n"
                                "0 glove WristRoll=0.25 IndexJointInner=1\n"
                                "0 game-controller X=-0.75 RZ=0.25 slider0=1 hat1=90 buttons=0,11\n"
                                "1000 end\n";

TEST(Recording, RefusesFaultsWithTheirPlace)
{
    string const pad = "controller game-controller X buttons:3\n";
    std::pair<string, char const *> const cases[] = {
        {"", "r.txt:2: the text ends without a line \"TIME end\""},
        {"controller\n", "r.txt:2: field \"controller\": the kind of controller is missing"},
        {"controller nose\n", "r.txt:2: field \"nose\": no kind of controller has this name"},
        {"controller mouse\ncontroller mouse\n", "r.txt:3: field \"mouse\": this kind of controller is listed twice"},
        {"controller glove Nose\n", "r.txt:2: field \"Nose\": a glove has no such field"},
        {"controller glove WristYaw WristYaw\n", "r.txt:2: field \"WristYaw\": it is given twice"},
        {"controller game-controller X:1\n", "r.txt:2: field \"X\": \"X:1\" has no count from 1 to 1"},
        {"controller game-controller buttons:33\n",
         "r.txt:2: field \"buttons\": \"buttons:33\" has no count from 1 to 32"},
        {"controller orientation-tracker\n",
         "r.txt:2: field \"orientation-tracker\": it must have either angles or a quaternion"},
        {"\n# comment\nnonsense\n", "r.txt:4: \"nonsense\" is neither a time nor a line of the head"},
        {pad + "0 game-controller X=1\ndescription late\n",
         "r.txt:4: \"description\" is neither a time nor a line of the head"},
        {pad + "-1 end\n", "r.txt:3: field \"time\": \"-1\" is not a number of seconds from 0 to 1e9"},
        {pad + "1e999 end\n", "r.txt:3: field \"time\": \"1e999\" is not a number of seconds from 0 to 1e9"},
        {pad + "2 game-controller X=1\n1.9 end\n",
         "r.txt:4: field \"time\": \"1.9\" is earlier than the time of the previous line"},
        {pad + "1 end\n2 game-controller X=1\n", "r.txt:4: nothing may follow the end"},
        {pad + "1 mouse wheel=1\n", "r.txt:3: field \"mouse\": the head does not list this controller"},
        {pad + "1\n", "r.txt:3: field \"controller\": the head does not list this controller"},
        {pad + "1 game-controller\n", "r.txt:3: field \"game-controller\": the sample has no fields"},
        {pad + "1 game-controller Nose=1\n", "r.txt:3: field \"Nose\": a game-controller has no such field"},
        {pad + "1 game-controller Y=1\n", "r.txt:3: field \"Y\": the head does not list it"},
        {pad + "1 game-controller X\n", "r.txt:3: field \"X\": \"=\" and a value are missing"},
        {pad + "1 game-controller X=1 X=1\n", "r.txt:3: field \"X\": it is given twice"},
        {pad + "1 game-controller X=1,2\n", "r.txt:3: field \"X\": it must have 1 value"},
        {pad + "1 game-controller X=nan\n", "r.txt:3: field \"X\": \"nan\" is not a finite number"},
        {pad + "1 game-controller X=1e99\n", "r.txt:3: field \"X\": \"1e99\" is not a finite number"},
        {pad + "1 game-controller X=1.0f\n", "r.txt:3: field \"X\": \"1.0f\" is not a finite number"},
        {pad + "1 game-controller buttons=3\n", "r.txt:3: field \"buttons\": \"3\" is not a name in this set"},
        {"controller mouse\n0 mouse inside=2\n", "r.txt:3: field \"inside\": \"2\" is neither 0 nor 1"},
        {"controller glove WristYaw:1\n", "r.txt:2: field \"WristYaw\": \"WristYaw:1\" has no range MIN,MAX"},
        {"controller glove WristYaw:1,0.5\n",
         "r.txt:2: field \"WristYaw\": \"WristYaw:1,0.5\" has a range with MIN above MAX"},
        {"controller mouse\n0 mouse wheel=0.5\n",
         "r.txt:3: field \"wheel\": \"0.5\" is not a whole number from -1000000 to 1000000"},
    };
    for (auto const &[lines, message] : cases)
        EXPECT_EQ(MessageOf<RecordingException>([&text = lines] { Parse(text); }), message);
    EXPECT_THROW(ParseRecording("quillmarsh-recording 2\n0 end\n", "r.txt"), RecordingException);
    EXPECT_THROW(LoadRecording("no such file"), RecordingException);
}

TEST(Recording, PlaysOnceOrOverAndOver)
{
    Recording const recording = Parse("controller mouse\r\n"
                                      "0.5 mouse wheel=1 buttons=1\r\n"
                                      "0.5 mouse wheel=2\r\n"
                                      "1 mouse wheel=4 buttons=none position=7,8\r\n"
                                      "2 end");
    // Time, wheel, button, position.
    std::tuple<double, float, float, float> const once[] = {{0.25, 0, 0, 0},
                                                            {0.5, 3, 1, 0},
                                                            {0.75, 0, 1, 0},
                                                            {9, 4, 0, 7},
                                                            {10, 0, 0, 7}},
                                                  looped[] = {{0.75, 3, 1, 0}, {2.25, 4, 0, 0}, {2.5, 3, 1, 0},
                                                              {6.75, 4, 0, 0}, {6.8, 3, 1, 0},  {8.6, 4, 0, 0},
                                                              {8.6, 3, 1, 0}};
    auto const play = [&](auto const &steps, bool isLooped)
    {
        RecordingPlayer player(recording, isLooped);
        for (auto const &[time, wheel, button, x] : steps)
        {
            player.AdvanceTo(time);
            std::span<float const> const state = player.GetState(0);
            EXPECT_EQ(std::tuple(state[2], state[6 + 1], state[3]), std::tuple(wheel, button, x)) << "at " << time;
            player.EndFrame();
        }
    };
    play(once, false);
    play(looped, true);
}

TEST(Recording, StepsCountFromTheLineBefore)
{
    Recording const recording = Parse("controller mouse\n1 mouse wheel=1\n+0.25 mouse wheel=1\n+0 mouse wheel=1\n"
                                      "2 mouse wheel=1\n+.5 end");
    std::vector<double> times;
    for (Sample const &sample : recording.samples)
        times.push_back(sample.time);
    EXPECT_EQ((std::vector<double>{1, 1.25, 1.25, 2}), times);
    EXPECT_EQ(2.5, recording.length);
    for (char const *const step : {"+", "+-1", "++1", "+1e9"})
    {
        EXPECT_THROW(Parse(string("controller mouse\n1 mouse wheel=1\n") + step + " end"), RecordingException) << step;
    }
}

TEST(PlayedDevice, EndsTheProgramAndWaitsForSlowFrames)
{
    for (bool const isSteady : {false, true})
    {
        TestKernel kernel;
        Playback playback{"r.txt", std::make_shared<Recording const>(Parse("controller keyboard\r\n0.12 end"))};
        playback.isLooped = false;
        playback.endsProgram = true;
        playback.isSteady = isSteady;
        PlayedDevice device(playback);
        device.ConnectDevice(nullptr);
        std::this_thread::sleep_for(std::chrono::milliseconds(130));
        device.SampleDevice();
        EXPECT_EQ(!isSteady, kernel.IsExitRequested()) << "one frame of 0.13 s";
        for (unsigned int frame = 0; frame < 2; ++frame)
        {
            std::this_thread::sleep_for(std::chrono::milliseconds(60));
            device.SampleDevice();
        }
        EXPECT_TRUE(kernel.IsExitRequested());
    }
}

TEST(PlayedDevice, ShowsAllKinds)
{
    TestKernel const kernel;
    PlayedDevice device({"r.txt", std::make_shared<Recording const>(Parse(s_szAllKinds)), 1, true});
    EXPECT_EQ(device.GetDeviceInfo().GetDeviceDescription(), "All kinds");
    device.ConnectDevice(nullptr);
    device.SampleDevice();
    auto const &keyboard = dynamic_cast<Keyboard &>(*device.FindController("Keyboard"));
    EXPECT_TRUE(keyboard.KeyDown(e_key_a) && keyboard.KeyModifierPressed(e_key_modifier_shift));
    EXPECT_EQ(keyboard.NumKeysPressed(), 2u);
    auto const &mouse = dynamic_cast<Mouse &>(*device.FindController("Mouse"));
    EXPECT_EQ(mouse.GetDeltaY(), -4);
    EXPECT_EQ(mouse.GetDeltaWheel(), 120);
    EXPECT_EQ(mouse.GetPositionY(), 20);
    EXPECT_TRUE(mouse.IsPositionInsideAppWindowClientArea() && mouse.ButtonDown(e_mouse_button_extra3));
    auto const &orientation = dynamic_cast<OrientationTracker &>(*device.FindController("OrientationTracker"));
    vec3 axes[3];
    orientation.GetOrientation(axes[0], axes[1], axes[2]);
    EXPECT_TRUE(axes[2].Equal(vec3(0.96f, 0.0f, 0.28f), 1e-5f)) << "turned to the side";
    auto const &position = dynamic_cast<PositionTracker &>(*device.FindController("PositionTracker"));
    EXPECT_EQ(position.GetPosition(), vec3(1.0f, -2.0f, 0.035f));
    auto const &glove = dynamic_cast<Glove &>(*device.FindController("Glove"));
    EXPECT_TRUE(glove.IsLeftHanded() && glove.IsSupportedSensor(WristRoll) && !glove.IsSupportedSensor(WristPitch));
    EXPECT_EQ(glove.GetAngle(WristRoll), -45.0f);
    auto &pad = dynamic_cast<GameController &>(*device.FindController("GameController"));
    EXPECT_TRUE(pad.HasAxis(GameController::AxisRZ) && !pad.HasAxis(GameController::AxisY));
    EXPECT_EQ(pad.GetNumSliders() * 100 + pad.GetNumPOVHats() * 10 + pad.GetNumButtons(), 100u + 20u + 12u);
    EXPECT_TRUE(pad.ButtonDown(11) && pad.IsPOVHatCentered(0));
    EXPECT_EQ(pad.GetPOVHatPosition(1), 90.0f);
    pad.SetAxisProperties(GameController::AxisX, 0.5f, 1.0f);
    device.SampleDevice();
    EXPECT_EQ(pad.GetAxisPosition(GameController::AxisX), -0.5f) << "drawn out behind the dead zone";
    EXPECT_EQ(mouse.GetDeltaWheel(), 0);
    EXPECT_TRUE(pad.ButtonPressed(11) && !pad.ButtonDown(11));
}

TEST(Recorder, WritesWhatWasPlayed)
{
    ScratchDirectory const directory;
    string const file = directory / "recorded.txt";
    TestKernel kernel;
    PlayedDevice device({"r.txt", std::make_shared<Recording const>(Parse(s_szAllKinds)), 1, false});
    {
        Recorder const recorder(file, {&device}, Recorder::eStart::e_nextFrame);
        device.SampleAt(0);
        kernel.RunFrame(0.25);
        device.SampleAt(0.25);
        kernel.RunFrame(0.25);
    }
    EXPECT_EQ(0u, kernel.GetNumFrameObservers());
    EXPECT_EQ(ReadFile(file), "quillmarsh-recording 1\n"
                              "description Recorded from Keyboard, Mouse, OrientationTracker, PositionTracker, Glove, "
                              "GameController\n"
                              "controller keyboard keys\n"
                              "controller mouse move wheel position inside buttons\n"
                              "controller orientation-tracker quaternion\n"
                              "controller position-tracker position\n"
                              "controller glove left WristRoll IndexJointInner\n"
                              "controller game-controller X RZ slider0 hat0 hat1 buttons:12\n"
                              "0.000000 keyboard keys=A,L-Shift\n"
                              "0.000000 mouse move=3,-4 wheel=120 position=10,20 inside=1 buttons=0,5\n"
                              "0.000000 orientation-tracker quaternion=0,0.6,0,0.8\n"
                              "0.000000 position-tracker position=1,-2,0.035\n"
                              "0.000000 glove WristRoll=0.25 IndexJointInner=1\n"
                              "0.000000 game-controller X=-0.75 RZ=0.25 slider0=1 hat0=-1 hat1=90 "
                              "buttons=0,11\n"
                              "0.250000 end\n");
    EXPECT_EQ(LoadRecording(file).samples.size(), 6u);
    EXPECT_THROW(Recorder(file, {}, Recorder::eStart::e_now), RecordingException);
    EXPECT_THROW(Recorder(directory / "no/such/folder", {&device}, Recorder::eStart::e_now), RecordingException);
}

TEST(RecordingCommands, SayWhatTheyDoAndWhyTheyRefuse)
{
    ScratchDirectory const directory;
    string const file = directory / "recorded.txt", sameFile = directory / "./recorded.txt";
    string const play = "play '" QUILLMARSH_TEST_SOURCES "examples/recordings/gestures.txt'",
                 record = "record '" + file + "'";
    std::pair<string, string> const lines[] = {
        {play, "Playing "},
        {"play nothing", string("nothing: the file cannot be opened: ") + s_szNotFoundReason},
        {record, "The devices change in the next frame; enter wait first.\n"},
        {"wait", ""},
        {record, "Recording 1 controller to " + file + "\n"},
        {record, file + ": is being recorded, stop that first with record -stop\n"},
        {"record '" + sameFile + "' -overwrite", sameFile + ": is being recorded, stop that first with record -stop\n"},
        {"record -stop", "Recorded " + file},
        {record, file + ": the file already exists, replace it with -overwrite\n"},
        {record + " -overwrite -d=77", "record: -d=77: '77' is not the creation-id of a device (see 'help record')\n"},
        {"record -overwrite", "The name of the file is missing.\n"},
        {"play -exit", "The name of the file is missing.\n"},
        {play + " -once -speed=0", "play: -speed=0: '0' is not a speed from 0.01 to 100 (see 'help play')\n"},
        {record + " -overwrite", "Recording 1 controller to "},
        {"wait 2", ""},
        {"play -stop", "Stopped " QUILLMARSH_TEST_SOURCES "examples/recordings/gestures.txt\n"},
    };
    string script;
    for (auto const &[line, answer] : lines)
        script += line + '\n';
    string const out = RunHost({}, script).out;
    for (auto const &[line, answer] : lines)
        EXPECT_NE(out.find(line + '\n' + answer), string::npos) << line << '\n' << out;
    EXPECT_EQ(LoadRecording(file).samples.at(0).time, 0);
}

/// Returns the ids of the present gestures of the device's glove.
std::vector<unsigned int> FindGestures(PlayedDevice &device)
{
    static static_gestures::GestureAnalyzer const analyzer;
    auto &glove = dynamic_cast<Glove &>(*device.FindController("Glove"));
    std::vector<unsigned int> ids;
    for (static_gestures::Gesture const *gesture = analyzer.GetFirstActiveGesture(glove); gesture;
         gesture = analyzer.GetNextActiveGesture(glove))
        ids.push_back(gesture->GetID());
    return ids;
}

constexpr double s_frame = 1 / 60.0;

/// Returns the gestures in each frame.
std::vector<std::vector<unsigned int>> FindGestures(TestKernel &kernel, PlayedDevice &device, unsigned int begin,
                                                    unsigned int end)
{
    std::vector<std::vector<unsigned int>> gestures;
    for (unsigned int frame = begin; frame < end; ++frame)
    {
        // Times in a file are rounded.
        device.SampleAt(frame * s_frame + 1e-6);
        kernel.RunFrame(s_frame);
        gestures.push_back(FindGestures(device));
    }
    return gestures;
}

/// A hand that moves its pinky only from 0.25 to 0.5, recorded from the beginning, and again after it has shown its
/// range.
TEST(Recorder, HandMakesTheSameGesturesWhenItIsReplayed)
{
    string text = ReadFile(QUILLMARSH_TEST_SOURCES "examples/recordings/gestures.txt");
    for (std::size_t at = 0; (at = text.find("PinkyJointInner=", at)) != string::npos;)
    {
        at += std::strlen("PinkyJointInner=");
        std::size_t const length = text.find_first_of(" \n", at) - at;
        text.replace(at, length, std::to_string(0.25 + std::stod(text.substr(at, length)) / 4));
    }
    auto const recording = std::make_shared<Recording const>(ParseRecording(text, "pinky"));
    auto const numFrames = static_cast<unsigned int>(recording->length / s_frame);
    ScratchDirectory const directory;
    string const file = directory / "hand.txt";
    for (unsigned int const first : {0u, 60u})
    {
        TestKernel kernel;
        PlayedDevice hand({"pinky", recording, 1, false});
        FindGestures(kernel, hand, 0, first + 1);
        std::vector<std::vector<unsigned int>> recorded;
        {
            Recorder const recorder(file, {&hand}, Recorder::eStart::e_now);
            recorded = FindGestures(kernel, hand, first + 1, numFrames);
        }
        PlayedDevice replayed({"", std::make_shared<Recording const>(LoadRecording(file)), 1, false});
        replayed.SampleAt(0);
        EXPECT_EQ(FindGestures(kernel, replayed, 1, numFrames - first), recorded) << first;
    }
}

TEST(PlayedDevice, LoopsAndContinuesAfterAPause)
{
    TestKernel const kernel;
    auto const recording = std::make_shared<Recording const>(Parse("controller mouse\n"
                                                                   "0.5 mouse wheel=1 position=1,0\n"
                                                                   "1.5 mouse wheel=2 position=2,0\n"
                                                                   "2 end\n"));
    // Time, wheel, position.
    std::tuple<double, int, int> const looped[] = {{0, 0, 0},   {0.25, 1, 1},  {0.75, 2, 2}, {1, 0, 0},
                                                   {1.3, 1, 1}, {100.1, 2, 0}, {100.3, 1, 1}},
                                       once[] = {{0.25, 1, 1}, {100, 2, 2}, {200, 0, 2}};
    auto const play = [&](auto const &steps, bool isLooped)
    {
        PlayedDevice device({"r.txt", recording, 2, isLooped});
        auto const &mouse = dynamic_cast<Mouse &>(*device.FindController("Mouse"));
        for (auto const &[time, wheel, x] : steps)
        {
            device.SampleAt(time);
            EXPECT_EQ(std::pair(mouse.GetDeltaWheel(), mouse.GetPositionX()), std::pair(wheel, x)) << time;
        }
    };
    play(looped, true);
    play(once, false);
}

TEST(ShippedRecordings, AreReadAndShowWhatTheyDescribe)
{
    string const folder = QUILLMARSH_TEST_SOURCES "examples/recordings/";
    for (char const *const name : {"head.txt", "mouse_and_keys.txt"})
        EXPECT_NO_THROW(LoadRecording(folder + name)) << name;

    TestKernel kernel;
    auto const recording = std::make_shared<Recording const>(LoadRecording(folder + "gestures.txt"));
    PlayedDevice device({"gestures.txt", recording, 1, false});

    // Each gesture begins after the one before it, in the order of ids.
    std::vector<unsigned int> before;
    unsigned int next = 0;
    auto const numFrames = static_cast<unsigned int>(recording->length / s_frame);
    for (std::vector<unsigned int> const &gestures : FindGestures(kernel, device, 0, numFrames))
    {
        auto const has = [](std::vector<unsigned int> const &ids, unsigned int id)
        { return std::find(ids.begin(), ids.end(), id) != ids.end(); };
        while (has(gestures, next) && !has(before, next))
            ++next;
        before = gestures;
    }
    EXPECT_EQ(next, 21u);
}

} // namespace
} // namespace quillmarsh::tests
