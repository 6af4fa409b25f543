#include "source/gui/consolewindowview.h"

#include <quillmarsh/basetools/libraryinfo.h>

#include <algorithm>
#include <cmath>

namespace quillmarsh::console_window
{
namespace
{

using platform::PixelRows;
using platform::drawing::Canvas;
using platform::drawing::Font;

constexpr float s_fontSize = 16;
constexpr unsigned short s_ellipsis = 0x2026;
/// Characters of a title or status that are looked at.
constexpr std::size_t s_maxLabelLength = 512;

/// Makes a font; null when the system has neither the family nor any other one.
AutoPtr<Font> MakeFont(char const *family)
{
    auto font = std::make_unique<Font>(platform::drawing::FontFace{family}, s_fontSize);
    if (!font->IsValid())
        font = std::make_unique<Font>(platform::drawing::GetMonospaceFace(), s_fontSize);
    if (!font->IsValid())
        font.reset();
    return font;
}

wstring ToLabel(string const &text)
{
    std::string_view rest = std::string_view(text).substr(0, s_maxLabelLength);
    wstring label, cluster;
    while (!rest.empty())
    {
        TakeCluster(rest, cluster);
        label += cluster;
    }
    return label;
}

Color Mix(Color from, Color to, int part, int whole)
{
    auto const mix = [=](unsigned char a, unsigned char b)
    { return static_cast<unsigned char>(a + (b - a) * part / whole); };
    return {mix(from.red, to.red), mix(from.green, to.green), mix(from.blue, to.blue)};
}

void FillGradient(Canvas &canvas, Rect const &rect, Color top, Color bottom)
{
    for (int y = 0; y < rect.height; ++y)
        canvas.FillRectangle({rect.x, rect.y + y, rect.width, 1}, Mix(top, bottom, y, std::max(rect.height - 1, 1)));
}

/// Draws the border of a rectangle, one pixel wide and inside of it.
void DrawBorder(Canvas &canvas, Rect const &rect, Color color)
{
    canvas.FillRectangle({rect.x, rect.y, rect.width, 1}, color);
    canvas.FillRectangle({rect.x, rect.y + rect.height - 1, rect.width, 1}, color);
    canvas.FillRectangle({rect.x, rect.y, 1, rect.height}, color);
    canvas.FillRectangle({rect.x + rect.width - 1, rect.y, 1, rect.height}, color);
}

void DrawSymbol(Canvas &canvas, Area area, Rect const &box, bool isMaximized, Color color)
{
    int const x = box.x, y = box.y;
    auto const left = static_cast<float>(x), top = static_cast<float>(y);
    switch (area)
    {
    case TopLevelWindow::e_area_close:
        canvas.DrawLine({left + 3.5f, top + 3.5f}, {left + 12.5f, top + 12.5f}, 1.6f, color);
        canvas.DrawLine({left + 12.5f, top + 3.5f}, {left + 3.5f, top + 12.5f}, 1.6f, color);
        return;
    case TopLevelWindow::e_area_maximize:
        if (!isMaximized)
            return DrawBorder(canvas, {x + 3, y + 3, 10, 10}, color);
        canvas.FillRectangle({x + 6, y + 3, 7, 1}, color);
        canvas.FillRectangle({x + 12, y + 3, 1, 7}, color);
        return DrawBorder(canvas, {x + 3, y + 6, 7, 7}, color);
    case TopLevelWindow::e_area_minimize:
        return canvas.FillRectangle({x + 3, y + 11, 10, 2}, color);
    default:
        for (int bar = 0; bar < 3; ++bar)
            canvas.FillRectangle({x + 3, y + 4 + bar * 4, 10, 1}, color);
    }
}

void DrawBar(Canvas &canvas, ScrollGadget const &gadget, bool isVertical)
{
    if (!gadget.IsVisibleLessThanTotal() || gadget.GetBarLength() <= 2)
        return;
    auto const place = [&gadget, isVertical](unsigned int offset, unsigned int length) -> Rect
    {
        int const x = gadget.GetBarPosX(), y = gadget.GetBarPosY(), width = static_cast<int>(gadget.GetBarWidth());
        int const from = static_cast<int>(offset), size = static_cast<int>(length);
        return isVertical ? Rect{x, y + from, width, size} : Rect{x + from, y, size, width};
    };
    canvas.FillRectangle(place(0, gadget.GetBarLength()), s_trough);
    Rect const thumb = place(gadget.GetThumbOffset(), gadget.GetThumbLength());
    // The thumb is a little narrower than the bar, and has no sharp corners.
    Rect const body = isVertical ? Rect{thumb.x + 1, thumb.y, thumb.width - 2, thumb.height}
                                 : Rect{thumb.x, thumb.y + 1, thumb.width, thumb.height - 2};
    Color const corner = Mix(s_trough, s_thumb, 1, 2);
    canvas.FillRectangle(body, s_thumb);
    for (int side = 0; side < 4; ++side)
        canvas.FillRectangle(
            {side % 2 == 0 ? body.x : body.x + body.width - 1, side < 2 ? body.y : body.y + body.height - 1, 1, 1},
            corner);
}

} // namespace

void ViewState::CopyLines(ConsoleOutputBuffer const *source)
{
    numLines = source ? std::min(vertical.GetVisibleSize(), source->GetNumLines()) : 0;
    if (source)
        numLines = std::min(numLines, source->GetNumLines() - std::min(vertical.GetPosition(), source->GetNumLines()));
    lines.resize(std::max<std::size_t>(lines.size(), numLines));
    for (unsigned int i = 0; i < numLines; ++i)
    {
        string const &text = source->GetLine(vertical.GetPosition() + i, lines[i].type);
        lines[i].text = GetColumns(text, horizontal.GetPosition(), horizontal.GetVisibleSize());
    }
}

ConsoleWindowView::ConsoleWindowView()
    : poweredBy_("powered by " + library_info::GetLibraryName()),
      frameFont_(MakeFont("Tahoma")),
      textFont_(MakeFont("Courier New"))
{
    if (textFont_)
        cells_ = std::make_unique<CellPainter>(*textFont_, s_paper);
}

ConsoleWindowView::~ConsoleWindowView() = default;

unsigned int ConsoleWindowView::GetNumVisibleLines(int width, int height) const
{
    int const lineHeight = cells_ ? cells_->GetCellHeight() : static_cast<int>(s_fontSize);
    return static_cast<unsigned int>(std::max(GetTextArea(width, height).height / lineHeight, 1));
}

unsigned int ConsoleWindowView::GetNumVisibleColumns(int width, int height) const
{
    int const columnWidth = cells_ ? cells_->GetCellWidth() : static_cast<int>(s_fontSize);
    return static_cast<unsigned int>(std::max(GetTextArea(width, height).width / columnWidth, 1));
}

void ConsoleWindowView::PlaceBars(ScrollGadget &horizontal, ScrollGadget &vertical, int width, int height)
{
    auto const place = [](ScrollGadget &gadget, Rect const &bar, int length, int barWidth)
    {
        gadget.SetBarPosX(bar.x);
        gadget.SetBarPosY(bar.y);
        gadget.SetBarLength(static_cast<unsigned int>(std::max(length, 1)));
        gadget.SetBarWidth(static_cast<unsigned int>(barWidth));
        gadget.SetMinThumbLength(static_cast<unsigned int>(std::clamp(length, 1, s_minThumbLength)));
        gadget.SetMaxPixelsPerStep(static_cast<unsigned int>(s_gadgetSize));
        gadget.UpdateThumbParameters();
    };
    Rect const right = GetVerticalBar(width, height);
    place(vertical, right, right.height, right.width);
    Rect const below = GetHorizontalBar(width, height);
    place(horizontal, below, below.width, below.height);
}

void ConsoleWindowView::Render(PixelRows const &pixels, ViewState const &state)
{
    int const width = static_cast<int>(pixels.numColumns), height = static_cast<int>(pixels.numRows);
    Canvas canvas(pixels);
    RenderTextArea(pixels, canvas, state);
    RenderFrameArea(canvas, state, width, height);
}

void ConsoleWindowView::RenderTextArea(PixelRows const &pixels, Canvas &canvas, ViewState const &state)
{
    int const width = static_cast<int>(pixels.numColumns), height = static_cast<int>(pixels.numRows);
    Rect const client = GetClient(width, height);
    Rect const text = GetTextArea(width, height);
    if (client.height == 0)
        return;
    int const bottom = client.y + client.height;
    if (text.height == 0 || !cells_)
        return canvas.FillRectangle(client, s_paper);
    // Rows of text are opaque: only what is around them is filled.
    int const rowHeight = cells_->GetCellHeight();
    int const numRows = std::min(static_cast<int>(state.numLines), text.height / rowHeight);
    int const textBottom = text.y + numRows * rowHeight;
    canvas.FillRectangle({0, client.y, width, text.y - client.y}, s_paper);
    canvas.FillRectangle({0, text.y, text.x, textBottom - text.y}, s_paper);
    canvas.FillRectangle({text.x + text.width, text.y, width - text.x - text.width, textBottom - text.y}, s_paper);
    canvas.FillRectangle({0, textBottom, width, bottom - textBottom}, s_paper);
    for (int i = 0; i < numRows; ++i)
    {
        ViewState::Line const &line = state.lines[static_cast<std::size_t>(i)];
        Color const color = state.colors[line.type < s_numTypes ? line.type : OutputStream::e_typeInfo];
        cells_->DrawRow(pixels, {text.x, text.y + i * rowHeight, text.width, rowHeight}, line.text, color);
    }
    DrawBar(canvas, state.vertical, true);
    DrawBar(canvas, state.horizontal, false);
}

void ConsoleWindowView::RenderFrameArea(Canvas &canvas, ViewState const &state, int width, int height)
{
    int const split = std::min(s_bandHeight, height / 2);
    int const lower = std::max(height - s_bandHeight, split);
    FillGradient(canvas, {0, 0, width, split}, s_upperBandTop, s_upperBandBottom);
    FillGradient(canvas, {0, lower, width, height - lower}, s_lowerBandTop, s_lowerBandBottom);
    Color const accent = state.isActive ? s_accent : s_inactiveAccent;
    if (IsSplashSize(width, height))
        canvas.FillRectangle({s_margin + s_textMargin, split, width - 2 * (s_margin + s_textMargin), 1}, accent);
    else
    {
        canvas.FillRectangle({0, split - 1, width, 1}, s_border);
        canvas.FillRectangle({0, lower, width, 1}, s_border);
    }
    DrawBorder(canvas, {0, 0, width, height}, s_border);
    canvas.FillRectangle({0, 0, width, 2}, accent);
    RenderLabels(canvas, state, width, height);
    RenderGadgets(canvas, state, width, height);
}

void ConsoleWindowView::RenderGadgets(Canvas &canvas, ViewState const &state, int width, int height)
{
    for (GadgetRow const &row : s_gadgets)
    {
        if (row.isOptional && !state.hasCloseGadget)
            continue;
        Rect const box = GetGadget(row, width, height);
        bool const isHot = state.hotArea == row.area;
        if (isHot)
            canvas.FillRectangle({box.x - 4, box.y - 4, box.width + 8, box.height + 8},
                                 row.area == TopLevelWindow::e_area_close ? s_hotClose : s_hotGadget);
        DrawSymbol(canvas, row.area, box, state.isMaximized, isHot ? s_hotStroke : s_gadgetStroke);
    }
}

ConsoleWindowView::FrameTexts ConsoleWindowView::PlaceTexts(ViewState const &state, int width, int height)
{
    int const margin = IsSplashSize(width, height) ? s_margin + s_textMargin : s_margin;
    int const poweredWidth = static_cast<int>(std::ceil(frameFont_->MeasureText(ToLabel(poweredBy_))));
    int const titleWidth = static_cast<int>(std::ceil(frameFont_->MeasureText(ToLabel(state.title))));
    // The title goes before the name of the library.
    bool const hasRoom = titleWidth + poweredWidth + s_margin <= width - 2 * margin;
    FrameTexts texts = {};
    int const reserved = hasRoom ? poweredWidth + s_margin : 0;
    texts.title = {margin, 2, std::max(width - 2 * margin - reserved, 0), s_bandHeight - 2};
    if (hasRoom)
        texts.powered = {width - margin - poweredWidth, 2, poweredWidth, s_bandHeight - 2};
    int const statusLeft = state.hasCloseGadget ? margin + s_gadgetSize + s_margin : margin;
    int const statusRight = width - 96 - s_margin;
    texts.status = {statusLeft, height - s_bandHeight, std::max(statusRight - statusLeft, 0), s_bandHeight};
    return texts;
}

void ConsoleWindowView::RenderLabels(Canvas &canvas, ViewState const &state, int width, int height)
{
    if (!frameFont_)
        return;
    FrameTexts const texts = PlaceTexts(state, width, height);
    DrawLabel(canvas, state.title, texts.title, state.isActive ? s_title : s_inactiveTitle);
    DrawLabel(canvas, poweredBy_, texts.powered, s_powered);
    DrawLabel(canvas, state.status, texts.status, s_status);
}

void ConsoleWindowView::DrawLabel(Canvas &canvas, string const &text, Rect const &place, Color color)
{
    if (text.empty() || place.width <= 0)
        return;
    wstring label = ToLabel(text);
    if (std::ceil(frameFont_->MeasureText(label)) > static_cast<float>(place.width))
    {
        // The longest beginning that has room together with an ellipsis.
        std::size_t fits = 0, tooLong = label.size();
        while (fits + 1 < tooLong)
        {
            std::size_t const middle = (fits + tooLong) / 2;
            wstring const beginning = label.substr(0, middle) + wstring(1, s_ellipsis);
            bool const hasRoom = frameFont_->MeasureText(beginning) <= static_cast<float>(place.width);
            (hasRoom ? fits : tooLong) = middle;
        }
        label = label.substr(0, fits) + wstring(1, s_ellipsis);
    }
    canvas.DrawText(label, *frameFont_,
                    {static_cast<float>(place.x), static_cast<float>(place.y), static_cast<float>(place.width),
                     static_cast<float>(place.height)},
                    false, color);
}

} // namespace quillmarsh::console_window
