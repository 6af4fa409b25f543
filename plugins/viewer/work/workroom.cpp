// Work on the current document: conversions, changes of size, saving, steps back.
#include "workpanel.h"

#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/dataobjects/imagelimits.h>

#include <charconv>
#include <ostream>

namespace viewer
{

using namespace quillmarsh;
using namespace quillmarsh::sampled_data;

namespace
{

constexpr KeyBinding s_keys[] = {
    {e_key_z, e_control, "undo", "Take the last step back", true},
    {e_key_y, e_control, "redo", "Make the step again", true},
    {e_key_z, e_control | e_shift, "redo", "Make the step again", true},
    {e_key_s, e_control, "save", "Save as a file"},
};

bool Accepts(std::vector<string> const &words, string const &text)
{
    return std::find(words.begin(), words.end(), text) != words.end();
}

void OfferAll(std::vector<string> const &words, CompletionOffers &offers)
{
    for (string const &word : words)
        offers.Add(word);
}

std::vector<string> ListFormats()
{
    std::vector<string> names;
    for (eSampleFormat const format : GetNamedFormats())
        names.push_back(GetFormatName(format));
    return names;
}

/// 16384 rows of 16384 pixels. Loading never stands in the way of the frame, and its failures are told.
constexpr std::uint64_t s_defaultMaxPixels = std::uint64_t(1) << 28;

constexpr eSampleAxis s_axes[] = {eSampleAxis::e_rows, eSampleAxis::e_columns, eSampleAxis::e_layers};

std::vector<string> ListAxes()
{
    std::vector<string> names;
    for (eSampleAxis const axis : s_axes)
        names.push_back(GetAxisName(axis));
    return names;
}

/// Reads a place: N, or numbers with x or comma between them, columns first. Nothing for any other text.
std::optional<Dimensions> ParsePlace(string const &text)
{
    Dimensions place;
    for (char const *at = text.data(), *const end = at + text.size();; ++at)
    {
        unsigned int &number = *place.insert(place.begin(), 0);
        auto const [behind, error] = std::from_chars(at, end, number);
        if (error != std::errc() || place.size() > 3)
            return std::nullopt;
        if (behind == end)
            return place;
        if (*behind != 'x' && *behind != ',')
            return std::nullopt;
        at = behind;
    }
}

/// @name Kinds of values
/// @{
constexpr CommandValue s_format{
    "the name of a sample format",
    [](CommandArguments const &, string const &text) { return FindFormat(text).has_value(); },
    [](CommandArguments const &, CompletionOffers &offers) { OfferAll(ListFormats(), offers); }};
constexpr CommandValue s_filter{
    "one of nearest, linear, area and lanczos",
    [](CommandArguments const &, string const &text) { return FindFilter(text).has_value(); },
    [](CommandArguments const &, CompletionOffers &offers) { OfferAll(GetFilterNames(), offers); }};
constexpr CommandValue s_size{"a size of N samples, WxH or WxHxD, without zeros",
                              [](CommandArguments const &, string const &text) { return ParseSize(text).has_value(); }};
constexpr CommandValue s_place{"a place such as 10x20, columns first", [](CommandArguments const &, string const &text)
                               { return ParsePlace(text).has_value(); }};
constexpr CommandValue s_axis{"one of rows, columns and layers",
                              [](CommandArguments const &, string const &text) { return Accepts(ListAxes(), text); },
                              [](CommandArguments const &, CompletionOffers &offers) { OfferAll(ListAxes(), offers); }};
constexpr CommandValue s_type{
    "a type of files, such as png or qmdp.image",
    [](CommandArguments const &, string const &text) { return FindFileTypeByName(text).has_value(); },
    [](CommandArguments const &, CompletionOffers &offers) { OfferAll(GetFileTypeNames(), offers); }};
constexpr CommandValue s_count{"a whole number above 0", [](CommandArguments const &, string const &text)
                               {
                                   std::uint64_t number = 0;
                                   auto const [end, error] =
                                       std::from_chars(text.data(), text.data() + text.size(), number);
                                   return error == std::errc() && end == text.data() + text.size() && number > 0;
                               }};
constexpr CommandValue s_quality{"a whole number from 0 to 100", [](CommandArguments const &, string const &text)
                                 {
                                     unsigned int quality = 0;
                                     return command_values::IsUnsigned(text) && ToValue(text, quality) &&
                                            quality <= data_codec_parameters::Value_Quality_Max;
                                 }};
/// @}

/// @name Words
/// @{
constexpr char s_szFormat[] = "format";
constexpr char s_szFilter[] = "filter";
constexpr char s_szAt[] = "at";
constexpr char s_szTo[] = "to";
constexpr char s_szQuality[] = "quality";
constexpr char s_szID[] = "id";
constexpr char s_szOverwrite[] = "overwrite";
constexpr char s_szNoCompression[] = "no-compression";
constexpr char s_szBigEndian[] = "big-endian";
constexpr char s_szOriginBottom[] = "origin-bottom";
constexpr char s_szOriginBack[] = "origin-back";

constexpr CommandWord s_convertWords[] = {
    CommandWord::Assignment(s_szFormat, "name", "sample format to convert to\n", s_format)};
constexpr CommandWord s_resizeWords[] = {
    CommandWord::Argument("0) size", "N samples, WxH or WxHxD columns, rows and layers\n", s_size),
    CommandWord::Assignment(s_szFilter, "name",
                            "nearest, linear (default), area (mean; best for smaller data), lanczos (sharper)\n",
                            s_filter)};
constexpr CommandWord s_flipWords[] = {
    CommandWord::Argument("0) axis", "rows, columns (also of a signal's samples) or layers\n", s_axis)};
constexpr CommandWord s_cropWords[] = {
    CommandWord::Argument("0) size", "size of the part that stays, as for resize\n", s_size),
    CommandWord::Assignment(s_szAt, "place", "first column, row and layer that stays, as 10x20; by default the first\n",
                            s_place)};
constexpr CommandWord s_mipmapsWords[] = {
    CommandWord::Argument("0) prefix", "beginning of the names, as PREFIX.0.qmdp.image\n", command_values::s_file),
    CommandWord::Assignment(s_szFormat, "name", "sample format of the levels; that of the data by default\n", s_format),
    CommandWord::Assignment(s_szFilter, "name", "as for resize\n", s_filter),
    CommandWord::Option(s_szOverwrite, "replace existing files\n"),
    CommandWord::Option(s_szBigEndian, "store numbers big-endian\n")};
constexpr CommandWord s_maxPixelsWords[] = {
    CommandWord::Argument("0) number", "the largest number of pixels\n", s_count)};
constexpr CommandWord s_saveWords[] = {
    CommandWord::Argument("0) file", "name of the file; its end tells the type\n", command_values::s_file),
    CommandWord::Assignment(s_szTo, "type", "type of the file, such as png or qmdp.image\n", s_type),
    CommandWord::Assignment(s_szQuality, "number", "quality from 0 to 100, 100 by default (JPEG)\n", s_quality),
    CommandWord::Assignment(s_szID, "number", "package id, 0 by default\n", command_values::s_uinteger),
    CommandWord::Option(s_szOverwrite, "replace an existing file\n"),
    CommandWord::Option(s_szNoCompression, "store the samples without compression (PNG, TIFF)\n"),
    CommandWord::Option(s_szBigEndian, "store numbers big-endian (packages)\n"),
    CommandWord::Option(s_szOriginBottom, "store the last row first\n"),
    CommandWord::Option(s_szOriginBack, "store the last layer first\n")};
/// @}

SaveSettings ReadSaveSettings(CommandArguments const &arguments)
{
    SaveSettings settings;
    settings.overwrite = arguments.HasOption(s_szOverwrite);
    settings.bigEndian = arguments.HasOption(s_szBigEndian);
    return settings;
}

eSizeFilter ReadFilter(CommandArguments const &arguments)
{
    string const *const name = arguments.FindAssignment(s_szFilter);
    return name ? *FindFilter(*name) : eSizeFilter::e_linear;
}

FileType RequireType(string const &fileName, CommandArguments const &arguments)
{
    string const *const name = arguments.FindAssignment(s_szTo);
    if (std::optional<FileType> const type = name ? FindFileTypeByName(*name) : FindFileType(fileName))
        return *type;
    throw DataException(fileName + ": ends in none of " + GetExtensions());
}

} // namespace

class WorkRoom : public Room
{
public:
    explicit WorkRoom(Workspace &workspace)
        : workspace_(workspace),
          work_(workspace.GetJobs(),
                [&workspace](string const &line, bool isFailure) { workspace.Say(line, isFailure); })
    {
        image_limits::SetMaxPixels(s_defaultMaxPixels);
    }

