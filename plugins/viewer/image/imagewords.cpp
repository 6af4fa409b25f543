#include "imagewords.h"

#include "numbers.h"

#include <quillmarsh/dataobjects/dataexception.h>

#include <algorithm>

namespace viewer
{

using namespace quillmarsh;
using sampled_data::DataException;

double RequireRange(char const *what, double value, ValueRange const &range)
{
    if (value >= range.minimum && value <= range.maximum)
        return value;
    throw DataException(string(what) + " must be from " + FormatNumber(range.minimum) + " to " +
                        FormatNumber(range.maximum) + ", not " + FormatNumber(value));
}

double RequireRange(char const *what, string const &text, ValueRange const &range)
{
    double value = 0;
    if (!ToValue(text, value))
        throw DataException(string(what) + " must be a number, not '" + text + "'");
    return RequireRange(what, value, range);
}

std::size_t RequireName(char const *what, string const &text, std::span<char const *const> names)
{
    auto const found = std::find(names.begin(), names.end(), text);
    if (found != names.end())
        return static_cast<std::size_t>(found - names.begin());
    string list;
    for (std::size_t i = 0; i < names.size(); ++i)
        list += (i == 0 ? "" : i + 1 == names.size() ? " or " : ", ") + string(names[i]);
    throw DataException(string(what) + " must be " + list + ", not '" + text + "'");
}

std::optional<bool> ReadSwitch(CommandArguments const &arguments, unsigned int index)
{
    string const *const text = arguments.FindArgument(index);
    bool value = false;
    if (text == nullptr)
        return std::nullopt;
    if (!ToValue(*text, value))
        throw DataException("on or off is expected, not '" + *text + "'");
    return value;
}

} // namespace viewer
