#include "room.h"
#include "signalinspector.h"
#include "signalview.h"

#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/dataobjects/dataexception.h>

#include <cmath>
#include <ostream>

namespace viewer
{
namespace
{

using namespace quillmarsh;
using sampled_data::DataException;

constexpr KeyBinding s_keys[] = {
    {e_key_0, e_plain, "range all", "Show all samples"},
    {e_key_num_0, e_plain, "range all", "Show all samples"},
    {e_key_equals, e_plain, "stretch 1.25", "Zoom in", true},
    {e_key_equals, e_shift, "stretch 1.25", "Zoom in", true},
    {e_key_num_add, e_plain, "stretch 1.25", "Zoom in", true},
    {e_key_minus, e_plain, "stretch 0.8", "Zoom out", true},
    {e_key_num_subtract, e_plain, "stretch 0.8", "Zoom out", true},
    {e_key_1, e_plain, "stretch -samples-per-pixel=1", "Zoom to one sample a pixel"},
    {e_key_arrow_left, e_plain, "scroll '-0.1'", "Scroll to earlier samples", true},
    {e_key_arrow_right, e_plain, "scroll 0.1", "Scroll to later samples", true},
    {e_key_arrow_left, e_shift, "scroll '-1'", "Scroll a width to earlier samples", true},
    {e_key_arrow_right, e_shift, "scroll 1", "Scroll a width to later samples", true},
    {e_key_home, e_plain, "scroll begin", "Scroll to the first sample"},
    {e_key_end, e_plain, "scroll end", "Scroll to the last sample"},
    {e_key_arrow_up, e_plain, "scroll-values 0.1", "Scroll to greater values", true},
    {e_key_arrow_down, e_plain, "scroll-values '-0.1'", "Scroll to smaller values", true},
    {e_key_equals, e_control, "stretch-values 1.25", "Zoom into the values", true},
    {e_key_minus, e_control, "stretch-values 0.8", "Zoom out of the values", true},
    {e_key_a, e_plain, "values auto", "Show all values of the signal"},
    {e_key_v, e_plain, "values visible", "Fit the values to what shows"},
    {e_key_n, e_plain, "values nominal", "Show the whole range of the sample format"},
    {e_key_t, e_plain, "lanes", "Stack the channels, or put them together"},
    {e_key_z, e_plain, "range span", "Zoom to the span"},
    {e_key_delete, e_plain, "span none", "Clear the span"},
};

constexpr CommandWord s_rangeWords[] = {
    CommandWord::Argument("0) begin", "first sample, or \"all\", or \"span\" for those of the span\n"),
    CommandWord::Argument("1) end", "sample behind the last one\n", command_values::s_real)};
constexpr CommandWord s_stretchWords[] = {
    CommandWord::Argument("0) factor", "how much wider a sample gets, as 2\n", command_values::s_real),
    CommandWord::Assignment("samples-per-pixel", "number", "zooms to this many samples a pixel of a view of 1000\n",
                            command_values::s_real)};
constexpr CommandWord s_scrollWords[] = {
    CommandWord::Argument("0) part", "part of what shows, negative to the left; or \"begin\", or \"end\"\n")};
constexpr CommandWord s_valuesWords[] = {
    CommandWord::Argument("0) low", "least value; or \"auto\" for all values of the signal, \"visible\" for those that "
                                    "show, \"nominal\" for those of the sample format\n"),
    CommandWord::Argument("1) high", "greatest value\n", command_values::s_real)};
constexpr CommandWord s_factorWords[] = {
    CommandWord::Argument("0) factor", "how much higher the plot gets, as 2\n", command_values::s_real)};
constexpr CommandWord s_partWords[] = {
    CommandWord::Argument("0) part", "part of what shows, negative to smaller values\n", command_values::s_real)};
constexpr CommandWord s_channelsWords[] = {
    CommandWord::Argument("0) name", "a channel to show, or \"all\"\n"),
    CommandWord::Argument("1) name", "another one\n"), CommandWord::Argument("2) name", "another one\n"),
    CommandWord::Argument("3) name", "another one\n"),
    CommandWord::Assignment("toggle", "name", "shows this channel, or hides it\n")};
constexpr CommandWord s_lanesWords[] = {CommandWord::Argument("0) way", "\"stacked\" or \"together\"\n")};
constexpr CommandWord s_rateWords[] = {
    CommandWord::Argument("0) rate", "samples of a second, 0 if that is not known\n", command_values::s_real)};
constexpr CommandWord s_spanWords[] = {
    CommandWord::Argument("0) begin", "first sample, or \"none\", or \"shown\" for all that show\n"),
    CommandWord::Argument("1) end", "sample behind the last one\n", command_values::s_real)};

/// Returns an argument as a finite number. Throws a DataException that names what is missing or wrong.
double ReadNumber(CommandArguments const &arguments, unsigned int index, char const *what)
{
    string const *const text = arguments.FindArgument(index);
    if (text == nullptr)
        throw DataException(string(what) + " is missing");
    double value = 0;
    if (!ToValue(*text, value) || !std::isfinite(value))
        throw DataException("not a number: " + *text);
    return value;
}

double ReadFactor(CommandArguments const &arguments)
{
    double const factor = ReadNumber(arguments, 0, "a factor");
    if (!(factor >= 1e-6 && factor <= 1e6))
        throw DataException("a factor is within 1e-6 and 1e6: " + FormatValue(factor));
    return factor;
}

/// Returns the ends of the value axis that show, those of the first lane.
std::pair<double, double> FindValues(SignalState const &state)
{
    PlotSettings const &settings = state.GetSettings();
    PlotLayout const layout = LayOutPlot(state.RequireLevels(), settings, {});
    return layout.lanes.empty() ? std::pair(settings.low, settings.high)
                                : std::pair(layout.lanes[0].low, layout.lanes[0].high);
}

bool Is(CommandArguments const &arguments, char const *word)
{
    string const *const text = arguments.FindArgument(0);
    return text != nullptr && *text == word;
}

void RunRange(SignalState &state, ostream &out, CommandArguments const &arguments)
{
    PlotSettings const &settings = state.GetSettings();
    auto const count = static_cast<double>(state.RequireLevels().GetNumSamples());
    if (arguments.FindArgument(0) == nullptr)
        out << FormatRangeLine(settings) << " of " << FormatSampleNumber(count) << std::endl;
    else if (Is(arguments, "all"))
        state.SetRange(0, count);
    else if (Is(arguments, "span"))
    {
        if (settings.span.IsEmpty())
            throw DataException("no span is marked");
        state.SetRange(static_cast<double>(settings.span.begin), static_cast<double>(settings.span.end));
    }
    else
        state.SetRange(ReadNumber(arguments, 0, "a sample"), ReadNumber(arguments, 1, "the end of the range"));
}

void RunStretch(SignalState &state, ostream &, CommandArguments const &arguments)
{
    PlotSettings settings = state.GetSettings();
    double const middle = (settings.begin + settings.end) / 2;
    double samplesPerPixel = 0;
    std::uint64_t const count = state.RequireLevels().GetNumSamples();
    if (arguments.ReadAssignment("samples-per-pixel", samplesPerPixel))
    {
        if (!(samplesPerPixel > 0 && samplesPerPixel <= 1e9))
            throw DataException("samples of a pixel are above 0, and 1e9 at most: " + FormatValue(samplesPerPixel));
        ScaleRange(settings, samplesPerPixel * 1000 / (settings.end - settings.begin), middle, count);
    }
    else
        ScaleRange(settings, 1 / ReadFactor(arguments), middle, count);
    state.SetSettings(settings);
}

void RunScroll(SignalState &state, ostream &, CommandArguments const &arguments)
{
    PlotSettings settings = state.GetSettings();
    std::uint64_t const count = state.RequireLevels().GetNumSamples();
    double const length = settings.end - settings.begin;
    double distance = 0;
    if (Is(arguments, "begin"))
        distance = -static_cast<double>(count);
    else if (Is(arguments, "end"))
        distance = static_cast<double>(count);
    else
        distance = ReadNumber(arguments, 0, "a part of the range") * length;
    ShiftRange(settings, distance, count);
    state.SetSettings(settings);
}

void RunValues(SignalState &state, ostream &out, CommandArguments const &arguments)
{
    if (arguments.FindArgument(0) == nullptr)
    {
        out << FormatValuesLine(state.GetSettings()) << std::endl;
        return;
    }
    std::span<char const *const> const names = GetValueRangeNames();
    for (std::size_t i = 0; i < names.size(); ++i)
    {
        if (Is(arguments, names[i]))
        {
            state.SetValueRange(static_cast<eValueRange>(i));
            return;
        }
    }
    state.SetValues(ReadNumber(arguments, 0, "a value"), ReadNumber(arguments, 1, "the greatest value"));
}

void RunStretchValues(SignalState &state, ostream &, CommandArguments const &arguments)
{
    auto const [low, high] = FindValues(state);
    double const middle = (low + high) / 2;
    double const half = (high - low) / 2 / ReadFactor(arguments);
    state.SetValues(middle - half, middle + half);
}

void RunScrollValues(SignalState &state, ostream &, CommandArguments const &arguments)
{
    auto const [low, high] = FindValues(state);
    double const distance = ReadNumber(arguments, 0, "a part of the values") * (high - low);
    state.SetValues(low + distance, high + distance);
}

unsigned int FindBit(SignalState const &state, string const &name)
{
    eSampleFormat const format = state.RequireLevels().GetContent()->GetData().GetFormat();
    int const index = FindChannel(format, name);
    if (index < 0)
    {
        string names;
        for (Channel const &channel : state.GetChannels())
            names += string(names.empty() ? "" : ", ") + channel.name;
        throw DataException("no channel has the name " + name + "; there is: " + names);
    }
    return 1U << index;
}

void RunChannels(SignalState &state, ostream &out, CommandArguments const &arguments)
{
    unsigned int const before = state.GetSettings().channels;
    std::span<Channel const> const channels = state.RequireLevels().GetSignalChannels();
    if (string const *const name = arguments.FindAssignment("toggle"))
        state.SetChannels(before ^ FindBit(state, *name));
    else if (arguments.FindArgument(0) == nullptr)
    {
        for (std::size_t i = 0; i < channels.size(); ++i)
            out << channels[i].name << ((before >> i & 1) != 0 ? " (shown)" : "") << std::endl;
    }
    else if (Is(arguments, "all"))
        state.SetChannels(~0U);
    else
    {
        unsigned int shown = 0;
        for (unsigned int i = 0; arguments.FindArgument(i) != nullptr; ++i)
            shown |= FindBit(state, *arguments.FindArgument(i));
        state.SetChannels(shown);
    }
}

void RunLanes(SignalState &state, ostream &, CommandArguments const &arguments)
{
    PlotSettings settings = state.GetSettings();
    if (arguments.FindArgument(0) == nullptr)
        settings.isStacked = !settings.isStacked;
    else if (Is(arguments, "stacked") || Is(arguments, "together"))
        settings.isStacked = Is(arguments, "stacked");
    else
        throw DataException("lanes are stacked or together, not " + *arguments.FindArgument(0));
    state.SetSettings(settings);
}

void RunRate(SignalState &state, ostream &out, CommandArguments const &arguments)
{
    if (arguments.FindArgument(0) != nullptr)
        state.SetRate(ReadNumber(arguments, 0, "a rate"));
    else
        out << "rate " << FormatValue(state.GetSettings().rate) << std::endl;
}

void RunSpan(SignalState &state, ostream &out, CommandArguments const &arguments)
{
    PlotSettings const &settings = state.GetSettings();
    auto const count = static_cast<double>(state.RequireLevels().GetNumSamples());
    if (Is(arguments, "none"))
        state.SetSpan({});
    else if (Is(arguments, "shown"))
        state.SetSpan(
            {static_cast<std::uint64_t>(settings.begin), static_cast<std::uint64_t>(std::ceil(settings.end))});
    else if (arguments.FindArgument(0) != nullptr)
    {
        double const begin = ReadNumber(arguments, 0, "a sample");
        double const end = ReadNumber(arguments, 1, "the end of the span");
        if (begin < 0 || end <= begin || end > count || begin != std::floor(begin) || end != std::floor(end))
            throw DataException("a span has whole numbers from 0 to " + FormatSampleNumber(count) +
                                ", the first one less than the second: " + FormatValue(begin) + " to " +
                                FormatValue(end));
        state.SetSpan({static_cast<std::uint64_t>(begin), static_cast<std::uint64_t>(end)});
    }
    if (!Is(arguments, "none"))
        state.PrintSpan(out);
}

struct SignalCommand
{
    char const *name;
    char const *shortDesc;
    std::span<CommandWord const> words;
    char const *plain;
    void (*run)(SignalState &state, ostream &out, CommandArguments const &arguments);
};

constexpr SignalCommand s_commands[] = {
    {"range", "Set the samples of the signal that show", s_rangeWords, "print them", &RunRange},
    {"stretch", "Zoom the signal", s_stretchWords, "", &RunStretch},
    {"scroll", "Scroll the signal", s_scrollWords, "", &RunScroll},
    {"values", "Set the values of the signal that show", s_valuesWords, "print them", &RunValues},
    {"stretch-values", "Zoom the values of the signal", s_factorWords, "", &RunStretchValues},
    {"scroll-values", "Scroll the values of the signal", s_partWords, "", &RunScrollValues},
    {"channels", "Choose the channels of the signal", s_channelsWords, "print the channels", &RunChannels},
    {"lanes", "Give each channel of the signal its lane, or all one", s_lanesWords, "change to the other way",
     &RunLanes},
    {"rate", "Set the rate of the signal's samples", s_rateWords, "print it", &RunRate},
    {"span", "Mark samples of the signal, and measure them", s_spanWords, "print the figures of the span", &RunSpan},
};

class SignalRoom : public Room
{
public:
    explicit SignalRoom(Workspace &workspace) : state_(workspace) {}

