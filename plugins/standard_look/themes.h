// Colours of the look.
#ifndef QUILLMARSH_PLUGINS_STANDARD_LOOK_THEMES_H
#define QUILLMARSH_PLUGINS_STANDARD_LOOK_THEMES_H

#include <quillmarsh/mathtools/color4b.h>
#include <quillmarsh/platform/types.h>

#include <array>
#include <span>

namespace standard_look
{

using quillmarsh::color4b;

/// What has a surface with something written on it.
enum eInk : unsigned int
{
    e_ink_panel = 0,
    e_ink_title,
    e_ink_titleActive,
    e_ink_popup,
    e_ink_tip,
    e_ink_hint,
    e_ink_failure,
    e_ink_label,
    e_ink_labelDisabled,
    e_ink_control,
    e_ink_controlHot,
    e_ink_controlPressed,
    e_ink_controlDisabled,
    e_ink_accent,
    e_ink_accentHot,
    e_ink_accentPressed,
    e_ink_accentDisabled,
    e_ink_track,
    e_ink_toolHot,
    e_ink_toolPressed,
    e_ink_field,
    e_ink_fieldHot,
    e_ink_fieldDisabled,
    e_ink_fieldHint,
    e_ink_fieldWrong,
    e_ink_row,
    e_ink_rowHot,
    e_ink_rowSelected,
    e_ink_rowSelectedIdle,
    e_ink_rowDisabled,
    e_ink_rowDetail,
    e_ink_rowDetailHot,
    e_ink_popupHot,
    e_ink_popupDisabled,
    e_ink_popupKeys,
    e_ink_tab,
    e_ink_tabHot,
    e_ink_tabShown,
    e_ink_tabDisabled,
    e_ink_consoleInfo,
    e_ink_consoleWarning,
    e_ink_consoleError,
    e_ink_consoleAttention,
    e_ink_consoleQuery,
    e_ink_consoleEcho,
    e_ink_consoleDebug,
    e_ink_consoleSelected,
    s_numInks
};

/// Colours that belong together.
struct Ink
{
    color4b surface;
    /// Line around the surface; without alpha where there is none.
    color4b frame;
    /// Of texts and marks.
    color4b text;
};

/// True for what cannot be used: its text may have less contrast.
constexpr bool IsDisabled(eInk ink)
{
    return ink == e_ink_labelDisabled || ink == e_ink_controlDisabled || ink == e_ink_accentDisabled ||
           ink == e_ink_fieldDisabled || ink == e_ink_rowDisabled || ink == e_ink_popupDisabled ||
           ink == e_ink_tabDisabled;
}

/// Colours of signs and thin parts. They stand on the panel's surface.
struct Signals
{
    color4b focus;
    color4b shadow;
    color4b line;
    color4b thumb;
    color4b thumbHot;
    color4b information;
    color4b warning;
    color4b error;
    color4b folder;
    color4b cursor;
};

/// One set of colours.
struct Theme
{
    char const *name;
    std::array<Ink, s_numInks> inks;
    Signals signals;
};

/// Returns all themes; the first is the one at first.
std::span<Theme const> GetThemes();
/// Returns a theme by its name; null if there is none.
Theme const *FindTheme(quillmarsh::string const &name);

} // namespace standard_look

#endif
