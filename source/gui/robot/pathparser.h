// The language of component paths.
#ifndef QUILLMARSH_SOURCE_GUI_ROBOT_PATHPARSER_H
#define QUILLMARSH_SOURCE_GUI_ROBOT_PATHPARSER_H

#include <quillmarsh/gui/gui_componentpath.h>

namespace quillmarsh::gui::robot_parts
{

/// Cuts a path into its steps, at least one. Throws a GUIException that names the mistake and its character.
std::vector<ComponentPath::Step> ParsePath(string const &text);

/// True for the characters that a caption in a path has behind a backslash.
bool IsSpecial(char c);
/// Compares a caption with a pattern of a path, both in UTF-8.
bool MatchesPattern(string const &caption, string const &pattern);
/// Returns the caption that a pattern without wildcards stands for; what it looks like with them.
string StripPattern(string const &pattern);

} // namespace quillmarsh::gui::robot_parts

#endif
