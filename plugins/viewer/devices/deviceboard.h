// Shows what the devices read.
#ifndef QUILLMARSH_PLUGINS_VIEWER_DEVICES_DEVICEBOARD_H
#define QUILLMARSH_PLUGINS_VIEWER_DEVICES_DEVICEBOARD_H

#include "boardpainter.h"
#include "devicewatch.h"

#include <quillmarsh/widgets/scrollbar.h>

namespace viewer
{

/// A card for each device, one below the other: bars and traces of its axes, buttons, hats, keys, gestures, and the pose
/// of a tracker. Its height is that of the cards. Frame thread only.
class DeviceBoard : public quillmarsh::gui::Component
{
public:
    /// The watch is borrowed, and may go ahead of this board, which is not drawn after that. `width` is in units; 0 for
    /// a parent that sets the width.
    DeviceBoard(quillmarsh::gui::Component &parent, DeviceWatch const &watch, float width);
    ~DeviceBoard() override;

    /// Height that the cards need at a width, in pixels.
    float CalcHeight(float width) const;
    /// Reports its geometry dirty if the cards have another height than before. Once a frame while it shows.
    void Update();

    string GetCaption() const override { return watch_.Describe(); }
    void RecalcSize() override;
    void DrawSelf(quillmarsh::gui::Renderer &renderer) override;

private:
    float Paint(BoardPainter const &painter, float width) const;

    DeviceWatch const &watch_;
    float widthInUnits_;
};

/// A board that scrolls inside of its parent. Frame thread only.
class ScrolledBoard : public quillmarsh::gui::Component
{
public:
    ScrolledBoard(quillmarsh::gui::Component &parent, DeviceWatch const &watch);
    ~ScrolledBoard() override;

    DeviceBoard &GetBoard() { return *board_; }

    void RecalcLayout() override;
    using Component::OnMouseWheel;
    bool OnMouseWheel(int delta, vec2 const &position) override;

private:
    DeviceBoard *board_;
    quillmarsh::widgets::ScrollBar *bar_;
};

} // namespace viewer

#endif
