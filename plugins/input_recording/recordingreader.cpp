#include "recordingreader.h"

#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/basetools/texttools.h>

#include <charconv>
#include <cmath>
#include <fstream>
#include <iterator>
#include <limits>

namespace input_recording
{

using namespace quillmarsh;

namespace
{

constexpr double s_maxTime = 1e9;
constexpr std::streamoff s_maxFileSize = std::streamoff(64) << 20;

/// Splits a text at each delimiter; returns at least one piece.
std::vector<string> Split(string const &text, char delimiter)
{
    std::vector<string> pieces;
    std::size_t begin = 0;
    for (std::size_t end = 0; end != string::npos; begin = end + 1)
    {
        end = text.find(delimiter, begin);
        pieces.push_back(text.substr(begin, end - begin));
    }
    return pieces;
}

std::vector<string> SplitWords(string const &line)
{
    std::vector<string> words;
    for (std::size_t begin = line.find_first_not_of(" \t"); begin != string::npos;)
    {
        std::size_t const end = line.find_first_of(" \t", begin);
        words.push_back(line.substr(begin, end - begin));
        begin = line.find_first_not_of(" \t", end);
    }
    return words;
}

/// Returns the text of a line from its second word on.
string GetRest(string const &line)
{
    std::size_t const word = line.find_first_not_of(" \t");
    std::size_t const rest = line.find_first_not_of(" \t", line.find_first_of(" \t", word));
    return rest == string::npos ? "" : line.substr(rest);
}

/// Reads one text, line by line.
class Reader
{
public:
    explicit Reader(string const &name) : name_(name) {}

    Recording Read(string const &text)
    {
        for (string line : Split(text, '\n'))
        {
            ++line_;
            if (line.ends_with('\r'))
                line.pop_back();
            field_.clear();
            std::vector<string> const words = SplitWords(line);
            if (!words.empty() && words[0][0] != '#')
                ReadLine(line, words);
        }
        if (!hasEnded_)
            Fail("the text ends without a line \"TIME end\"");
        return std::move(recording_);
    }

private:
    [[noreturn]] void Fail(string const &what) const
    {
        RecordingException exception;
        exception.SetMessage(name_ + ":" + MakeString(line_) + ": " +
                             (field_.empty() ? "" : "field \"" + field_ + "\": ") + what);
        throw exception;
    }

    void ReadLine(string const &line, std::vector<string> const &words)
    {
        if (hasEnded_)
            Fail("nothing may follow the end");
        if (!hasSignature_)
            ReadSignature(words);
        else if (IsDigit(words[0][0]) || words[0][0] == '-' || words[0][0] == '.' || words[0][0] == '+')
            ReadTimedLine(words);
        else if (words[0] == "description" && recording_.samples.empty())
            recording_.description = GetRest(line);
        else if (words[0] == "controller" && recording_.samples.empty())
            ReadController(words);
        else
            Fail("\"" + words[0] + "\" is neither a time nor a line of the head");
    }

    void ReadSignature(std::vector<string> const &words)
    {
        if (words.size() != 2 || words[0] != s_szSignature || words[1] != s_szVersion)
            Fail(string("the first line must be \"") + s_szSignature + " " + s_szVersion + "\"");
        hasSignature_ = true;
    }

    /// Returns the index of a controller, or the number of controllers when none is of that kind.
    unsigned int FindController(string const &kindName) const
    {
        unsigned int index = 0;
        while (index < recording_.controllers.size() && kindName != recording_.controllers[index].GetDesc().name)
            ++index;
        return index;
    }

