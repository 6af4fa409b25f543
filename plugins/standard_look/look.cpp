#include "look.h"

#include "shaders.h"

#include "look_shapes/marks.h"

#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/gui/gui_cursors.h>
#include <quillmarsh/gui/gui_manager.h>
#include <quillmarsh/gui/gui_standardresources.h>
#include <quillmarsh/gui/gui_textures.h>

#include <algorithm>

namespace standard_look
{
namespace
{

using namespace quillmarsh;
using look_shapes::eMark;

constexpr char s_cursorTexture[] = "look/cursors";
constexpr unsigned int s_cursorTile = 32;

/// Cursors of the widgets: tiles of one texture, from left to right.
struct CursorRow
{
    char const *name;
    eMark mark;
    gui::RectangleCT::eTexTransform transform;
    vec2 hotSpot;
};
constexpr CursorRow s_cursors[] = {
    {widgets::CursorName_Text, eMark::e_caret, gui::RectangleCT::e_tex_none, {0.5f, 0.5f}},
    {widgets::CursorName_Hand, eMark::e_cursorHand, gui::RectangleCT::e_tex_none, {0.4f, 0.05f}},
    {widgets::CursorName_SplitHorizontal, eMark::e_cursorSplit, gui::RectangleCT::e_tex_none, {0.5f, 0.5f}},
    {widgets::CursorName_SplitVertical, eMark::e_cursorSplit, gui::RectangleCT::e_tex_rotate_a, {0.5f, 0.5f}},
};

AutoPtr<gui::TileTexture> DrawCursorTexture()
{
    constexpr auto numTiles = static_cast<unsigned int>(std::size(s_cursors));
    look_shapes::Sheet sheet(numTiles * s_cursorTile, s_cursorTile);
    for (unsigned int i = 0; i < numTiles; ++i)
        DrawMark(sheet, i * s_cursorTile, 0, s_cursors[i].mark, s_cursorTile);
    AutoPtr<ImageBase> const image(ManufactureImage(e_format_A8R8G8B8, sheet.GetHeight(), sheet.GetWidth()));
    for (unsigned int y = 0; y < sheet.GetHeight(); ++y)
    {
        for (unsigned int x = 0; x < sheet.GetWidth(); ++x)
        {
            unsigned char *const texel = image->SampleB(y, x);
            std::fill_n(texel, 3, static_cast<unsigned char>(255));
            texel[3] = sheet.Get(x, y);
        }
    }
    return std::make_unique<gui::TileTexture>(*image, false, 1, numTiles);
}

} // namespace

Look::Look(float scale) : theme_(GetThemes().data())
{
    Measures::SetScale(scale);
    scale_ = Measures::GetScale();
    MakeFonts();
    MakeShaders();
    MakeCursors();
    MakeStandardSet();
    SetAliases();
    UpdateCursors();
}

Look::~Look()
{
    if (!gui::Manager::IsCreated())
        return;
    gui::Manager &manager = gui::Manager::Instance();
    RemoveScale();
    for (ShaderRow const &row : GetShaderRows())
        manager.ClearShaderAlias(row.name);
    for (FontRow const &row : s_fonts)
        manager.ClearFontAlias(row.name);
    for (string const &name : cursors_)
        manager.DeleteCursor(name);
    manager.UnregisterTileTexture(s_cursorTexture);
    for (string const &name : standardFonts_)
        manager.UnregisterFont(name);
}

string Look::MakeFontName(char const *name) const
{
    return string(name) + "@" + MakeString(scale_);
}

string Look::MakeShaderName(char const *name, Theme const &theme) const
{
    return string(name) + "@" + MakeString(scale_) + "/" + theme.name;
}

void Look::MakeFonts()
{
    for (FontRow const &row : s_fonts)
    {
        AutoPtr<gui::FontTexture> font = SheetFont::Make(row, scale_, &row == s_fonts);
        gui::Manager::Instance().RegisterFont(MakeFontName(row.name), font);
    }
}

void Look::MakeShaders()
{
    gui::Manager &manager = gui::Manager::Instance();
    LookShader::FontNames const names = {MakeFontName(widgets::FontName_Text), MakeFontName(widgets::FontName_Small)};
    for (Theme const &theme : GetThemes())
    {
        for (ShaderRow const &row : GetShaderRows())
        {
            string const fontName = MakeFontName(row.font);
            // The manager owns each from its constructor on.
            auto *const shader = new LookShader(MakeShaderName(row.name, theme), row, theme, names);
            auto const *const font = static_cast<SheetFont const *>(manager.GetFont(fontName));
            shader->SetTextAttributes({fontName, font->GetMetrics()});
        }
    }
}

void Look::MakeCursors()
{
    gui::Manager &manager = gui::Manager::Instance();
    AutoPtr<gui::TileTexture> texture = DrawCursorTexture();
    manager.RegisterTileTexture(s_cursorTexture, texture);
    unsigned int column = 0;
    for (CursorRow const &row : s_cursors)
    {
        gui::TileParams tile;
        tile.tileTextureName = s_cursorTexture;
        tile.tileColumn = column++;
        tile.texTransform = row.transform;
        if (manager.GetCursor(row.name) != nullptr)
            continue;
        new gui::ImageCursor(row.name, tile, row.hotSpot, {16, 16}, color4b(255, 255, 255, 255));
        cursors_.push_back(row.name);
    }
}

void Look::MakeStandardSet()
{
    gui::Manager &manager = gui::Manager::Instance();
    ostream &log = GetConOut();
    if (manager.GetTileTexture(gui::std_tile_textures::TileTextureName_Set0) == nullptr)
    {
        string const file = file_system::FindDataFile(gui::std_tile_textures::DefaultFileName_Set0);
        gui::std_tile_textures::RegisterTileTexture_Set0(
            log, true, file.empty() ? gui::std_tile_textures::DefaultFileName_Set0 : file);
    }
    bool const hasTiles = manager.GetTileTexture(gui::std_tile_textures::TileTextureName_Set0) != nullptr;
    if (hasTiles && manager.GetCursor(gui::std_cursors::CursorName_Client) == nullptr)
    {
        gui::std_cursors::RegisterCursors(log);
        hasStandardCursors_ = true;
    }
    constexpr unsigned int sheetWidth = 512;
    if (manager.GetFont(gui::std_fonts::FontName_Default) == nullptr)
    {
        gui::std_fonts::RegisterFont_Default(log, false, sheetWidth, true, gui::std_fonts::FontName_Default);
        standardFonts_.push_back(gui::std_fonts::FontName_Default);
    }
    if (manager.GetFont(gui::std_fonts::FontName_Console) == nullptr)
    {
        gui::std_fonts::RegisterFont_Console(log, false, sheetWidth, true, gui::std_fonts::FontName_Console);
        standardFonts_.push_back(gui::std_fonts::FontName_Console);
    }
}

void Look::SetAliases()
{
    gui::Manager &manager = gui::Manager::Instance();
    for (FontRow const &row : s_fonts)
        manager.AddFontAlias(row.name, MakeFontName(row.name));
    for (ShaderRow const &row : GetShaderRows())
        manager.AddShaderAlias(row.name, MakeShaderName(row.name, *theme_));
}

void Look::UpdateCursors()
{
    if (!hasStandardCursors_)
        return;
    float const size = Measures::Pixels(Measures::MarkSize);
    gui::Cursor::SetGlobalSize({size, size});
    gui::Cursor::SetGlobalColor(theme_->signals.cursor);
}

void Look::RemoveScale()
{
    gui::Manager &manager = gui::Manager::Instance();
    for (Theme const &theme : GetThemes())
    {
        for (ShaderRow const &row : GetShaderRows())
            manager.DeleteShader(MakeShaderName(row.name, theme));
    }
    for (FontRow const &row : s_fonts)
        manager.UnregisterFont(MakeFontName(row.name));
}

bool Look::SetTheme(string const &name)
{
    Theme const *const theme = FindTheme(name);
    if (theme == nullptr)
        return false;
    theme_ = theme;
    SetAliases();
    UpdateCursors();
    return true;
}

void Look::SetScale(float scale)
{
    Measures::SetScale(scale);
    if (Measures::GetScale() == scale_)
        return;
    RemoveScale();
    scale_ = Measures::GetScale();
    MakeFonts();
    MakeShaders();
    SetAliases();
    UpdateCursors();
}

} // namespace standard_look
