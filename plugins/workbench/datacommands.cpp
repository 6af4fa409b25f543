#include "datacommands.h"

#include <quillmarsh/dataobjects/sampleddataoperations.h>

#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/framework/commandtable.h>

#include <ostream>

namespace workbench
{
namespace
{

using namespace quillmarsh;
using sampled_data::DataException;
using sampled_data::eSampleAxis;
using sampled_data::SampledData;

struct DataCommand
{
    char const *name;
    char const *shortDesc;
    std::span<CommandWord const> words;
    char const *defaultBehavior;
    void (*run)(DataBench &bench, ostream &out, CommandArguments const &arguments);
};

/// Returns what follows the message of a failure: the variable that avoids it, if there is one.
char const *GetHint(eCodecFailure kind)
{
    switch (kind)
    {
    case eCodecFailure::e_exists:
        return " with 'var data.overwrite true'";
    case eCodecFailure::e_tooLarge:
        return " (see 'var data.max_pixels')";
    default:
        return "";
    }
}

/// Runs an entry of the table of commands.
class DataCmd : public TableCommand
{
public:
    DataCmd(DataCommand const &command, DataBench &bench) : command_(command), bench_(bench)
    {
        SetDefaultName(command.name);
        SetShortDesc(command.shortDesc);
    }

    std::span<CommandWord const> GetWords() const override { return command_.words; }

protected:
    bool Execute(ostream &out, CommandArguments const &arguments) override
    {
        try
        {
            command_.run(bench_, out, arguments);
            return true;
        }
        catch (DataException const &thrown)
        {
            out << thrown.GetMessage() << GetHint(thrown.GetFailure().kind) << std::endl;
        }
        catch (NoMemoryException const &thrown)
        {
            out << thrown.GetMessage() << std::endl;
        }
        return false;
    }

