#include "recordingwriter.h"

#include <quillmarsh/basetools/texttools.h>

#include <algorithm>
#include <charconv>
#include <cmath>

namespace input_recording
{

using namespace quillmarsh;

RecordingWriter::RecordingWriter(ostream &out, string const &description,
                                 std::vector<RecordedController> const &controllers)
    : out_(out),
      controllers_(controllers)
{
    out_ << s_szSignature << ' ' << s_szVersion << '\n';
    if (!description.empty())
        out_ << "description " << description << '\n';
    hasWritten_.resize(controllers_.size());
    for (RecordedController const &controller : controllers_)
    {
        WriteHead(controller);
        states_.push_back(controller.GetDesc().rest);
    }
}

void RecordingWriter::WriteHead(RecordedController const &controller)
{
    KindDesc const &desc = controller.GetDesc();
    line_ = string("controller ") + desc.name;
    if (controller.kind == e_kind_glove)
        line_ += controller.isLeftHanded ? " left" : " right";
    for (std::size_t i = 0; i < desc.fields.size(); ++i)
    {
        if (controller.counts[i] != 0)
            AppendHead(controller, i);
    }
    out_ << line_ << '\n';
}

void RecordingWriter::AppendHead(RecordedController const &controller, std::size_t field)
{
    Field const &desc = controller.GetDesc().fields[field];
    line_ += ' ' + desc.name;
    if (controller.counts[field] != desc.count)
        line_ += ':' + MakeString(controller.counts[field]);
    Range const range = controller.kind == e_kind_glove ? controller.ranges[field] : Range();
    if (range.min >= range.max)
        return;
    line_ += ':';
    AppendNumber(range.min, 0);
    line_ += ',';
    AppendNumber(range.max, 0);
}

void RecordingWriter::Write(double time, unsigned int controller, std::span<float const> state)
{
    RecordedController const &recorded = controllers_[controller];
    KindDesc const &desc = recorded.GetDesc();
    std::vector<float> &written = states_[controller];
    line_.clear();
    for (std::size_t i = 0; i < desc.fields.size(); ++i)
    {
        Field const &field = desc.fields[i];
        auto const begin = state.begin() + field.first;
        auto const last = written.begin() + field.first;
        // Fields with a value that is not finite are not recorded.
        bool const isFinite = std::all_of(begin, begin + field.count, [](float value) { return std::isfinite(value); });
        bool const isMovement = field.type == eFieldType::e_movement;
        bool const isFirst = !hasWritten_[controller] && !isMovement;
        if (recorded.counts[i] == 0 || !isFinite || (!isFirst && std::equal(begin, begin + field.count, last)))
            continue;
        AppendField(field, recorded, state);
        // A movement belongs to its sample only.
        if (!isMovement)
            std::copy(begin, begin + field.count, last);
    }
    hasWritten_[controller] = true;
    if (line_.empty())
        return;
    string fields;
    fields.swap(line_);
    AppendNumber(time, 6);
    out_ << line_ << ' ' << desc.name << fields << '\n';
    line_.swap(fields);
}

void RecordingWriter::WriteEnd(double time)
{
    line_.clear();
    AppendNumber(time, 6);
    out_ << line_ << " end" << std::endl;
}

void RecordingWriter::AppendNumber(double value, int precision)
{
    char text[64];
    std::to_chars_result const result =
        precision > 0 ? std::to_chars(std::begin(text), std::end(text), value, std::chars_format::fixed, precision)
                      : std::to_chars(std::begin(text), std::end(text), static_cast<float>(value));
    line_.append(text, result.ptr);
}

void RecordingWriter::AppendField(Field const &field, RecordedController const &controller,
                                  std::span<float const> state)
{
    line_ += ' ';
    line_ += field.name;
    char separator = '=';
    for (unsigned int i = 0; i < field.count; ++i)
    {
        float const value = state[field.first + i];
        bool const isSet = field.type == eFieldType::e_set;
        if (isSet && value == 0.0f)
            continue;
        line_ += separator;
        separator = ',';
        if (isSet)
            line_ += controller.GetDesc().getItemName(i);
        else
            AppendNumber(value, 0);
    }
    if (separator == '=')
        line_ += "=none";
}

} // namespace input_recording
