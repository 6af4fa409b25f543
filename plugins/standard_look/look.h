// The look: what it registers with the GUI manager, and the exchange of themes and scales.
#ifndef QUILLMARSH_PLUGINS_STANDARD_LOOK_LOOK_H
#define QUILLMARSH_PLUGINS_STANDARD_LOOK_LOOK_H

#include "sheetfont.h"
#include "themes.h"

#include <vector>

namespace standard_look
{

/// Shaders, fonts and cursors of the widgets, for as long as the object exists.
///
/// Their own names carry scale, and theme where they have one: "look/text@1.5", "look/button@1.5/dark". The names that
/// widgets know are aliases, and a change of theme exchanges aliases only. A change of scale makes everything anew.
/// Needs the GUI manager. Frame thread only.
class Look : quillmarsh::NoCopy
{
public:
    /// Registers everything with the first theme, and sets the scale of widgets::Measures. What of the standard fonts,
    /// cursors and tiles nobody has registered is registered as well. Throws as quillmarsh::GenerateFontGlyphs() does.
    explicit Look(float scale);
    /// Unregisters all that it has registered, but the standard tiles and cursors, if the manager still exists.
    ~Look();

    /// Returns false, and changes nothing, for a name that no theme has.
    bool SetTheme(string const &name);
    Theme const &GetTheme() const { return *theme_; }
    /// Sets the scale, within 0.5 and 4.
    void SetScale(float scale);
    float GetScale() const { return scale_; }

private:
    string MakeFontName(char const *name) const;
    string MakeShaderName(char const *name, Theme const &theme) const;

    void MakeFonts();
    void MakeShaders();
    void MakeCursors();
    void MakeStandardSet();
    void SetAliases();
    void UpdateCursors();
    /// Unregisters what belongs to the present scale.
    void RemoveScale();

    float scale_ = 1;
    Theme const *theme_;
    /// True if the standard cursors are the look's: it gives them size and colour then.
    bool hasStandardCursors_ = false;
    /// Names of the cursors and standard fonts that nobody else has registered.
    std::vector<string> cursors_;
    std::vector<string> standardFonts_;
};

} // namespace standard_look

#endif
