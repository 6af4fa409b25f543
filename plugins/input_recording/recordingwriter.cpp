#include "recordingwriter.h"

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
    for (RecordedController const &controller : controllers_)
    {
        WriteHead(controller);
        states_.push_back(controller.GetDesc().rest);
    }
}

void RecordingWriter::WriteHead(RecordedController const &controller)
{
    KindDesc const &desc = controller.GetDesc();
    out_ << "controller " << desc.name;
    if (controller.kind == e_kind_glove)
        out_ << (controller.isLeftHanded ? " left" : " right");
    for (std::size_t i = 0; i < desc.fields.size(); ++i)
    {
        unsigned int const count = controller.counts[i];
        if (count == 0)
            continue;
        out_ << ' ' << desc.fields[i].name;
        if (count != desc.fields[i].count)
            out_ << ':' << count;
    }
    out_ << '\n';
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
        // What is no number is not recorded either.
        bool const isFinite = std::all_of(begin, begin + field.count, [](float value) { return std::isfinite(value); });
        if (recorded.counts[i] == 0 || !isFinite || std::equal(begin, begin + field.count, last))
            continue;
        AppendField(field, recorded, state);
        // A movement is over with its sample.
        if (field.type != eFieldType::e_movement)
            std::copy(begin, begin + field.count, last);
    }
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
