// Words and values of the image commands, and reading them.
#ifndef QUILLMARSH_PLUGINS_VIEWER_IMAGE_IMAGEWORDS_H
#define QUILLMARSH_PLUGINS_VIEWER_IMAGE_IMAGEWORDS_H

#include <quillmarsh/framework/commandtable.h>

#include <optional>
#include <span>

namespace viewer
{

using quillmarsh::CommandArguments;
using quillmarsh::string;

/// Range of a setting.
struct ValueRange
{
    double minimum;
    double maximum;
};

inline constexpr ValueRange s_exposureRange = {-16, 16};
inline constexpr ValueRange s_gammaRange = {0.1, 10};
inline constexpr ValueRange s_windowRange = {-1e9, 1e9};
inline constexpr ValueRange s_dividerRange = {0, 1};
inline constexpr ValueRange s_scaleRange = {1, 65536};

/// Throws a DataException that names setting, range and value.
double RequireRange(char const *what, double value, ValueRange const &range);
/// Returns a text as a number in a range. Throws a DataException, likewise.
double RequireRange(char const *what, string const &text, ValueRange const &range);
/// Returns the index of a name. Throws a DataException that lists the names.
std::size_t RequireName(char const *what, string const &text, std::span<char const *const> names);
/// Reads "on" and the like; nothing if there is no such argument.
std::optional<bool> ReadSwitch(CommandArguments const &arguments, unsigned int index);

} // namespace viewer

#endif
