// Colours of the console window.
#ifndef QUILLMARSH_SOURCE_GUI_CONSOLEWINDOWCOLORS_H
#define QUILLMARSH_SOURCE_GUI_CONSOLEWINDOWCOLORS_H

#include <quillmarsh/basetools/outputstream.h>

#include "source/platform/drawing.h"

#include <array>

namespace quillmarsh::console_window
{

using platform::drawing::Color;

/// @name Frame
/// @{
constexpr Color s_border = {58, 66, 79};
constexpr Color s_upperBandTop = {46, 53, 64};
constexpr Color s_upperBandBottom = {34, 39, 48};
constexpr Color s_lowerBandTop = {34, 39, 48};
constexpr Color s_lowerBandBottom = {27, 31, 38};
constexpr Color s_accent = {86, 156, 214};
constexpr Color s_inactiveAccent = {70, 80, 95};
constexpr Color s_title = {232, 236, 242};
constexpr Color s_inactiveTitle = {165, 174, 187};
constexpr Color s_status = {190, 198, 209};
constexpr Color s_powered = {150, 160, 174};
/// @}

/// @name Gadgets
/// @{
constexpr Color s_gadgetStroke = {174, 184, 197};
constexpr Color s_hotStroke = {255, 255, 255};
constexpr Color s_hotGadget = {62, 72, 88};
constexpr Color s_hotClose = {190, 60, 52};
/// @}

/// @name Text area
/// @{
constexpr Color s_paper = {20, 23, 28};
constexpr Color s_trough = {30, 34, 41};
constexpr Color s_thumb = {84, 95, 112};
/// @}

constexpr std::size_t s_numTypes = OutputStream::e_typeDebug + 1;

/// Colours of the output types, by OutputStream::eOutputType. Each has a contrast of at least 4.5 to 1 with the paper.
constexpr std::array<Color, s_numTypes> s_typeColors = {{
    {214, 220, 228}, // info
    {231, 194, 96},  // warning
    {242, 120, 116}, // error
    {240, 160, 92},  // attention
    {110, 198, 224}, // query
    {146, 196, 128}, // echo
    {145, 155, 170}, // debug
}};

} // namespace quillmarsh::console_window

#endif
