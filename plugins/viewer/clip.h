// Drawing inside of a rectangle.
#ifndef QUILLMARSH_PLUGINS_VIEWER_CLIP_H
#define QUILLMARSH_PLUGINS_VIEWER_CLIP_H

#include <quillmarsh/gui/gui_renderer.h>

#include <algorithm>

namespace viewer
{

/// Draws only inside a rectangle of the window, and inside of what was set before, for its own life.
class Clip : quillmarsh::NoCopy
{
public:
    Clip(quillmarsh::gui::Renderer &renderer, quillmarsh::gui::Rectangle const &area)
        : renderer_(renderer),
          hadClip_(renderer.GetClipRectangle(saved_))
    {
        quillmarsh::gui::Rectangle clip = area;
        if (hadClip_)
        {
            float const right = std::min(area.x + area.width, saved_.x + saved_.width);
            float const bottom = std::min(area.y + area.height, saved_.y + saved_.height);
            clip.SetPosition(std::max(area.x, saved_.x), std::max(area.y, saved_.y));
            clip.SetSize(std::max(right - clip.x, 0.0f), std::max(bottom - clip.y, 0.0f));
        }
        renderer_.SetClipRectangle(clip);
    }
    ~Clip()
    {
        if (hadClip_)
            renderer_.SetClipRectangle(saved_);
        else
            renderer_.ResetClipRectangle();
    }

private:
    quillmarsh::gui::Renderer &renderer_;
    quillmarsh::gui::Rectangle saved_ = {0, 0, 0, 0};
    bool hadClip_;
};

} // namespace viewer

#endif