    char const *GetTitle() const override { return "Work"; }
    void AddCommands(CommandSet &commands) override;
    std::span<KeyBinding const> GetKeys() const override { return s_keys; }
    void WriteState(ostream &out) const override
    {
        if (image_limits::GetMaxPixels() != s_defaultMaxPixels)
            out << "max-pixels " << image_limits::GetMaxPixels() << '\n';
    }
    void MakeInspector(widgets::Stack &column) override
    {
        panel_ = std::make_unique<WorkPanel>(workspace_, work_, column);
    }
    void Update(double) override
    {
        work_.Update();
        if (panel_)
            panel_->Update();
    }

private:
    struct Command;
    static Command const s_commands[];

    DocumentPtr const &GetDocument() const { return workspace_.GetDocuments().GetCurrent(); }
    void Convert(CommandArguments const &arguments);
    void Resize(CommandArguments const &arguments);
    void Flip(CommandArguments const &arguments);
    void Crop(CommandArguments const &arguments);
    void Mipmaps(CommandArguments const &arguments);
    void Save(CommandArguments const &arguments);
    void Levels(CommandArguments const &arguments);
    void MaxPixels(CommandArguments const &arguments);
    void Undo(CommandArguments const &arguments);
    void Redo(CommandArguments const &arguments);
    WorkPanel &RequirePanel() const;

