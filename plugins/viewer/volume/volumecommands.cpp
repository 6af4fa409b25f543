#include "volumecommands.h"

#include "volumeroom.h"

#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/dataobjects/dataexception.h>

#include <algorithm>
#include <cmath>
#include <ostream>
#include <sstream>

namespace viewer::volumes
{

using namespace quillmarsh;
using sampled_data::DataException;

namespace
{

using Arguments = CommandArguments;

struct VolumeCommand
{
    char const *name;
    char const *shortDesc;
    std::span<CommandWord const> words;
    char const *plain;
    void (*run)(VolumeRoom &room, ostream &out, Arguments const &arguments);
};

/// Reads an argument as a number within bounds.
double ReadNumber(Arguments const &arguments, unsigned int index, char const *what, double low, double high)
{
    string const *const text = arguments.FindArgument(index);
    if (text == nullptr)
        throw DataException(string(what) + " is missing");
    double value = 0;
    if (!ToValue(*text, value) || !(value >= low && value <= high))
        throw DataException(string(what) + " is not within " + MakeString(low) + " and " + MakeString(high) + ": " +
                            *text);
    return value;
}

/// Returns the index of a name; throws with all names for another text.
unsigned int FindName(std::span<char const *const> names, string const &text, char const *what)
{
    string all;
    for (std::size_t i = 0; i < names.size(); ++i)
    {
        if (text == names[i])
            return static_cast<unsigned int>(i);
        all += (i == 0 ? "" : ", ") + string(names[i]);
    }
    throw DataException(string(what) + " is none of " + all + ": " + text);
}

bool HasArguments(Arguments const &arguments)
{
    return arguments.FindArgument(0) != nullptr;
}

/// Toggles a setting, or sets it to on or off.
void Switch(VolumeRoom &room, Arguments const &arguments, bool VolumeSettings::*setting)
{
    bool &value = room.GetScene().Settings().*setting;
    bool wanted = !value;
    if (string const *const text = arguments.FindArgument(0))
        ToValue(*text, wanted);
    value = wanted;
    room.GetScene().Changed();
}

void SetCutCommand(VolumeRoom &room, ostream &out, Arguments const &arguments)
{
    Scene &scene = room.RequireVolume();
    if (!HasArguments(arguments))
    {
        Cut const &cut = scene.GetCut();
        out << cut[0] << ' ' << cut[1] << ' ' << cut[2] << std::endl;
        return;
    }
    constexpr char const *names[] = {"the column", "the row", "the layer"};
    Cut cut;
    for (unsigned int i = 0; i < cut.size(); ++i)
        cut[i] = static_cast<unsigned int>(ReadNumber(arguments, i, names[i], 0, scene.GetSize(i) - 1));
    scene.SetCut(cut);
}

void StepCommand(VolumeRoom &room, ostream &, Arguments const &arguments)
{
    int const count = HasArguments(arguments) ? static_cast<int>(ReadNumber(arguments, 0, "the step", -1e5, 1e5)) : 1;
    ePane const pane = room.GetContext().active;
    if (pane == ePane::e_turned)
        room.RequireVolume().SetTurnZoom(room.GetScene().GetTurnZoom() * std::pow(1.15, -count));
    else
        StepPane(room.RequireVolume(), pane, count);
}

void NudgeCommand(VolumeRoom &room, ostream &, Arguments const &arguments)
{
    constexpr double degreesOfStep = 3;
    Scene &scene = room.RequireVolume();
    double const right = ReadNumber(arguments, 0, "the way to the right", -1e5, 1e5);
    double const down = ReadNumber(arguments, 1, "the way down", -1e5, 1e5);
    ePane const pane = room.GetContext().active;
    if (pane == ePane::e_turned)
    {
        scene.SetRotation(Turn(scene.GetRotation(), {-right * degreesOfStep, -down * degreesOfStep, 0}));
        return;
    }
    vec3 place = scene.GetCutPlace();
    if (pane == ePane::e_oblique)
    {
        Rotation const rotation = scene.GetObliqueRotation();
        place += rotation.right * static_cast<float>(right) + rotation.down * static_cast<float>(down);
    }
    else
    {
        std::array<std::size_t, 3> const axes = GetPaneAxes(pane);
        place.ToPtr()[axes[0]] += static_cast<float>(right);
        place.ToPtr()[axes[1]] += static_cast<float>(down);
    }
    scene.SetCutAt(place);
}

string DescribeSlab(VolumeSettings const &settings)
{
    return MakeString(settings.thickness) + ' ' + GetProjectionNames()[static_cast<std::size_t>(settings.projection)];
}

void SlabCommand(VolumeRoom &room, ostream &out, Arguments const &arguments)
{
    VolumeSettings &settings = room.GetScene().Settings();
    if (!HasArguments(arguments))
    {
        out << DescribeSlab(settings) << std::endl;
        return;
    }
    auto const thickness =
        static_cast<unsigned int>(ReadNumber(arguments, 0, "the thickness", 1, VolumeSettings::s_maxThickness));
    if (string const *const name = arguments.FindArgument(1))
        settings.projection = static_cast<eProjection>(FindName(GetProjectionNames(), *name, "the kind of slab"));
    settings.thickness = thickness;
    room.GetScene().Changed();
}

void SlabByCommand(VolumeRoom &room, ostream &, Arguments const &arguments)
{
    VolumeSettings &settings = room.GetScene().Settings();
    double const step = ReadNumber(arguments, 0, "the step", -4096, 4096);
    settings.thickness =
        static_cast<unsigned int>(std::clamp(settings.thickness + step, 1.0, double(VolumeSettings::s_maxThickness)));
    if (settings.projection == eProjection::e_slice && settings.thickness > 1)
        settings.projection = eProjection::e_maximum;
    room.GetScene().Changed();
}

void SlabKindCommand(VolumeRoom &room, ostream &, Arguments const &arguments)
{
    VolumeSettings &settings = room.GetScene().Settings();
    std::span<char const *const> const names = GetProjectionNames();
    auto const next = (static_cast<unsigned int>(settings.projection) + 1) % static_cast<unsigned int>(names.size());
    string const *const name = arguments.FindArgument(0);
    settings.projection = static_cast<eProjection>(name != nullptr ? FindName(names, *name, "the kind of slab") : next);
    // A slab of one slice is only that slice.
    if (settings.projection != eProjection::e_slice && settings.thickness == 1)
        settings.thickness = 5;
    room.GetScene().Changed();
}

void ObliqueCommand(VolumeRoom &room, ostream &out, Arguments const &arguments)
{
    RotationAngles &angles = room.GetScene().Settings().oblique;
    if (!HasArguments(arguments))
    {
        out << angles.yaw << ' ' << angles.pitch << std::endl;
        return;
    }
    double const yaw = ReadNumber(arguments, 0, "the yaw", -360, 360);
    angles.pitch = ReadNumber(arguments, 1, "the pitch", -90, 90);
    angles.yaw = yaw;
    room.GetScene().Changed();
}

void TurnCommand(VolumeRoom &room, ostream &out, Arguments const &arguments)
{
    Scene &scene = room.GetScene();
    if (!HasArguments(arguments))
    {
        string const line = MakeTurnLine(scene);
        out << line.substr(line.find(' ') + 1) << std::endl;
        return;
    }
    RotationAngles angles;
    angles.yaw = ReadNumber(arguments, 0, "the yaw", -360, 360);
    angles.pitch = ReadNumber(arguments, 1, "the pitch", -360, 360);
    if (arguments.FindArgument(2) != nullptr)
        angles.roll = ReadNumber(arguments, 2, "the roll", -360, 360);
    scene.SetRotation(MakeRotation(angles));
}

void TurnZoomCommand(VolumeRoom &room, ostream &out, Arguments const &arguments)
{
    if (HasArguments(arguments))
        room.GetScene().SetTurnZoom(ReadNumber(arguments, 0, "the zoom", 0.25, 8));
    else
        out << room.GetScene().GetTurnZoom() << std::endl;
}

void WindowCommand(VolumeRoom &room, ostream &out, Arguments const &arguments)
{
    Scene &scene = room.GetScene();
    DisplaySettings &tones = scene.Settings().tones;
    double const largest = scene.GetLargest();
    string const *const first = arguments.FindArgument(0);
    if (first == nullptr)
    {
        out << tones.low * largest << ' ' << tones.high * largest << std::endl;
        return;
    }
    if (*first == "auto")
    {
        room.RequireVolume().FitWindow();
        return;
    }
    double low = 0;
    double high = largest;
    if (*first != "all")
    {
        low = ReadNumber(arguments, 0, "the value for black", -1e30, 1e30);
        high = ReadNumber(arguments, 1, "the value for white", -1e30, 1e30);
        if (!(high > low))
            throw DataException("the value for white is not above that for black: " + *arguments.FindArgument(1));
    }
    tones.low = low / largest;
    tones.high = high / largest;
    scene.Changed();
}

void PaletteCommand(VolumeRoom &room, ostream &, Arguments const &arguments)
{
    ePalette &palette = room.GetScene().Settings().tones.palette;
    std::span<char const *const> const names = GetPaletteNames();
    string const *const name = arguments.FindArgument(0);
    auto const next = (static_cast<unsigned int>(palette) + 1) % static_cast<unsigned int>(names.size());
    palette = static_cast<ePalette>(name != nullptr ? FindName(names, *name, "the palette") : next);
    room.GetScene().Changed();
}

void ChannelCommand(VolumeRoom &room, ostream &, Arguments const &arguments)
{
    Scene &scene = room.RequireVolume();
    eSampleFormat const format = scene.GetVolume()->GetSampleFormat();
    auto const count = static_cast<int>(GetChannels(format).size());
    int &channel = scene.Settings().tones.channel;
    string const *const name = arguments.FindArgument(0);
    if (name == nullptr)
        channel = channel + 1 < count ? channel + 1 : -1;
    else if (*name == "all")
        channel = -1;
    else if (int const found = FindChannel(format, *name); found >= 0)
        channel = found;
    else
        throw DataException("the volume has no channel " + *name);
    scene.Changed();
}

void ZoomCommand(VolumeRoom &room, ostream &out, Arguments const &arguments)
{
    Scene &scene = room.RequireVolume();
    if (!HasArguments(arguments))
        out << scene.GetZoom() << std::endl;
    else if (*arguments.FindArgument(0) == "fit")
        scene.Fit();
    else
        scene.SetZoom(ReadNumber(arguments, 0, "the zoom", Scene::s_minZoom, Scene::s_maxZoom));
}

void ZoomByCommand(VolumeRoom &room, ostream &, Arguments const &arguments)
{
    Scene &scene = room.RequireVolume();
    double const factor = ReadNumber(arguments, 0, "the factor", 0.01, 100);
    if (room.GetContext().active == ePane::e_turned)
        scene.SetTurnZoom(scene.GetTurnZoom() * factor);
    else
        scene.SetZoom(scene.GetZoom() * factor);
}

void CenterCommand(VolumeRoom &room, ostream &out, Arguments const &arguments)
{
    Scene &scene = room.RequireVolume();
    vec3 focus = scene.GetFocus();
    if (!HasArguments(arguments))
    {
        out << focus.x << ' ' << focus.y << ' ' << focus.z << std::endl;
        return;
    }
    constexpr char const *names[] = {"the column", "the row", "the layer"};
    for (unsigned int i = 0; i < 3; ++i)
        focus.ToPtr()[i] = static_cast<float>(ReadNumber(arguments, i, names[i], 0, scene.GetSize(i)));
    scene.SetFocus(focus);
}

/// Makes a pane the one that keys act on, and shows it.
void PaneCommand(VolumeRoom &room, ostream &, Arguments const &arguments)
{
    PaneContext &context = room.GetContext();
    bool &showsTurned = room.GetScene().Settings().showsTurned;
    if (string const *const name = arguments.FindArgument(0))
    {
        context.active = static_cast<ePane>(FindName(GetPaneNames(), *name, "the pane"));
        if (context.active == ePane::e_oblique || context.active == ePane::e_turned)
            showsTurned = context.active == ePane::e_turned;
    }
    else
    {
        ePane const fourth = showsTurned ? ePane::e_turned : ePane::e_oblique;
        bool const isFourth = context.active == ePane::e_oblique || context.active == ePane::e_turned;
        context.active = isFourth                            ? ePane::e_layer
                         : context.active == ePane::e_column ? fourth
                                                             : static_cast<ePane>(static_cast<int>(context.active) + 1);
    }
    if (context.whole)
        context.whole = context.active;
    room.Arrange();
}

void MaximizeCommand(VolumeRoom &room, ostream &, Arguments const &arguments)
{
    PaneContext &context = room.GetContext();
    bool isWhole = !context.whole.has_value();
    if (string const *const text = arguments.FindArgument(0))
        ToValue(*text, isWhole);
    context.whole = isWhole ? std::optional(context.active) : std::nullopt;
    room.Arrange();
}

void FourthCommand(VolumeRoom &room, ostream &, Arguments const &arguments)
{
    constexpr char const *names[] = {"oblique", "volume"};
    PaneContext &context = room.GetContext();
    bool &showsTurned = room.GetScene().Settings().showsTurned;
    string const *const name = arguments.FindArgument(0);
    showsTurned = name != nullptr ? FindName(names, *name, "the fourth pane") == 1 : !showsTurned;
    auto const follow = [&](ePane pane)
    {
        bool const isFourth = pane == ePane::e_oblique || pane == ePane::e_turned;
        return isFourth ? (showsTurned ? ePane::e_turned : ePane::e_oblique) : pane;
    };
    context.active = follow(context.active);
    if (context.whole)
        context.whole = follow(*context.whole);
    room.Arrange();
}

void PanesCommand(VolumeRoom &room, ostream &out, Arguments const &arguments)
{
    vec2 fractions = room.GetFractions();
    if (!HasArguments(arguments))
    {
        out << fractions.x << ' ' << fractions.y << std::endl;
        return;
    }
    fractions.x = static_cast<float>(ReadNumber(arguments, 0, "the part of the width", 0, 1));
    fractions.y = static_cast<float>(ReadNumber(arguments, 1, "the part of the height", 0, 1));
    room.SetFractions(fractions);
}

void DensityCommand(VolumeRoom &room, ostream &out, Arguments const &arguments)
{
    double &density = room.GetScene().Settings().density;
    if (!HasArguments(arguments))
    {
        out << density << std::endl;
        return;
    }
    density = ReadNumber(arguments, 0, "the density", 0.05, 20);
    room.GetScene().Changed();
}

using Word = CommandWord;
using command_values::s_boolean;
using command_values::s_real;
using command_values::s_uinteger;

constexpr Word s_cutWords[] = {Word::Argument("0) X", "column\n", s_uinteger),
                               Word::Argument("1) Y", "row\n", s_uinteger),
                               Word::Argument("2) Z", "layer\n", s_uinteger)};
constexpr Word s_stepWords[] = {Word::Argument("0) N", "number of slices, negative ones back\n", s_real)};
constexpr Word s_nudgeWords[] = {Word::Argument("0) X", "samples to the right\n", s_real),
                                 Word::Argument("1) Y", "samples downwards\n", s_real)};
constexpr Word s_slabWords[] = {Word::Argument("0) N", "number of slices\n", s_uinteger),
                                Word::Argument("1) kind", "slice, maximum or mean\n")};
constexpr Word s_slabByWords[] = {Word::Argument("0) N", "slices more, or less\n", s_real)};
constexpr Word s_slabKindWords[] = {Word::Argument("0) kind", "slice, maximum or mean\n")};
constexpr Word s_obliqueWords[] = {
    Word::Argument("0) yaw", "degrees; with 90, layers go to the right\n", s_real),
    Word::Argument("1) pitch", "degrees from -90 to 90; with 90, layers go down\n", s_real)};
constexpr Word s_turnWords[] = {Word::Argument("0) yaw", "degrees\n", s_real),
                                Word::Argument("1) pitch", "degrees\n", s_real),
                                Word::Argument("2) roll", "degrees, with the clock\n", s_real)};
constexpr Word s_turnZoomWords[] = {Word::Argument("0) zoom", "from 0.25 to 8; 1 fits\n", s_real)};
constexpr Word s_windowWords[] = {
    Word::Argument("0) low", "value that becomes black, in the numbers of the samples; or auto, or all\n"),
    Word::Argument("1) high", "value that becomes white\n", s_real)};
constexpr Word s_paletteWords[] = {Word::Argument("0) name", "none, heat, rainbow, spectral or cyclic\n")};
constexpr Word s_channelWords[] = {Word::Argument("0) name", "as red or luminance, or all\n")};
constexpr Word s_zoomWords[] = {Word::Argument("0) zoom", "pixels for a sample, or fit\n")};
constexpr Word s_zoomByWords[] = {Word::Argument("0) factor", "factor\n", s_real)};
constexpr Word s_centerWords[] = {Word::Argument("0) X", "column\n", s_real), Word::Argument("1) Y", "row\n", s_real),
                                  Word::Argument("2) Z", "layer\n", s_real)};
constexpr Word s_paneWords[] = {Word::Argument("0) name", "layer, row, column, oblique or volume\n")};
constexpr Word s_fourthWords[] = {Word::Argument("0) name", "oblique or volume\n")};
constexpr Word s_panesWords[] = {Word::Argument("0) X", "part of the width, from 0 to 1\n", s_real),
                                 Word::Argument("1) Y", "part of the height\n", s_real)};
constexpr Word s_densityWords[] = {Word::Argument("0) density", "from 0.05 to 20; 1 is medium\n", s_real)};
constexpr Word s_switchWords[] = {Word::Argument("0) on-or-off", "the new state\n", s_boolean)};

template<bool VolumeSettings::*setting>
void SwitchCommand(VolumeRoom &room, ostream &, Arguments const &arguments)
{
    Switch(room, arguments, setting);
}

constexpr VolumeCommand s_commands[] = {
    {"cut", "Move the cross hair of a volume", s_cutWords, "print it", &SetCutCommand},
    {"step", "Step through the slices of the active pane", s_stepWords, "go to the next slice", &StepCommand},
    {"nudge", "Move the cross hair in the active pane, or turn the volume", s_nudgeWords, "", &NudgeCommand},
    {"slab", "Set how many slices are shown as one, and how", s_slabWords, "print it", &SlabCommand},
    {"slab-by", "Make the slab thicker or thinner", s_slabByWords, "", &SlabByCommand},
    {"slab-kind", "Set how slices are shown as one", s_slabKindWords, "take the next kind", &SlabKindCommand},
    {"oblique", "Turn the oblique slice", s_obliqueWords, "print its angles", &ObliqueCommand},
    {"turn", "Turn the volume", s_turnWords, "print its angles", &TurnCommand},
    {"turn-zoom", "Zoom the turned volume", s_turnZoomWords, "print it", &TurnZoomCommand},
    {"volume-window", "Set which values of a volume become black and white", s_windowWords, "print them",
     &WindowCommand},
    {"volume-palette", "Set the false colours of a volume", s_paletteWords, "take the next palette", &PaletteCommand},
    {"volume-channel", "Show one channel of a volume, or all", s_channelWords, "take the next channel",
     &ChannelCommand},
    {"volume-zoom", "Zoom the slices", s_zoomWords, "print the zoom", &ZoomCommand},
    {"volume-zoom-by", "Zoom the active pane by a factor", s_zoomByWords, "", &ZoomByCommand},
    {"volume-center", "Set the place in the middle of the panes, in samples", s_centerWords, "print it",
     &CenterCommand},
    {"volume-smooth", "Draw enlarged slices smooth, or with square samples", s_switchWords, "take the other state",
     &SwitchCommand<&VolumeSettings::isSmooth>},
    {"cross", "Show or hide the cross hair", s_switchWords, "take the other state",
     &SwitchCommand<&VolumeSettings::showsCross>},
    {"pane", "Choose the pane that the keys act on", s_paneWords, "take the next one", &PaneCommand},
    {"maximize", "Let the active pane fill the view, or show all panes", s_switchWords, "take the other state",
     &MaximizeCommand},
    {"fourth", "Show the oblique slice or the turned volume", s_fourthWords, "take the other one", &FourthCommand},
    {"panes", "Set where the borders of the panes stand", s_panesWords, "print it", &PanesCommand},
    {"density", "Set how opaque the turned volume is", s_densityWords, "print it", &DensityCommand},
    {"follow-controller", "Turn the volume with a game controller", s_switchWords, "take the other state",
     &SwitchCommand<&VolumeSettings::followsController>},
    {"follow-tracker", "Turn the volume with an orientation tracker", s_switchWords, "take the other state",
     &SwitchCommand<&VolumeSettings::followsTracker>},
};

} // namespace

void AddVolumeCommands(CommandSet &commands, VolumeRoom &room)
{
    for (VolumeCommand const &command : s_commands)
    {
        commands.Add(command.name, command.shortDesc, command.words, command.plain,
                     [&room, &command](ostream &out, Arguments const &arguments)
                     { command.run(room, out, arguments); });
    }
}

void WriteVolumeState(ostream &out, VolumeSettings const &settings, vec2 const &fractions)
{
    auto const onOff = [](bool on) { return on ? "on" : "off"; };
    out << "slab " << DescribeSlab(settings) << '\n'
        << "oblique " << settings.oblique.yaw << ' ' << settings.oblique.pitch << '\n'
        << "volume-palette " << GetPaletteNames()[static_cast<std::size_t>(settings.tones.palette)] << '\n'
        << "volume-smooth " << onOff(settings.isSmooth) << '\n'
        << "cross " << onOff(settings.showsCross) << '\n'
        << "fourth " << (settings.showsTurned ? "volume" : "oblique") << '\n'
        << "panes " << fractions.x << ' ' << fractions.y << '\n'
        << "density " << settings.density << '\n'
        << "follow-controller " << onOff(settings.followsController) << '\n'
        << "follow-tracker " << onOff(settings.followsTracker) << '\n';
}

} // namespace viewer::volumes
