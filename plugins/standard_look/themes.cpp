#include "themes.h"

#include <algorithm>

namespace standard_look
{
namespace
{

/// Colour as 0xRRGGBB.
constexpr color4b Rgb(unsigned int value)
{
    return {static_cast<unsigned char>(value >> 16 & 255), static_cast<unsigned char>(value >> 8 & 255),
            static_cast<unsigned char>(value & 255), 255};
}

constexpr color4b s_none = {0, 0, 0, 0};

constexpr Theme s_themes[] = {
    {"dark",
     {{
         /* panel */ {Rgb(0x23262D), Rgb(0x434955), Rgb(0xE6E9EF)},
         /* title */ {Rgb(0x23262D), Rgb(0x343943), Rgb(0xA3ABBA)},
         /* titleActive */ {Rgb(0x2D313A), Rgb(0x3A404C), Rgb(0xF2F4F8)},
         /* popup */ {Rgb(0x2A2E36), Rgb(0x4A515E), Rgb(0xE6E9EF)},
         /* tip */ {Rgb(0x3A404C), Rgb(0x565E6D), Rgb(0xF2F4F8)},
         /* hint */ {Rgb(0x23262D), s_none, Rgb(0xA3ABBA)},
         /* failure */ {Rgb(0x23262D), s_none, Rgb(0xFF8F85)},
         /* label */ {Rgb(0x23262D), s_none, Rgb(0xE6E9EF)},
         /* labelDisabled */ {Rgb(0x23262D), s_none, Rgb(0x7F8796)},
         /* control */ {Rgb(0x363B46), Rgb(0x565E6D), Rgb(0xE6E9EF)},
         /* controlHot */ {Rgb(0x424854), Rgb(0x5C6475), Rgb(0xF2F4F8)},
         /* controlPressed */ {Rgb(0x2A2E37), Rgb(0x565E6D), Rgb(0xE6E9EF)},
         /* controlDisabled */ {Rgb(0x2A2D35), Rgb(0x373C46), Rgb(0x828A99)},
         /* accent */ {Rgb(0x2B63CF), Rgb(0x3E76E0), Rgb(0xFFFFFF)},
         /* accentHot */ {Rgb(0x3169D9), Rgb(0x5089EE), Rgb(0xFFFFFF)},
         /* accentPressed */ {Rgb(0x234FA8), Rgb(0x2B63CF), Rgb(0xFFFFFF)},
         /* accentDisabled */ {Rgb(0x2C3A56), Rgb(0x37486A), Rgb(0x8C99B3)},
         /* track */ {Rgb(0x3F4551), s_none, Rgb(0xF2F4F8)},
         /* toolHot */ {Rgb(0x3D434F), s_none, Rgb(0xF2F4F8)},
         /* toolPressed */ {Rgb(0x1D2026), s_none, Rgb(0xF2F4F8)},
         /* field */ {Rgb(0x1A1D22), Rgb(0x565E6D), Rgb(0xE6E9EF)},
         /* fieldHot */ {Rgb(0x1A1D22), Rgb(0x6B7485), Rgb(0xE6E9EF)},
         /* fieldDisabled */ {Rgb(0x212429), Rgb(0x373C46), Rgb(0x7F8796)},
         /* fieldHint */ {Rgb(0x1A1D22), s_none, Rgb(0x8D96A6)},
         /* fieldWrong */ {Rgb(0x2A1D20), Rgb(0xE0645A), Rgb(0xFFD9D5)},
         /* row */ {Rgb(0x1A1D22), s_none, Rgb(0xE6E9EF)},
         /* rowHot */ {Rgb(0x2A2F38), s_none, Rgb(0xF2F4F8)},
         /* rowSelected */ {Rgb(0x2B63CF), s_none, Rgb(0xFFFFFF)},
         /* rowSelectedIdle */ {Rgb(0x364257), s_none, Rgb(0xF2F4F8)},
         /* rowDisabled */ {Rgb(0x212429), s_none, Rgb(0x7F8796)},
         /* rowDetail */ {Rgb(0x1A1D22), s_none, Rgb(0x9AA3B3)},
         /* rowDetailHot */ {Rgb(0x2A2F38), s_none, Rgb(0xA8B1C0)},
         /* popupHot */ {Rgb(0x2B63CF), s_none, Rgb(0xFFFFFF)},
         /* popupDisabled */ {Rgb(0x2A2E36), s_none, Rgb(0x828A99)},
         /* popupKeys */ {Rgb(0x2A2E36), s_none, Rgb(0xA3ABBA)},
         /* tab */ {Rgb(0x23262D), s_none, Rgb(0xB4BBC8)},
         /* tabHot */ {Rgb(0x2D313A), s_none, Rgb(0xE6E9EF)},
         /* tabShown */ {Rgb(0x23262D), s_none, Rgb(0xF2F4F8)},
         /* tabDisabled */ {Rgb(0x23262D), s_none, Rgb(0x7F8796)},
         /* consoleInfo */ {Rgb(0x1A1D22), s_none, Rgb(0xD5DAE3)},
         /* consoleWarning */ {Rgb(0x1A1D22), s_none, Rgb(0xF2C262)},
         /* consoleError */ {Rgb(0x1A1D22), s_none, Rgb(0xFF8F85)},
         /* consoleAttention */ {Rgb(0x1A1D22), s_none, Rgb(0xFFFFFF)},
         /* consoleQuery */ {Rgb(0x1A1D22), s_none, Rgb(0x86B4FF)},
         /* consoleEcho */ {Rgb(0x1A1D22), s_none, Rgb(0x8D96A6)},
         /* consoleDebug */ {Rgb(0x1A1D22), s_none, Rgb(0xB9A4E6)},
         /* consoleSelected */ {Rgb(0x2B63CF), s_none, Rgb(0xFFFFFF)},
     }},
     {/* focus */ Rgb(0x7FB0FF), /* shadow */ {0, 0, 0, 150}, /* line */ Rgb(0x3A404C),
      /* thumb */ Rgb(0x5A6272), /* thumbHot */ Rgb(0x7B8496), /* information */ Rgb(0x6FA5FF),
      /* warning */ Rgb(0xF2C262), /* error */ Rgb(0xFF7B70), /* folder */ Rgb(0x86B4FF), /* cursor */ Rgb(0xFFFFFF)}},
    {"light",
     {{
         /* panel */ {Rgb(0xF5F6F8), Rgb(0xB9C0CB), Rgb(0x1B1F26)},
         /* title */ {Rgb(0xF5F6F8), Rgb(0xDDE1E8), Rgb(0x5C6675)},
         /* titleActive */ {Rgb(0xE4E8EF), Rgb(0xD0D6E0), Rgb(0x14171C)},
         /* popup */ {Rgb(0xFFFFFF), Rgb(0xC3C9D4), Rgb(0x1B1F26)},
         /* tip */ {Rgb(0x2D313A), Rgb(0x2D313A), Rgb(0xF2F4F8)},
         /* hint */ {Rgb(0xF5F6F8), s_none, Rgb(0x566072)},
         /* failure */ {Rgb(0xF5F6F8), s_none, Rgb(0xB3261E)},
         /* label */ {Rgb(0xF5F6F8), s_none, Rgb(0x1B1F26)},
         /* labelDisabled */ {Rgb(0xF5F6F8), s_none, Rgb(0x7E8694)},
         /* control */ {Rgb(0xFFFFFF), Rgb(0xB4BBC7), Rgb(0x1B1F26)},
         /* controlHot */ {Rgb(0xEEF2F8), Rgb(0x98A2B3), Rgb(0x14171C)},
         /* controlPressed */ {Rgb(0xDCE2EC), Rgb(0x98A2B3), Rgb(0x14171C)},
         /* controlDisabled */ {Rgb(0xECEEF2), Rgb(0xD6DAE2), Rgb(0x7C8492)},
         /* accent */ {Rgb(0x2B63CF), Rgb(0x2456B8), Rgb(0xFFFFFF)},
         /* accentHot */ {Rgb(0x3169D9), Rgb(0x2456B8), Rgb(0xFFFFFF)},
         /* accentPressed */ {Rgb(0x234FA8), Rgb(0x1D438F), Rgb(0xFFFFFF)},
         /* accentDisabled */ {Rgb(0xC9D5EC), Rgb(0xBAC9E6), Rgb(0x5F6E8B)},
         /* track */ {Rgb(0xCBD1DB), s_none, Rgb(0x14171C)},
         /* toolHot */ {Rgb(0xD8DEE8), s_none, Rgb(0x14171C)},
         /* toolPressed */ {Rgb(0xC4CCD9), s_none, Rgb(0x14171C)},
         /* field */ {Rgb(0xFFFFFF), Rgb(0xA9B1BF), Rgb(0x1B1F26)},
         /* fieldHot */ {Rgb(0xFFFFFF), Rgb(0x7B8698), Rgb(0x1B1F26)},
         /* fieldDisabled */ {Rgb(0xF0F1F4), Rgb(0xD6DAE2), Rgb(0x7E8694)},
         /* fieldHint */ {Rgb(0xFFFFFF), s_none, Rgb(0x6A7383)},
         /* fieldWrong */ {Rgb(0xFFF1F0), Rgb(0xC8372D), Rgb(0x5F120D)},
         /* row */ {Rgb(0xFFFFFF), s_none, Rgb(0x1B1F26)},
         /* rowHot */ {Rgb(0xECF0F6), s_none, Rgb(0x14171C)},
         /* rowSelected */ {Rgb(0x2B63CF), s_none, Rgb(0xFFFFFF)},
         /* rowSelectedIdle */ {Rgb(0xD3DCEC), s_none, Rgb(0x14171C)},
         /* rowDisabled */ {Rgb(0xF0F1F4), s_none, Rgb(0x7E8694)},
         /* rowDetail */ {Rgb(0xFFFFFF), s_none, Rgb(0x606A7B)},
         /* rowDetailHot */ {Rgb(0xECF0F6), s_none, Rgb(0x566072)},
         /* popupHot */ {Rgb(0x2B63CF), s_none, Rgb(0xFFFFFF)},
         /* popupDisabled */ {Rgb(0xFFFFFF), s_none, Rgb(0x848C9A)},
         /* popupKeys */ {Rgb(0xFFFFFF), s_none, Rgb(0x606A7B)},
         /* tab */ {Rgb(0xF5F6F8), s_none, Rgb(0x4F5969)},
         /* tabHot */ {Rgb(0xE6EAF0), s_none, Rgb(0x1B1F26)},
         /* tabShown */ {Rgb(0xF5F6F8), s_none, Rgb(0x14171C)},
         /* tabDisabled */ {Rgb(0xF5F6F8), s_none, Rgb(0x7E8694)},
         /* consoleInfo */ {Rgb(0xFFFFFF), s_none, Rgb(0x1B1F26)},
         /* consoleWarning */ {Rgb(0xFFFFFF), s_none, Rgb(0x8A5300)},
         /* consoleError */ {Rgb(0xFFFFFF), s_none, Rgb(0xB3261E)},
         /* consoleAttention */ {Rgb(0xFFFFFF), s_none, Rgb(0x000000)},
         /* consoleQuery */ {Rgb(0xFFFFFF), s_none, Rgb(0x1F54B5)},
         /* consoleEcho */ {Rgb(0xFFFFFF), s_none, Rgb(0x6A7383)},
         /* consoleDebug */ {Rgb(0xFFFFFF), s_none, Rgb(0x6B4FA8)},
         /* consoleSelected */ {Rgb(0x2B63CF), s_none, Rgb(0xFFFFFF)},
     }},
     {/* focus */ Rgb(0x3169D9), /* shadow */ {20, 28, 44, 90}, /* line */ Rgb(0xD0D6E0),
      /* thumb */ Rgb(0xA3ACBA), /* thumbHot */ Rgb(0x7B8698), /* information */ Rgb(0x2B63CF),
      /* warning */ Rgb(0xB26A00), /* error */ Rgb(0xC8372D), /* folder */ Rgb(0x3F77DC), /* cursor */ Rgb(0x14171C)}},
};

} // namespace

std::span<Theme const> GetThemes()
{
    return s_themes;
}

Theme const *FindTheme(quillmarsh::string const &name)
{
    auto const *const found =
        std::find_if(std::begin(s_themes), std::end(s_themes), [&](Theme const &theme) { return name == theme.name; });
    return found == std::end(s_themes) ? nullptr : found;
}

} // namespace standard_look