    Workspace &workspace_;
    DocumentWork work_;
    std::unique_ptr<WorkPanel> panel_;
};

struct WorkRoom::Command
{
    char const *name;
    char const *shortDesc;
    std::span<CommandWord const> words;
    char const *plain;
    void (WorkRoom::*run)(CommandArguments const &arguments);
};

constexpr WorkRoom::Command WorkRoom::s_commands[] = {
    {"convert", "Change the sample format of the current data", s_convertWords, "", &WorkRoom::Convert},
    {"resize", "Change the size of the current data", s_resizeWords, "", &WorkRoom::Resize},
    {"flip", "Reverse the order of samples of the current data", s_flipWords, "", &WorkRoom::Flip},
    {"crop", "Keep a part of the current data only", s_cropWords, "", &WorkRoom::Crop},
    {"mipmaps", "Save the current data at smaller and smaller sizes", s_mipmapsWords, "ask for the names",
     &WorkRoom::Mipmaps},
    {"save", "Save the current data as a file", s_saveWords, "ask for the file", &WorkRoom::Save},
    {"levels", "Make the smaller levels of a large mapped image", {}, "make them", &WorkRoom::Levels},
    {"max-pixels", "Set how large pictures may be that are opened", s_maxPixelsWords, "print it", &WorkRoom::MaxPixels},
    {"undo", "Take the last step back", {}, "take it back", &WorkRoom::Undo},
    {"redo", "Make a step again that was taken back", {}, "make it again", &WorkRoom::Redo},
};

void WorkRoom::AddCommands(CommandSet &commands)
{
    for (Command const &command : s_commands)
    {
        commands.Add(command.name, command.shortDesc, command.words, command.plain,
                     [this, &command](ostream &, CommandArguments const &arguments)
                     {
                         (this->*command.run)(arguments);
                         workspace_.Invalidate();
                     });
    }
}

void WorkRoom::Convert(CommandArguments const &arguments)
{
    string const *const name = arguments.FindAssignment(s_szFormat);
    if (!name)
        throw DataException("the sample format is missing, as in: convert -format=L8");
    Edit edit = {.kind = Edit::eKind::e_convert};
    edit.format = *FindFormat(*name);
    work_.Change(GetDocument(), edit, "convert -format=" + GetFormatName(edit.format));
}

void WorkRoom::Resize(CommandArguments const &arguments)
{
    string const &size = RequireArgument(arguments, "the size");
    Edit edit = {.kind = Edit::eKind::e_resize};
    edit.size = *ParseSize(size);
    edit.filter = ReadFilter(arguments);
    work_.Change(GetDocument(), edit,
                 "resize " + size + " -filter=" + GetFilterNames()[static_cast<std::size_t>(edit.filter)]);
}

void WorkRoom::Flip(CommandArguments const &arguments)
{
    string const &name = RequireArgument(arguments, "the axis");
    Edit edit = {.kind = Edit::eKind::e_flip};
    auto const *const axis =
        std::find_if(std::begin(s_axes), std::end(s_axes), [&](eSampleAxis each) { return GetAxisName(each) == name; });
    if (axis == std::end(s_axes))
        throw DataException("no axis has the name " + name);
    edit.axis = *axis;
    work_.Change(GetDocument(), edit, "flip " + name);
}

void WorkRoom::Crop(CommandArguments const &arguments)
{
    string const &size = RequireArgument(arguments, "the size");
    Edit edit = {.kind = Edit::eKind::e_crop};
    edit.size = *ParseSize(size);
    edit.origin = Dimensions(edit.size.size(), 0);
    string step = "crop " + size;
    if (string const *const place = arguments.FindAssignment(s_szAt))
    {
        edit.origin = *ParsePlace(*place);
        step += " -at=" + *place;
    }
    work_.Change(GetDocument(), edit, step);
}

void WorkRoom::Mipmaps(CommandArguments const &arguments)
{
    string const *const prefix = arguments.FindArgument(0);
    if (!prefix)
        return RequirePanel().AskForMipmaps();
    string const *const format = arguments.FindAssignment(s_szFormat);
    work_.SaveMipmaps(GetDocument(), file_system::GetFullPathNameA(*prefix, false),
                      format ? FindFormat(*format) : std::nullopt, ReadFilter(arguments), ReadSaveSettings(arguments));
}

void WorkRoom::Save(CommandArguments const &arguments)
{
    string const *const name = arguments.FindArgument(0);
    if (!name)
        return RequirePanel().AskForFile();
    SaveSettings settings = ReadSaveSettings(arguments);
    arguments.ReadAssignment(s_szQuality, settings.quality);
    arguments.ReadAssignment(s_szID, settings.id);
    settings.useCompression = !arguments.HasOption(s_szNoCompression);
    settings.originBottom = arguments.HasOption(s_szOriginBottom);
    settings.originBack = arguments.HasOption(s_szOriginBack);
    work_.Save(GetDocument(), file_system::GetFullPathNameA(*name, false), RequireType(*name, arguments), settings);
}

void WorkRoom::Levels(CommandArguments const &)
{
    work_.MakeLevels(GetDocument());
}

void WorkRoom::MaxPixels(CommandArguments const &arguments)
{
    if (string const *const text = arguments.FindArgument(0))
    {
        std::uint64_t number = 0;
        std::from_chars(text->data(), text->data() + text->size(), number);
        image_limits::SetMaxPixels(number);
    }
    else
        workspace_.Say(MakeString(image_limits::GetMaxPixels()) + " pixels");
}

void WorkRoom::Undo(CommandArguments const &)
{
    workspace_.Say("Taken back: " + work_.Undo(GetDocument()));
}

void WorkRoom::Redo(CommandArguments const &)
{
    workspace_.Say("Made again: " + work_.Redo(GetDocument()));
}

WorkPanel &WorkRoom::RequirePanel() const
{
    if (!panel_)
        throw DataException("there is no window yet");
    return *panel_;
}

std::unique_ptr<Room> MakeWorkRoom(Workspace &workspace)
{
    return std::make_unique<WorkRoom>(workspace);
}

} // namespace viewer
