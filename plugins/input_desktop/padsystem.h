// The system's game controllers. The build picks the implementation: linux/ or win32/.
#ifndef QUILLMARSH_PLUGINS_INPUT_DESKTOP_PADSYSTEM_H
#define QUILLMARSH_PLUGINS_INPUT_DESKTOP_PADSYSTEM_H

#include <quillmarsh/devices/gamecontroller.h>

#include <vector>

namespace input_desktop
{

using quillmarsh::string;

/// The features and the origin of a game controller. A text is empty when it is not known.
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

/// The readings of a game controller; the initial values are those at rest.
struct PadReading
{
    float axes[quillmarsh::GameController::s_numAxes] = {};
    float sliders[quillmarsh::GameController::s_maxSliders] = {};
    /// Degrees from up, clockwise; -1 when centred.
    float hats[quillmarsh::GameController::s_maxPOVHats] = {-1, -1, -1, -1};
    /// A bit for each button.
    unsigned int buttons = 0;
};

/// An open game controller.
class Pad : quillmarsh::NoCopy
{
public:
    virtual ~Pad() = default;

    PadDesc const &GetDesc() const { return desc_; }
    /// Reads the controller. False, with `reading` unchanged, when it has been unplugged. Any thread. Allocates
    /// nothing.
    virtual bool Read(PadReading &reading) = 0;

protected:
    PadDesc desc_;
};

/// The system's game controllers. Each has an id while it is plugged in. Frame thread only.
class PadSystem : quillmarsh::NoCopy
{
public:
    virtual ~PadSystem() = default;

    /// Lists the ids of the connected controllers, in ascending order.
    virtual void ListPads(std::vector<unsigned int> &ids) = 0;
    virtual string GetPadName(unsigned int id) = 0;
    /// Opens a controller. Null when it has been unplugged or cannot be opened.
    virtual quillmarsh::AutoPtr<Pad> OpenPad(unsigned int id) = 0;
};

/// Starts the system's support for game controllers. Throws a HIDDriverException when it cannot be used.
quillmarsh::AutoPtr<PadSystem> StartPadSystem();

} // namespace input_desktop

#endif
