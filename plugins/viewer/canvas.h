// A picture as large as a component, drawn pixel by pixel.
#ifndef QUILLMARSH_PLUGINS_VIEWER_CANVAS_H
#define QUILLMARSH_PLUGINS_VIEWER_CANVAS_H

#include <quillmarsh/dataobjects/imagebase.h>
#include <quillmarsh/gui/gui_textures.h>
#include <quillmarsh/mathtools/vector2.h>

#include <memory>
#include <vector>

namespace quillmarsh::gui
{
class Renderer;
}

namespace viewer
{

using quillmarsh::string;

/// A picture in A8R8G8B8 and its textures: tiles of 256 by 256 pixels. Tiles whose pixels are the same as before are not
/// loaded again. Frame thread only.
class Canvas : quillmarsh::NoCopy
{
public:
    Canvas();
    ~Canvas();

    /// Makes the picture this large; its pixels are undefined if the size is a new one.
    void Resize(unsigned int width, unsigned int height);
    /// Returns the picture, to be filled; empty before the first Resize().
    quillmarsh::ImageBase &GetPicture() { return *picture_; }
    /// The picture has been filled anew.
    void Update();
    /// Draws the picture with its corner at a position, in whole pixels. Makes the textures that are missing.
    void Draw(quillmarsh::gui::Renderer &renderer, quillmarsh::vec2 const &position);
    /// Releases all textures; Draw() makes them again.
    void ReleaseTextures();

private:
    class Tile;
    class Release;

    void MakeTiles();

    quillmarsh::AutoPtr<quillmarsh::ImageBase> picture_;
    std::vector<quillmarsh::AutoPtr<Tile>> tiles_;
    /// Points back at this canvas; shared with an object of the GUI manager that may live longer.
    std::shared_ptr<Canvas *> self_;
    string releaseName_;
};

} // namespace viewer

#endif
