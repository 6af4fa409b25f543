// What fills the middle of the viewer's window.
#ifndef QUILLMARSH_PLUGINS_VIEWER_VIEW_H
#define QUILLMARSH_PLUGINS_VIEWER_VIEW_H

#include "canvas.h"

#include <quillmarsh/gui/gui_component.h>
#include <quillmarsh/widgets/looknames.h>

namespace viewer
{

using quillmarsh::string;

/// A component that composes a picture of its own size when something has changed, and draws marks and texts over it.
/// Its size is set by the parent. It draws nothing outside of itself. Frame thread only.
class View : public quillmarsh::gui::Component
{
public:
    explicit View(quillmarsh::gui::Component *parent);
    ~View() override;

    /// The picture is no longer right: Compose() comes before the next drawing.
    void Invalidate();

    void DrawSelf(quillmarsh::gui::Renderer &renderer) override;
    void OnVideoRendererChanged(quillmarsh::VideoRenderer *renderer) override;
    void UpdateGeometryCache() override;

protected:
    /// Fills the picture, in A8R8G8B8 with alpha 255; it has the component's size in whole pixels, at least 1 by 1.
    virtual void Compose(quillmarsh::ImageBase &picture) = 0;
    /// Draws marks and texts over the picture, with (0, 0) as the component's corner. The clip rectangle is the
    /// component's area. By default nothing.
    virtual void DrawOver(quillmarsh::gui::Renderer &renderer);
    /// Draws a line of small text on a dark strip, which can be read on any picture; glyph codes are made of the UTF-8
    /// text. `position` is the text's corner; the strip is a little larger. Returns the text's width in pixels.
    float DrawNote(quillmarsh::gui::Renderer &renderer, quillmarsh::vec2 const &position, string const &text,
                   quillmarsh::color4b color = {255, 255, 255, 255}) const;
    /// Draws such a line without the dark edge, for plain ground. Returns its width likewise.
    float DrawLabel(quillmarsh::gui::Renderer &renderer, quillmarsh::vec2 const &position, string const &text,
                    quillmarsh::color4b color) const;

private:
    float DrawTextLine(quillmarsh::gui::Renderer &renderer, quillmarsh::vec2 const &position, string const &text,
                       quillmarsh::color4b color, bool onStrip) const;

    Canvas canvas_;
    bool isInvalid_ = true;
};

} // namespace viewer

#endif
