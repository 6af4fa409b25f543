#include "deviceboard.h"

#include "clip.h"
#include "controllerpainter.h"

#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/gui/gui_renderer.h>
#include <quillmarsh/widgets/looknames.h>
#include <quillmarsh/widgets/measures.h>

#include <algorithm>
#include <cmath>

namespace viewer
{

using namespace quillmarsh;
using widgets::Measures;

DeviceBoard::DeviceBoard(gui::Component &parent, DeviceWatch const &watch, float width)
    : watch_(watch),
      widthInUnits_(width)
{
    // Nothing is drawn by the shader: it tells the font.
    SetShaderName(widgets::ShaderName_Hint);
    SetGhost(true);
    AttachTo(parent);
}

DeviceBoard::~DeviceBoard() = default;

float DeviceBoard::CalcHeight(float width) const
{
    return Paint(BoardPainter(*this, nullptr), width);
}

void DeviceBoard::Update()
{
    if (CalcHeight(GetSize().x) != GetSize().y)
        ReportDirtyGeometry();
}

void DeviceBoard::RecalcSize()
{
    if (widthInUnits_ <= 0)
        return;
    float const width = Measures::Pixels(widthInUnits_);
    SetSize(width, CalcHeight(width));
}

void DeviceBoard::DrawSelf(gui::Renderer &renderer)
{
    Component const *const frame = widthInUnits_ > 0 ? this : GetParent();
    Clip const clip(renderer, gui::Rectangle(frame->GetAbsolutePosition(), frame->GetSize()));
    BoardPainter const painter(*this, &renderer);
    painter.Fill(0, 0, GetSize().x, std::max(GetSize().y, frame->GetSize().y), s_boardBack);
    Paint(painter, GetSize().x);
}

float DeviceBoard::Paint(BoardPainter const &painter, float width) const
{
    float const gap = Measures::Pixels(Measures::Gap);
    float const lineHeight = painter.GetTextHeight();
    float y = gap;
    if (watch_.GetDevices().empty())
    {
        painter.Text(gap, y, "No input device is there.", s_boardHint, width - 2 * gap);
        return y + lineHeight + gap;
    }
    for (WatchedDevice const &device : watch_.GetDevices())
    {
        // The card is drawn ahead of what is on it, so its height is found first.
        auto const paint = [&](BoardPainter const &with)
        {
            float const left = 2 * gap;
            float const inner = width - 4 * gap;
            float bottom = y + gap;
            string const number = "device " + MakeString(device.number);
            float const numberWidth = with.GetTextWidth(number);
            with.Text(left, bottom, device.title, s_boardText, inner - numberWidth - gap);
            with.Text(left + inner - numberWidth, bottom, number, s_boardHint);
            bottom += lineHeight;
            if (!device.hint.empty())
            {
                with.Text(left, bottom, device.hint, s_boardHint, inner);
                bottom += lineHeight;
            }
            for (WatchedController const &watched : device.controllers)
                bottom = ControllerPainter(with, watched, watch_.GetTime()).Paint(left, bottom + gap / 2, inner);
            return bottom + gap;
        };
        float const bottom = paint(BoardPainter(*this, nullptr));
        painter.Fill(gap, y, width - 2 * gap, bottom - y, s_cardBack);
        if (painter.IsDrawing())
            paint(painter);
        y = bottom + gap;
    }
    return y;
}

ScrolledBoard::ScrolledBoard(gui::Component &parent, DeviceWatch const &watch)
    : board_(new DeviceBoard(*this, watch, 0)),
      bar_(new widgets::ScrollBar(true, this))
{
    bar_->SetWheelStep(static_cast<unsigned int>(Measures::RowHeight));
    bar_->SetAction([this](unsigned int) { ReportDirtyGeometry(); });
    AttachTo(parent);
}

ScrolledBoard::~ScrolledBoard() = default;

void ScrolledBoard::RecalcLayout()
{
    float const barWidth = Measures::Pixels(Measures::ScrollBarWidth);
    float const width = std::max(1.0F, GetSize().x - barWidth);
    float const height = board_->CalcHeight(width);
    bar_->SetPosition(width, 0);
    bar_->SetSize(barWidth, GetSize().y);
    bar_->SetSizes(static_cast<unsigned int>(std::ceil(height)),
                   static_cast<unsigned int>(std::max(1.0F, std::floor(GetSize().y))));
    board_->SetSize(width, height);
    board_->SetPosition(0, -static_cast<float>(bar_->GetScrollPosition()));
}

bool ScrolledBoard::OnMouseWheel(int delta, vec2 const &position)
{
    return bar_->OnMouseWheel(delta, position);
}

} // namespace viewer
