#include "imagecommands.h"

#include "imagewords.h"
#include "numbers.h"

#include <quillmarsh/dataobjects/dataexception.h>

#include <cmath>
#include <ostream>

namespace viewer
{

using namespace quillmarsh;
using sampled_data::DataException;

namespace
{

// Place.

void PrintZoom(ImageState const &state, ostream &out)
{
    Placement const &placement = state.place.Get();
    out << "zoom " << FormatNumber(placement.zoom) << (state.place.IsFit() ? " (fit)" : "") << " about ("
        << FormatNumber(placement.x) << ", " << FormatNumber(placement.y) << ")\n";
}

void Zoom(ImageState &state, ostream &out, CommandArguments const &arguments)
{
    state.RequireImage();
    ImagePlace &place = state.place;
    string const *const factor = arguments.FindArgument(0);
    if (factor == nullptr)
        return PrintZoom(state, out);
    double x = place.Get().x, y = place.Get().y;
    arguments.ReadAssignment("x", x);
    arguments.ReadAssignment("y", y);
    if (*factor == "fit")
        place.Fit();
    else if (*factor == "in" || *factor == "out")
        place.Step(*factor == "in", x, y);
    else
        place.Zoom(RequireRange("the zoom", *factor, {place.GetMinZoom(), place.GetMaxZoom()}), x, y);
    state.ChangePlace();
}

/// Reads two numbers that are positions or distances.
std::pair<double, double> ReadPair(CommandArguments const &arguments, char const *what)
{
    double const first = RequireNumber(arguments, what);
    string const *const text = arguments.FindArgument(1);
    double second = 0;
    if (text == nullptr || !ToValue(*text, second))
        throw DataException(string(what) + " needs two numbers");
    return {first, second};
}

void Pan(ImageState &state, ostream &, CommandArguments const &arguments)
{
    state.RequireImage();
    auto const [right, down] = ReadPair(arguments, "the distance");
    state.place.Pan(right, down);
    state.ChangePlace();
}

void Center(ImageState &state, ostream &, CommandArguments const &arguments)
{
    state.RequireImage();
    auto const [x, y] = ReadPair(arguments, "the position");
    state.place.Center(x, y);
    state.ChangePlace();
}

void Level(ImageState &state, ostream &out, CommandArguments const &arguments)
{
    state.RequireImage();
    unsigned int const numLevels = state.GetLevels()->GetNumLevels();
    int const last = static_cast<int>(numLevels) - 1;
    string const *const text = arguments.FindArgument(0);
    if (text == nullptr)
        out << (state.level < 0 ? "auto" : MakeString(state.level)) << " of " << numLevels << " levels\n";
    else if (*text == "auto")
        state.level = -1;
    else if (*text == "finer")
        state.level = std::max(state.level - 1, -1);
    else if (*text == "coarser")
        state.level = std::min(state.level + 1, last);
    else
        state.level = static_cast<int>(RequireRange("the level", *text, {0, static_cast<double>(last)}));
    state.Change();
}

// Colours.

void Channel(ImageState &state, ostream &out, CommandArguments const &arguments)
{
    state.RequireImage();
    std::span<viewer::Channel const> const channels = GetChannels(state.GetFormat());
    std::vector<char const *> names = {"all"};
    for (viewer::Channel const &channel : channels)
        names.push_back(channel.name);
    string const *const text = arguments.FindArgument(0);
    if (text == nullptr)
    {
        for (std::size_t i = 0; i < names.size(); ++i)
            out << names[i] << (state.display.channel + 1 == static_cast<int>(i) ? " (shown)\n" : "\n");
        return;
    }
    if (*text == "next")
    {
        // A single channel is the same as all.
        int const count = static_cast<int>(channels.size());
        state.display.channel = count < 2 || state.display.channel + 1 == count ? -1 : state.display.channel + 1;
    }
    else
        state.display.channel = static_cast<int>(RequireName("the channel", *text, names)) - 1;
    state.Change();
}

/// Sets a number by an argument, or by adding to it.
void SetNumber(ImageState &state, ostream &out, CommandArguments const &arguments, char const *what, double &number,
               ValueRange const &range)
{
    double step = 0;
    if (string const *const text = arguments.FindArgument(0))
        number = RequireRange(what, *text, range);
    else if (arguments.ReadAssignment("by", step))
        number = RequireRange(what, std::round((number + step) * 1e6) / 1e6, range);
    else
        out << FormatNumber(number) << '\n';
    state.Change();
}

void Exposure(ImageState &state, ostream &out, CommandArguments const &arguments)
{
    SetNumber(state, out, arguments, "the exposure", state.display.exposure, s_exposureRange);
}

void Gamma(ImageState &state, ostream &out, CommandArguments const &arguments)
{
    SetNumber(state, out, arguments, "gamma", state.display.gamma, s_gammaRange);
}

void Window(ImageState &state, ostream &out, CommandArguments const &arguments)
{
    DisplaySettings &display = state.display;
    string const *const low = arguments.FindArgument(0);
    string const *const high = arguments.FindArgument(1);
    if (low == nullptr)
    {
        out << FormatNumber(display.low) << " to " << FormatNumber(display.high) << '\n';
        return;
    }
    if (*low == "auto")
    {
        state.RequireImage();
        state.SetWindowByFigures();
        return;
    }
    if (high == nullptr)
        throw DataException("the window needs two numbers, or auto");
    double const newLow = RequireRange("the window", *low, s_windowRange);
    display.high = RequireRange("the window", *high, s_windowRange);
    display.low = newLow;
    state.Change();
}

void Palette(ImageState &state, ostream &out, CommandArguments const &arguments)
{
    std::span<char const *const> const names = GetPaletteNames();
    auto const current = static_cast<std::size_t>(state.display.palette);
    string const *const text = arguments.FindArgument(0);
    if (text == nullptr)
    {
        out << names[current] << '\n';
        return;
    }
    std::size_t const chosen =
        *text == "next" ? (current + 1) % names.size() : RequireName("the palette", *text, names);
    state.display.palette = static_cast<ePalette>(chosen);
    state.Change();
}

void Alpha(ImageState &state, ostream &, CommandArguments const &arguments)
{
    state.display.showAlpha = ReadSwitch(arguments, 0).value_or(!state.display.showAlpha);
    state.Change();
}

void Reset(ImageState &state, ostream &, CommandArguments const &)
{
    state.display = {};
    state.level = -1;
    state.Change();
}

// Figures.

void Histogram(ImageState &state, ostream &, CommandArguments const &arguments)
{
    HistogramSettings &settings = state.histogram;
    bool const hasAssignment = arguments.ReadAssignment("log", settings.isLogarithmic);
    string const *const of = arguments.FindAssignment("of");
    static constexpr char const *s_parts[] = {"image", "view"};
    if (of != nullptr)
        settings.isOfView = RequireName("what it is of", *of, s_parts) == 1;
    std::optional<bool> const isShown = ReadSwitch(arguments, 0);
    if (isShown)
        settings.isShown = *isShown;
    else if (!hasAssignment && of == nullptr)
        settings.isShown = !settings.isShown;
    state.ChangeMarks();
}

void PrintFigures(ImageState const &state, ostream &out)
{
    Figures const *const figures = state.GetFigures();
    if (figures == nullptr)
    {
        out << "the figures are computed now: ask again\n";
        return;
    }
    for (ChannelFigures const &channel : figures->channels)
    {
        out << channel.name << ": minimum " << FormatNumber(channel.minimum) << ", maximum "
            << FormatNumber(channel.maximum) << ", mean " << FormatNumber(channel.mean) << ", deviation "
            << FormatNumber(channel.deviation) << '\n';
    }
}

void PrintFiguresCommand(ImageState &state, ostream &out, CommandArguments const &)
{
    state.RequireImage();
    state.RequestFigures();
    PrintFigures(state, out);
}

void Measure(ImageState &state, ostream &out, CommandArguments const &arguments)
{
    if (string const *const tool = arguments.FindAssignment("tool"))
    {
        std::span<char const *const> const names = GetImageToolNames();
        auto const current = static_cast<std::size_t>(state.tool);
        state.tool = static_cast<eImageTool>(*tool == "next" ? (current + 1) % names.size()
                                                             : RequireName("the tool", *tool, names));
        state.ChangeMarks();
        return;
    }
    string const *const first = arguments.FindArgument(0);
    if (first != nullptr && *first == "off")
        return state.Measure(std::nullopt);
    ImageBase const &image = state.RequireImage();
    if (first == nullptr)
    {
        if (!state.GetMeasurement())
            throw DataException("nothing is measured: give x0 y0 x1 y1");
        out << state.GetMeasurement()->Describe(image) << '\n';
        return;
    }
    Measurement measurement;
    measurement.isLine = arguments.HasOption("line");
    double *const numbers[] = {&measurement.x0, &measurement.y0, &measurement.x1, &measurement.y1};
    for (unsigned int i = 0; i < 4; ++i)
    {
        string const *const text = arguments.FindArgument(i);
        if (text == nullptr || !ToValue(*text, *numbers[i]))
            throw DataException("x0, y0, x1 and y1 must be numbers, in samples");
    }
    SampleArea const area = measurement.GetArea(image);
    if (area.width == 0)
        throw DataException("nothing of the image is there: it has " + FormatNumber(image.GetNumColumns()) + " × " +
                            FormatNumber(image.GetNumRows()) + " samples");
    state.Measure(measurement);
}

// Comparison.

DocumentPtr FindOther(ImageState &state, string const &name)
{
    Documents &documents = state.GetWorkspace().GetDocuments();
    for (DocumentPtr const &document : documents.GetAll())
    {
        if (document->GetFileName().empty() && document->GetTitle() == name)
            return document;
    }
    DocumentPtr const current = documents.GetCurrent();
    documents.Open(state.GetWorkspace().MakeFullName(name));
    DocumentPtr other = documents.GetCurrent();
    documents.SetCurrent(current);
    return other;
}

void RequireComparison(ImageState const &state)
{
    if (!state.comparison.IsOn())
        throw DataException("there is nothing to compare with: give a file by 'compare'");
}

void Compare(ImageState &state, ostream &out, CommandArguments const &arguments)
{
    Comparison &comparison = state.comparison;
    string const *const file = arguments.FindArgument(0);
    string const *const mode = arguments.FindAssignment("mode");
    string const *const divider = arguments.FindAssignment("divider");
    ComparisonSettings settings = comparison.settings;
    if (mode != nullptr)
        settings.mode = static_cast<eComparison>(RequireName("the mode", *mode, GetComparisonNames()));
    if (divider != nullptr)
        settings.divider = RequireRange("the divider", *divider, s_dividerRange);
    if (file != nullptr && *file == "off")
        comparison.End();
    else if (file != nullptr)
    {
        state.RequireImage();
        comparison.Begin(FindOther(state, *file));
    }
    else if (mode == nullptr && divider == nullptr)
    {
        RequireComparison(state);
        out << GetComparisonNames()[static_cast<std::size_t>(settings.mode)] << " with "
            << comparison.GetDocument()->GetTitle() << '\n';
    }
    comparison.settings = settings;
    comparison.showsOther = false;
    state.Change();
}

void Blink(ImageState &state, ostream &, CommandArguments const &)
{
    RequireComparison(state);
    Comparison &comparison = state.comparison;
    comparison.showsOther = comparison.settings.mode != eComparison::e_blink || !comparison.showsOther;
    comparison.settings.mode = eComparison::e_blink;
    state.Change();
}

void Difference(ImageState &state, ostream &out, CommandArguments const &arguments)
{
    RequireComparison(state);
    Comparison &comparison = state.comparison;
    ComparisonSettings &settings = comparison.settings;
    string const *const kind = arguments.FindArgument(0);
    string const *const scale = arguments.FindAssignment("scale");
    eDifference const newKind =
        kind != nullptr ? static_cast<eDifference>(RequireName("the difference", *kind, GetDifferenceNames()))
                        : settings.difference;
    double const newScale = scale != nullptr ? RequireRange("the scale", *scale, s_scaleRange) : settings.scale;
    bool const isToggled = kind == nullptr && scale == nullptr && settings.mode == eComparison::e_difference;
    settings.mode = isToggled ? eComparison::e_side : eComparison::e_difference;
    settings.difference = newKind;
    settings.scale = newScale;
    if (ChannelFigures const *const figures = comparison.GetFigures())
    {
        out << "mean " << FormatNumber(figures->mean) << ", greatest " << FormatNumber(figures->maximum)
            << ", deviation " << FormatNumber(figures->deviation) << '\n';
    }
    state.Change();
}

// Tables.

void OfferNames(CompletionOffers &offers, std::span<char const *const> names)
{
    for (char const *const name : names)
        offers.Add(name);
}

template<auto getNames>
void Offer(CommandArguments const &, CompletionOffers &offers)
{
    OfferNames(offers, getNames());
}

std::span<char const *const> GetZoomNames()
{
    static constexpr char const *s_names[] = {"in", "out", "fit", "1"};
    return s_names;
}

std::span<char const *const> GetChannelNames()
{
    static constexpr char const *s_names[] = {"all", "next", "red", "green", "blue", "luminance", "alpha"};
    return s_names;
}

std::span<char const *const> GetLevelNames()
{
    static constexpr char const *s_names[] = {"auto", "finer", "coarser"};
    return s_names;
}

// All texts are accepted: the commands themselves give the reason against one.
constexpr CommandValue s_zoom{"a zoom", nullptr, &Offer<&GetZoomNames>};
constexpr CommandValue s_channel{"a channel", nullptr, &Offer<&GetChannelNames>};
constexpr CommandValue s_level{"a level", nullptr, &Offer<&GetLevelNames>};
constexpr CommandValue s_palette{"a palette", nullptr, &Offer<&GetPaletteNames>};
constexpr CommandValue s_mode{"a mode", nullptr, &Offer<&GetComparisonNames>};
constexpr CommandValue s_difference{"a kind of difference", nullptr, &Offer<&GetDifferenceNames>};
constexpr CommandValue s_tool{"a tool", nullptr, &Offer<&GetImageToolNames>};

using command_values::s_boolean;
using command_values::s_file;
using command_values::s_real;

constexpr CommandWord s_zoomWords[] = {
    CommandWord::Argument("0) factor", "pixels for a sample; or in, out, fit\n", s_zoom),
    CommandWord::Assignment("x", "samples", "position that keeps its place; else the middle\n", s_real),
    CommandWord::Assignment("y", "samples", "likewise\n", s_real)};
constexpr CommandWord s_panWords[] = {CommandWord::Argument("0) right", "pixels\n", s_real),
                                      CommandWord::Argument("1) down", "pixels\n", s_real)};
constexpr CommandWord s_centerWords[] = {CommandWord::Argument("0) x", "column, in samples\n", s_real),
                                         CommandWord::Argument("1) y", "row, in samples\n", s_real)};
constexpr CommandWord s_levelWords[] = {
    CommandWord::Argument("0) level", "0 for the image itself, 1 for half of it; or auto, finer, coarser\n", s_level)};
constexpr CommandWord s_channelWords[] = {CommandWord::Argument("0) name", "channel; or all, next\n", s_channel)};
constexpr CommandWord s_exposureWords[] = {
    CommandWord::Argument("0) steps", "-16..16: each step doubles the values\n", s_real),
    CommandWord::Assignment("by", "steps", "add to the exposure\n", s_real)};
constexpr CommandWord s_gammaWords[] = {
    CommandWord::Argument("0) gamma", "0.1..10: values are raised to 1 / gamma\n", s_real),
    CommandWord::Assignment("by", "number", "add to gamma\n", s_real)};
constexpr CommandWord s_windowWords[] = {
    CommandWord::Argument("0) low", "what becomes black, as a part of the range of values; or auto\n"),
    CommandWord::Argument("1) high", "what becomes white\n", s_real)};
constexpr CommandWord s_paletteWords[] = {CommandWord::Argument("0) name", "colours; or next\n", s_palette)};
constexpr CommandWord s_alphaWords[] = {CommandWord::Argument("0) on", "on or off\n", s_boolean)};
constexpr CommandWord s_histogramWords[] = {
    CommandWord::Argument("0) on", "on or off\n", s_boolean),
    CommandWord::Assignment("log", "on or off", "logarithm of the numbers\n", s_boolean),
    CommandWord::Assignment("of", "image or view", "what it is of\n")};
constexpr CommandWord s_measureWords[] = {
    CommandWord::Argument("0) x0", "first corner or end, in samples; or off\n"),
    CommandWord::Argument("1) y0", "likewise\n", s_real),
    CommandWord::Argument("2) x1", "other corner or end\n", s_real),
    CommandWord::Argument("3) y1", "likewise\n", s_real),
    CommandWord::Option("line", "a line and not a rectangle\n"),
    CommandWord::Assignment("tool", "name", "what a drag does: pan, line, rectangle, next\n", s_tool)};
constexpr CommandWord s_compareWords[] = {
    CommandWord::Argument("0) file", "another image; or off\n", s_file),
    CommandWord::Assignment("mode", "name", "side, blink, divider, difference\n", s_mode),
    CommandWord::Assignment("divider", "0..1", "place of the divider, from the left\n", s_real)};
constexpr CommandWord s_differenceWords[] = {
    CommandWord::Argument("0) kind", "absolute, squared, relative\n", s_difference),
    CommandWord::Assignment("scale", "1..65536", "times as large\n", s_real)};

struct ImageCommand
{
    char const *name;
    char const *shortDesc;
    std::span<CommandWord const> words;
    char const *plain;
    void (*run)(ImageState &state, ostream &out, CommandArguments const &arguments);
};

constexpr ImageCommand s_commands[] = {
    {"zoom", "Zoom the image", s_zoomWords, "print the zoom", &Zoom},
    {"pan", "Move the image in the view", s_panWords, "", &Pan},
    {"center", "Bring a position of the image to the middle of the view", s_centerWords, "", &Center},
    {"level", "Choose the level of the image that is drawn", s_levelWords, "print the level", &Level},
    {"channel", "Choose the channel that is shown", s_channelWords, "print the channels", &Channel},
    {"exposure", "Brighten or darken the image", s_exposureWords, "print the exposure", &Exposure},
    {"gamma", "Set the gamma of the display", s_gammaWords, "print gamma", &Gamma},
    {"window", "Choose the values that become black and white", s_windowWords, "print the window", &Window},
    {"palette", "Show values as colours", s_paletteWords, "print the palette", &Palette},
    {"alpha", "Show a checkerboard through the image", s_alphaWords, "toggle it", &Alpha},
    {"reset-display", "Show the samples as they are", {}, "reset level, channel and all settings of colours", &Reset},
    {"histogram", "Show or hide the histogram", s_histogramWords, "toggle it", &Histogram},
    {"figures",
     "Print the figures of the image",
     {},
     "print extremes, mean and deviation of each channel",
     &PrintFiguresCommand},
    {"measure", "Measure a rectangle or a line", s_measureWords, "print what is measured", &Measure},
    {"compare", "Compare the image with another one", s_compareWords, "print what is compared", &Compare},
    {"blink", "Show the other image in the same place", {}, "exchange the two images", &Blink},
    {"difference", "Show what differs in two images", s_differenceWords, "toggle it", &Difference},
};

} // namespace

void AddImageCommands(CommandSet &commands, std::shared_ptr<ImageState> const &state)
{
    for (ImageCommand const &command : s_commands)
    {
        commands.Add(command.name, command.shortDesc, command.words, command.plain,
                     [run = command.run, state](ostream &out, CommandArguments const &arguments)
                     { run(*state, out, arguments); });
    }
}

} // namespace viewer
