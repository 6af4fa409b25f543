// The picture of the workbench.
#ifndef QUILLMARSH_PLUGINS_WORKBENCH_BENCHPICTURE_H
#define QUILLMARSH_PLUGINS_WORKBENCH_BENCHPICTURE_H

#include "balls.h"
#include "databench.h"

#include <quillmarsh/gui/gui_fonts.h>
#include <quillmarsh/gui/gui_renderer.h>

namespace workbench
{

/// Draws the balls, a line of text, and the loaded image. Frame thread only.
class BenchPicture
{
public:
    /// Borrows the balls and the data, which must outlive this object.
    BenchPicture(Balls const &balls, DataBench const &data);

    /// @name Life, as the application's hooks of these names
    /// @{
    void ConnectVideoRenderer(quillmarsh::VideoRenderer &renderer) { renderer_ = &renderer; }
    void DisconnectVideoRenderer() { renderer_ = nullptr; }
    void CreateVideoResources();
    void ReleaseVideoResources();
    /// @}

    /// Draws a frame; does nothing without a renderer.
    void Draw();

private:
    void DrawBalls(quillmarsh::gui::Renderer &renderer);
    void DrawText(quillmarsh::gui::Renderer &renderer);
    void DrawImage(quillmarsh::gui::Renderer &renderer);
    /// Makes the texture of the loaded image, if it is another one than before.
    void UpdateImage();

    Balls const &balls_;
    DataBench const &data_;
    quillmarsh::VideoRenderer *renderer_ = nullptr;
    bool hasResources_ = false;

    quillmarsh::gui::Texture ballTexture_;
    quillmarsh::AutoPtr<quillmarsh::gui::FontTexture> font_;
    /// The loaded image; null without one.
    quillmarsh::AutoPtr<quillmarsh::gui::Texture> image_;
    unsigned int imageRevision_ = 0;
    /// Size of the image itself, in pixels.
    quillmarsh::vec2 imageSize_ = quillmarsh::vec2::ZERO;
    quillmarsh::string text_;
};

} // namespace workbench

#endif
