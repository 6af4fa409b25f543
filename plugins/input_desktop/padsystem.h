// Game controllers, as the system has them. The build picks the side: linux/ or win32/.
#ifndef QUILLMARSH_PLUGINS_INPUT_DESKTOP_PADSYSTEM_H
#define QUILLMARSH_PLUGINS_INPUT_DESKTOP_PADSYSTEM_H

#include <quillmarsh/devices/gamecontroller.h>

#include <vector>

namespace input_desktop
{

using quillmarsh::string;

/// What a game controller has, and where it comes from. Texts that are empty are not known.
struct PadDesc
{
    string name;
    string vendor;
    string type;
    string product;
    string port;
    string mapping;
    bool hasAxis[quillmarsh::GameController::s_numAxes] = {};
    unsigned int numSliders = 0;
    unsigned int numHats = 0;
    unsigned int numButtons = 0;
};

/// What a game controller shows; as it stands here it is at rest.
struct PadReading
{
    float axes[quillmarsh::GameController::s_numAxes] = {};
    float sliders[quillmarsh::GameController::s_maxSliders] = {};
    /// In degrees from up, clockwise.
    float hats[quillmarsh::GameController::s_maxPOVHats] = {-1, -1, -1, -1};
    /// A bit for each button.
    unsigned int buttons = 0;
};

/// A game controller that is open.
class Pad : quillmarsh::NoCopy
{
public:
    virtual ~Pad() = default;

    PadDesc const &GetDesc() const { return desc_; }
    /// Reads it; false, with the reading as it was, when it has been unplugged. Any thread. Allocates nothing.
    virtual bool Read(PadReading &reading) = 0;

protected:
    PadDesc desc_;
};

/// The system's game controllers. Each has a number for as long as it is plugged in. Frame thread only.
class PadSystem : quillmarsh::NoCopy
{
public:
    virtual ~PadSystem() = default;

    /// Lists those that are plugged in, in ascending order.
    virtual void ListPads(std::vector<unsigned int> &ids) = 0;
    virtual string GetPadName(unsigned int id) = 0;
    /// Null when it has been unplugged, or cannot be opened.
    virtual quillmarsh::AutoPtr<Pad> OpenPad(unsigned int id) = 0;
};

/// Starts the side that the driver was built with. Throws HIDDriverException when nothing can be had at all.
quillmarsh::AutoPtr<PadSystem> StartPadSystem();

} // namespace input_desktop

#endif