    string GetDefaultBehavior() const override { return command_.defaultBehavior; }

private:
    DataCommand const &command_;
    DataBench &bench_;
};

string const &RequireArgument(CommandArguments const &arguments, char const *what)
{
    if (string const *const argument = arguments.FindArgument(0))
        return *argument;
    throw DataException(string(what) + " is missing");
}

sampled_data::FileType RequireFileType(string const &fileName)
{
    if (std::optional<sampled_data::FileType> const type = sampled_data::FindFileType(fileName))
        return *type;
    throw DataException(fileName + ": ends in none of " + sampled_data::GetExtensions());
}

eSampleFormat RequireFormat(string const &name)
{
    if (std::optional<eSampleFormat> const format = sampled_data::FindFormat(name))
        return *format;
    throw DataException("no sample format has the name " + name);
}

void PrintInfo(ostream &out, SampledData const &data)
{
    sampled_data::Dimensions const dimensions = data.GetDimensions();
    out << "Kind.........: " << sampled_data::GetKindName(dimensions.size()) << '\n'
        << "Sample format: " << sampled_data::GetFormatName(data.GetFormat()) << '\n'
        << "Dimensions...: " << sampled_data::Describe(dimensions) << '\n'
        << "Bytes........: " << data.GetSamples().GetTotalByteSize() << std::endl;
}

void Load(DataBench &bench, ostream &out, CommandArguments const &arguments)
{
    string const &fileName = RequireArgument(arguments, "the name of a file");
    image_limits::SetMaxPixels(bench.maxPixels);
    bench.SetData(sampled_data::LoadFile(fileName, RequireFileType(fileName)));
    PrintInfo(out, bench.GetData());
}

void Info(DataBench &bench, ostream &out, CommandArguments const &)
{
    PrintInfo(out, bench.GetData());
}

void Convert(DataBench &bench, ostream &, CommandArguments const &arguments)
{
    sampled_data::ChangeFormat(bench.GetData(),
                               RequireFormat(RequireArgument(arguments, "the name of a sample format")));
    bench.CountChange();
}

void Resample(DataBench &bench, ostream &, CommandArguments const &arguments)
{
    string const &text = RequireArgument(arguments, "a size");
    std::optional<sampled_data::eSizeFilter> const filter = sampled_data::FindFilter(bench.filter);
    if (!filter)
        throw DataException("data.filter is none of nearest, linear, area and lanczos: " + bench.filter);
    SampledData const &data = bench.GetData();
    std::optional<sampled_data::Dimensions> const size = sampled_data::ParseSize(text);
    if (!size || size->size() != data.GetDimensions().size())
        throw DataException("not a size of " + sampled_data::GetKindPhrase(data.GetDimensions().size()) + ": " + text);
    bench.SetData(sampled_data::Resample(data, *size, *filter));
}

constexpr eSampleAxis s_axes[] = {eSampleAxis::e_rows, eSampleAxis::e_columns, eSampleAxis::e_layers};

void Flip(DataBench &bench, ostream &, CommandArguments const &arguments)
{
    SampledData &data = bench.GetData();
    std::size_t const numDimensions = data.GetDimensions().size();
    for (eSampleAxis const axis : s_axes)
    {
        if (arguments.HasOption(sampled_data::GetAxisName(axis)) && !sampled_data::HasAxis(numDimensions, axis))
            throw DataException(sampled_data::GetKindPhrase(numDimensions) + " has no " +
                                sampled_data::GetAxisName(axis));
    }
    for (eSampleAxis const axis : s_axes)
    {
        if (arguments.HasOption(sampled_data::GetAxisName(axis)))
            sampled_data::Flip(data, axis);
    }
    bench.CountChange();
}

struct Channel
{
    char const *name;
    bool (*fill)(SignalBase &signal, unsigned char value);
};

constexpr Channel s_channels[] = {{"luminance", &Fill_Luminance},
                                  {"alpha", &Fill_Alpha},
                                  {"red", &Fill_Red},
                                  {"green", &Fill_Green},
                                  {"blue", &Fill_Blue}};

void FillChannels(SampledData const &data, CommandArguments const &arguments)
{
    for (Channel const &channel : s_channels)
    {
        unsigned int value = 0;
        if (!arguments.ReadAssignment(channel.name, value))
            continue;
        if (!channel.fill(data.GetSamples(), static_cast<unsigned char>(value)))
            throw DataException("the sample format " + sampled_data::GetFormatName(data.GetFormat()) + " has no " +
                                channel.name);
    }
}

void Fill(DataBench &bench, ostream &, CommandArguments const &arguments)
{
    SampledData const &data = bench.GetData();
    // Fills a single sample first: a missing channel throws here and leaves the data unchanged.
    FillChannels(SampledData(data.GetFormat(), {1}), arguments);
    FillChannels(data, arguments);
    bench.CountChange();
}

void Mipmaps(DataBench &bench, ostream &out, CommandArguments const &arguments)
{
    string const &prefix = RequireArgument(arguments, "the prefix of the files' names");
    SampledData const &data = bench.GetData();
    string const *const format = arguments.FindAssignment("format");
    std::vector<SampledData> const levels =
        sampled_data::BuildMipmaps(data, format != nullptr ? RequireFormat(*format) : data.GetFormat());
    sampled_data::SaveLevels(levels, prefix, bench.save);
    out << levels.size() << (levels.size() == 1 ? " level saved" : " levels saved") << std::endl;
}

void Save(DataBench &bench, ostream &out, CommandArguments const &arguments)
{
    string const &fileName = RequireArgument(arguments, "the name of a file");
    sampled_data::SaveFile(bench.GetData(), fileName, RequireFileType(fileName), bench.save);
    out << fileName << " saved" << std::endl;
}

/// Prints each format with its target formats, and the extensions of files.
void Formats(DataBench &, ostream &out, CommandArguments const &)
{
    std::vector<eSampleFormat> const formats = sampled_data::GetNamedFormats();
    for (eSampleFormat const source : formats)
    {
        string line = sampled_data::GetFormatName(source);
        PadToLength(line, 9);
        line += " to:";
        for (eSampleFormat const target : formats)
        {
            if (target != source && SignalOperationsManager::Instance().IsTransferSupported(target, source))
                line += ' ' + sampled_data::GetFormatName(target);
        }
        out << line << '\n';
    }
    out << "Files: " << sampled_data::GetExtensions() << std::endl;
}

// All texts are accepted: the commands themselves give the reason against one.
constexpr CommandValue s_format{"the name of a sample format", nullptr,
                                [](CommandArguments const &, CompletionOffers &offers)
                                {
                                    for (eSampleFormat const format : sampled_data::GetNamedFormats())
                                        offers.Add(sampled_data::GetFormatName(format));
                                }};
constexpr CommandWord s_fileWords[] = {
    CommandWord::Argument("0) file-name", "its extension selects the type of file\n", command_values::s_file)};
constexpr CommandWord s_convertWords[] = {
    CommandWord::Argument("0) format-name", "sample format, see formats\n", s_format)};
constexpr CommandWord s_resampleWords[] = {
    CommandWord::Argument("0) size", "N samples, WxH columns and rows, or WxHxD columns, rows and layers\n")};
constexpr CommandWord s_flipWords[] = {
    CommandWord::Option("rows", "reverse the order of the rows\n"),
    CommandWord::Option("columns", "reverse the order of the columns, or of a signal's samples\n"),
    CommandWord::Option("layers", "reverse the order of the layers\n")};
constexpr CommandValue s_byte{"a number from 0 to 255", [](CommandArguments const &, string const &text)
                              {
                                  unsigned int value = 0;
                                  return command_values::IsUnsigned(text) && ToValue(text, value) && value <= 255;
                              }};
constexpr CommandWord s_fillWords[] = {CommandWord::Assignment("luminance", "0..255", "set the luminance\n", s_byte),
                                       CommandWord::Assignment("alpha", "0..255", "set the alpha\n", s_byte),
                                       CommandWord::Assignment("red", "0..255", "set the red\n", s_byte),
                                       CommandWord::Assignment("green", "0..255", "set the green\n", s_byte),
                                       CommandWord::Assignment("blue", "0..255", "set the blue\n", s_byte)};
constexpr CommandWord s_mipmapsWords[] = {
    CommandWord::Assignment("format", "format-name", "sample format of the levels\n", s_format),
    CommandWord::Argument("0) prefix", "begins the names of the packages: prefix.0.qmdp.image and so on\n")};

constexpr DataCommand s_commands[] = {
    {"load", "Load a file as the current data", s_fileWords, "", &Load},
    {"info", "Describe the current data", {}, "print kind, sample format, dimensions and bytes", &Info},
    {"convert", "Change the sample format of the current data", s_convertWords, "", &Convert},
    {"resample", "Resample the current data", s_resampleWords, "", &Resample},
    {"flip", "Mirror the current data", s_flipWords, "change nothing", &Flip},
    {"fill", "Fill channels of the current data", s_fillWords, "change nothing", &Fill},
    {"mipmaps", "Save a mipmap chain of the current data as packages", s_mipmapsWords, "", &Mipmaps},
    {"save", "Save the current data", s_fileWords, "", &Save},
    {"formats",
     "List the sample formats and types of files",
     {},
     "print each format with the formats that it converts to",
     &Formats},
};

} // namespace

void RegisterDataCommands(std_command_interpreter::Interpreter &interpreter, DataBench &bench)
{
    for (DataCommand const &command : s_commands)
        interpreter.RegisterExternalCommand(new DataCmd(command, bench));
}

} // namespace workbench
