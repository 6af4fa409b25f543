// Pictures of the gallery after mouse and keys have been at work in it.
#include "tests/support/host_process.h"
#include "tests/support/leaks.h"
#include "tests/support/pictures.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

namespace quillmarsh::tests
{
namespace
{

constexpr char s_szPictures[] = R"(
var gallery.section 'Check boxes'
robot wait 'Label "Check boxes"'
robot click 'RadioButton "Lanczos"'
robot key ArrowUp
robot click 'Grid / CheckBox "Show the grid"[4]'
robot click 'Grid / CheckBox "Show the grid"[0]'
robot key Space
robot click 'Grid / CheckBox "Show the grid"[1]'
robot key Tab
robot wait -frames=2
screenshot -ow
wait 4
var look.theme light
var look.scale 1.5
var gallery.section Lists
robot wait 'Label "Lists"'
robot click 'Page/Stack/Stack[1]/ListBox' -y=18
robot hold Shift
robot click 'Page/Stack/Stack[1]/ListBox' -y=100
robot release Shift
robot hold Control
robot click 'Page/Stack/Stack[1]/ListBox' -y=64
robot release Control
robot wait -frames=2
screenshot -ow
wait 4
var look.theme dark
var look.scale 2
var gallery.section Menus
robot wait 'Label "Menus"'
robot click 'TextButton "Menu"'
robot key ArrowDown
robot key ArrowDown
robot key ArrowRight
robot wait -frames=2
screenshot -ow
wait 4
)";

TEST(GalleryPictures, ShowWhatMouseAndKeysDid)
{
    NoLeakCheckInChildren const noLeakCheck;
    ScratchDirectory const directory;
    std::filesystem::path const before = std::filesystem::current_path();
    std::filesystem::current_path(directory.GetPath());
    HostResult const result = RunHost({"--headless", "900x480", "--frame-rate", "240", "--video", "video_opengl",
                                       "--plugin", "gallery", "--set", "look.scale=1", "--strict"},
                                      s_szPictures);
    std::filesystem::current_path(before);
    EXPECT_EQ(0, result.status) << result.out << result.err;
    unsigned int number = 0;
    for (char const *const name : {"gallery_check_boxes", "gallery_lists", "gallery_menus"})
    {
        string const file = directory / ("screenshot.000" + std::to_string(number++) + ".color.png");
        AutoPtr<ImageBase> const image = pictures::Load(file);
        ASSERT_NE(image, nullptr) << result.out << result.err;
        EXPECT_TRUE(MatchesPicture(*image, name));
    }
}

} // namespace
} // namespace quillmarsh::tests