    void ReadController(std::vector<string> const &words)
    {
        field_ = words.size() > 1 ? words[1] : words[0];
        if (words.size() < 2)
            Fail("the kind of controller is missing");
        unsigned int kind = 0;
        while (kind < s_numKinds && words[1] != GetKindDesc(static_cast<eKind>(kind)).name)
            ++kind;
        if (kind == s_numKinds)
            Fail("no kind of controller has this name");
        if (FindController(words[1]) < recording_.controllers.size())
            Fail("this kind of controller is listed twice");

        std::size_t word = 2;
        bool const hasHand = kind == e_kind_glove && words.size() > 2 && (words[2] == "left" || words[2] == "right");
        if (hasHand)
            ++word;
        RecordedController controller(static_cast<eKind>(kind), word == words.size());
        controller.isLeftHanded = hasHand && words[2] == "left";
        for (; word < words.size(); ++word)
            ReadDeclaredField(controller, words[word]);
        if (kind == e_kind_orientation_tracker && (controller.counts[0] != 0) == (controller.counts[1] != 0))
            Fail("it must have either angles or a quaternion");
        states_.push_back(controller.GetDesc().rest);
        recording_.controllers.push_back(std::move(controller));
    }

    void ReadDeclaredField(RecordedController &controller, string const &word)
    {
        std::vector<string> const parts = Split(word, ':');
        field_ = parts[0];
        Field const &field = GetField(controller, parts[0]);
        unsigned int &count = controller.counts[static_cast<std::size_t>(&field - controller.GetDesc().fields.data())];
        if (count != 0)
            Fail("it is given twice");
        count = field.count;
        if (parts.size() == 1)
            return;
        if (controller.kind == e_kind_glove)
        {
            controller.ranges[field.first] = ReadRange(word, parts);
            return;
        }
        float const number = ReadNumber(parts[1], true);
        bool const fits = field.type == eFieldType::e_set && parts.size() == 2 && number >= 1.0f &&
                          number <= static_cast<float>(field.count);
        if (!fits)
            Fail("\"" + word + "\" has no count from 1 to " + MakeString(field.count));
        count = static_cast<unsigned int>(number);
    }

    Range ReadRange(string const &word, std::vector<string> const &parts) const
    {
        std::vector<string> const ends = Split(parts[1], ',');
        if (parts.size() != 2 || ends.size() != 2)
            Fail("\"" + word + "\" has no range MIN,MAX");
        Range const range{ReadNumber(ends[0], false), ReadNumber(ends[1], false)};
        if (!range.IsKnown())
            Fail("\"" + word + "\" has a range with MIN above MAX");
        return range;
    }

    Field const &GetField(RecordedController const &controller, string const &name) const
    {
        KindDesc const &desc = controller.GetDesc();
        unsigned int const index = desc.FindField(name);
        if (index == desc.fields.size())
            Fail(string("a ") + desc.name + " has no such field");
        return desc.fields[index];
    }

    void ReadTimedLine(std::vector<string> const &words)
    {
        field_ = "time";
        double const time = ReadTime(words[0]);
        if (time < recording_.length)
            Fail("\"" + words[0] + "\" is earlier than the time of the previous line");
        recording_.length = time;

        field_ = words.size() > 1 ? words[1] : "controller";
        if (words.size() == 2 && words[1] == "end")
        {
            hasEnded_ = true;
            return;
        }
        unsigned int const controller = words.size() > 1 ? FindController(words[1]) : 0;
        if (words.size() < 2 || controller == recording_.controllers.size())
            Fail("the head does not list this controller");
        if (words.size() == 2)
            Fail("the sample has no fields");
        ReadSample(time, controller, words);
    }

    void ReadSample(double time, unsigned int index, std::vector<string> const &words)
    {
        auto const firstChange = static_cast<unsigned int>(recording_.changes.size());
        std::vector<bool> isRead(recording_.controllers[index].counts.size());
        for (std::size_t word = 2; word < words.size(); ++word)
        {
            RecordedController const &controller = recording_.controllers[index];
            std::size_t const equals = words[word].find('=');
            field_ = words[word].substr(0, equals);
            Field const &field = GetField(controller, field_);
            auto const fieldIndex = static_cast<std::size_t>(&field - controller.GetDesc().fields.data());
            if (controller.counts[fieldIndex] == 0)
                Fail("the head does not list it");
            if (isRead[fieldIndex])
                Fail("it is given twice");
            isRead[fieldIndex] = true;
            if (equals == string::npos)
                Fail("\"=\" and a value are missing");
            string const values = words[word].substr(equals + 1);
            if (field.type == eFieldType::e_set)
                ReadSet(index, field, controller.counts[fieldIndex], values);
            else
                ReadValues(index, field, values);
        }
        recording_.samples.push_back(
            {time, index, firstChange, static_cast<unsigned int>(recording_.changes.size()) - firstChange});
    }

