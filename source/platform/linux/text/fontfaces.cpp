#include "source/platform/linux/text/fontfaces.h"

#include "source/platform/drawing.h"
#include "source/platform/linux/text/textlibraries.h"

#include <algorithm>
#include <array>
#include <memory>

namespace quillmarsh::platform::drawing
{
namespace
{

struct Releaser
{
    void operator()(FcConfig *config) const { FcConfigDestroy(config); }
    void operator()(FcPattern *pattern) const { FcPatternDestroy(pattern); }
    void operator()(FcObjectSet *objects) const { FcObjectSetDestroy(objects); }
    void operator()(FcFontSet *fonts) const { FcFontSetDestroy(fonts); }
};
template<typename T>
using Holder = std::unique_ptr<T, Releaser>;

/// Families that programs ask for by the names of other systems, and similar fonts that everybody may install.
struct StandIn
{
    char const *family;
    std::array<char const *, 2> standIns;
};

constexpr StandIn s_standIns[] = {
    {"Tahoma", {"DejaVu Sans", "Liberation Sans"}},
    {"Arial", {"Liberation Sans", "DejaVu Sans"}},
    {"Courier New", {"Liberation Mono", "DejaVu Sans Mono"}},
    {"Lucida Console", {"DejaVu Sans Mono", "Liberation Mono"}},
};

constexpr std::array<char const *, 2> s_monospace = {"DejaVu Sans Mono", "Liberation Mono"};

FcChar8 const *ToFontText(string const &text)
{
    return reinterpret_cast<FcChar8 const *>(text.c_str());
}

/// True when a font with outlines has exactly this family, in upper or lower case.
bool IsInstalled(string const &family)
{
    if (family.empty())
        return false;
    Holder<FcPattern> const pattern(FcPatternCreate());
    Holder<FcObjectSet> const objects(FcObjectSetBuild(FC_FAMILY, static_cast<char *>(nullptr)));
    if (!pattern || !objects)
        return false;
    FcPatternAddString(pattern.get(), FC_FAMILY, ToFontText(family));
    FcPatternAddBool(pattern.get(), FC_OUTLINE, FcTrue);
    Holder<FcFontSet> const fonts(FcFontList(nullptr, pattern.get(), objects.get()));
    return fonts && fonts->nfont > 0;
}

/// Returns the family that the system uses in place of another; empty when no fonts are installed.
string MatchFamily(char const *family)
{
    Holder<FcPattern> const wanted(FcNameParse(ToFontText(family)));
    if (!wanted)
        return {};
    FcConfigSubstitute(nullptr, wanted.get(), FcMatchPattern);
    FcDefaultSubstitute(wanted.get());
    FcResult result = FcResultNoMatch;
    Holder<FcPattern> const found(FcFontMatch(nullptr, wanted.get(), &result));
    FcChar8 *name = nullptr;
    if (!found || FcPatternGetString(found.get(), FC_FAMILY, 0, &name) != FcResultMatch)
        return {};
    return reinterpret_cast<char const *>(name);
}

string FindInstalled(std::array<char const *, 2> const &families)
{
    auto const found = std::find_if(families.begin(), families.end(), &IsInstalled);
    return found == families.end() ? string() : *found;
}

string FindMonospaceFamily()
{
    if (!LoadTextLibraries())
        return {};
    string const usual = FindInstalled(s_monospace);
    return usual.empty() ? MatchFamily("monospace") : usual;
}

} // namespace

string FindFamily(string const &family)
{
    if (!LoadTextLibraries())
        return {};
    if (IsInstalled(family))
        return family;
    for (StandIn const &row : s_standIns)
    {
        if (FcStrCmpIgnoreCase(ToFontText(row.family), ToFontText(family)) == 0)
            return FindInstalled(row.standIns);
    }
    return {};
}

bool ReadFamilyNames(std::vector<string> &names)
{
    if (!LoadTextLibraries())
        return false;
    // Uses a configuration of its own and leaves the program's alone.
    Holder<FcConfig> const config(FcInitLoadConfigAndFonts());
    Holder<FcPattern> const pattern(FcPatternCreate());
    Holder<FcObjectSet> const objects(FcObjectSetBuild(FC_FAMILY, static_cast<char *>(nullptr)));
    if (!config || !pattern || !objects)
        return false;
    Holder<FcFontSet> const fonts(FcFontList(config.get(), pattern.get(), objects.get()));
    if (!fonts)
        return false;
    for (int i = 0; i < fonts->nfont; ++i)
    {
        FcChar8 *family = nullptr;
        if (FcPatternGetString(fonts->fonts[i], FC_FAMILY, 0, &family) == FcResultMatch && family)
            names.emplace_back(reinterpret_cast<char const *>(family));
    }
    return true;
}

string const &GetMonospaceFamily()
{
    static string const s_family = FindMonospaceFamily();
    return s_family;
}

} // namespace quillmarsh::platform::drawing