    char const *GetTitle() const override { return "Signals"; }
    unsigned int GetNumDimensions() const override { return 1; }
    std::span<KeyBinding const> GetKeys() const override { return s_keys; }

    void AddCommands(CommandSet &commands) override
    {
        for (SignalCommand const &command : s_commands)
        {
            commands.Add(command.name, command.shortDesc, command.words, command.plain,
                         [this, &command](ostream &out, CommandArguments const &arguments)
                         { command.run(state_, out, arguments); });
        }
    }

    gui::Component *MakeView(gui::Component &parent) override { return view_ = new SignalView(parent, state_); }
    void MakeInspector(widgets::Stack &column) override
    {
        inspector_ = std::make_unique<SignalInspector>(column, state_);
    }

    void Show(DocumentPtr const &document, bool isOther) override { state_.Show(document, isOther); }

    void Update(double seconds) override
    {
        if (view_ != nullptr)
            view_->Update(seconds);
        if (inspector_ != nullptr)
            inspector_->Update();
    }

    string GetStatus() const override
    {
        if (state_.GetLevels() == nullptr || view_ == nullptr)
            return string();
        string const mouse = view_->DescribeMouse();
        return mouse.empty() ? state_.FormatLength(state_.GetNumSamples()) : mouse;
    }

    void WriteState(ostream &out) const override
    {
        PlotSettings const &settings = state_.GetSettings();
        out << "lanes " << (settings.isStacked ? "stacked" : "together") << '\n'
            << "rate " << FormatWord(settings.rate) << '\n';
        if (settings.valueRange != eValueRange::e_fixed)
            out << FormatValuesLine(settings) << '\n';
    }

private:
    SignalState state_;
    /// Owned by its parent.
    SignalView *view_ = nullptr;
    std::unique_ptr<SignalInspector> inspector_;
};

} // namespace

std::unique_ptr<Room> MakeSignalRoom(Workspace &workspace)
{
    return std::make_unique<SignalRoom>(workspace);
}

} // namespace viewer