    void ReadValues(unsigned int controller, Field const &field, string const &text)
    {
        std::vector<string> const values = Split(text, ',');
        if (values.size() != field.count)
            Fail("it must have " + MakeString(field.count) + (field.count == 1 ? " value" : " values"));
        bool const isWhole = field.type != eFieldType::e_numbers;
        for (unsigned int i = 0; i < field.count; ++i)
        {
            float const value = ReadNumber(values[i], isWhole);
            if (field.type == eFieldType::e_flag && value != 0.0f && value != 1.0f)
                Fail("\"" + values[i] + "\" is neither 0 nor 1");
            AddChange(controller, field.first + i, value);
        }
    }

    void ReadSet(unsigned int controller, Field const &field, unsigned int count, string const &text)
    {
        KindDesc const &desc = recording_.controllers[controller].GetDesc();
        std::vector<bool> isIn(count);
        if (text != "none")
        {
            for (string const &name : Split(text, ','))
            {
                unsigned int item = 0;
                while (item < count && desc.getItemName(item) != name)
                    ++item;
                if (item == count)
                    Fail("\"" + name + "\" is not a name in this set");
                isIn[item] = true;
            }
        }
        for (unsigned int item = 0; item < count; ++item)
        {
            float const value = isIn[item] ? 1.0f : 0.0f;
            if (states_[controller][field.first + item] != value)
                AddChange(controller, field.first + item, value);
        }
    }

    void AddChange(unsigned int controller, unsigned int index, float value)
    {
        states_[controller][index] = value;
        recording_.changes.push_back({index, value});
    }

    /// Reads a time; behind "+", it counts from the previous line on.
    double ReadTime(string const &text) const
    {
        bool const isStep = text[0] == '+';
        double time = 0;
        auto const [end, error] = std::from_chars(text.data() + isStep, text.data() + text.size(), time);
        bool const isNumber = error == std::errc() && end == text.data() + text.size() && time >= 0;
        time += isStep ? recording_.length : 0;
        if (!isNumber || !(time <= s_maxTime))
            Fail("\"" + text + "\" is not a number of seconds from 0 to 1e9");
        return time;
    }

    float ReadNumber(string const &text, bool isWhole) const
    {
        float value = 0;
        auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
        if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value))
            Fail("\"" + text + "\" is not a finite number");
        if (isWhole && (std::fabs(value) > s_maxInteger || value != std::trunc(value)))
            Fail("\"" + text + "\" is not a whole number from -1000000 to 1000000");
        return value;
    }

    string const name_;
    unsigned int line_ = 0;
    /// The field that is read; empty at the beginning of a line.
    string field_;
    bool hasSignature_ = false;
    bool hasEnded_ = false;
    /// For each controller, its state after the samples so far.
    std::vector<std::vector<float>> states_;
    Recording recording_;
};

} // namespace

Recording ParseRecording(string const &text, string const &name)
{
    return Reader(name).Read(text);
}

Recording LoadRecording(string const &fileName)
{
    auto const fail = [&fileName](string const &what)
    {
        RecordingException exception;
        exception.SetMessage(fileName + ": " + what);
        throw exception;
    };
    std::filesystem::path const path = file_system::GetStreamPath(fileName);
    std::ifstream file;
    if (!path.empty())
        file.open(path, std::ios::binary | std::ios::ate);
    if (!file.is_open())
        fail("the file cannot be opened: " + file_system::GetLastFailureReason());
    std::streamoff const size = file.tellg();
    if (size < 0)
        fail("the file cannot be read");
    if (size > s_maxFileSize)
        fail("the file is larger than 64 MiB");
    file.seekg(0);
    string text(static_cast<std::size_t>(size), '\0');
    if (!file.read(text.data(), static_cast<std::streamsize>(size)))
        fail("the file cannot be read");
    return ParseRecording(text, fileName);
}

} // namespace input_recording
