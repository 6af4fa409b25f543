// The image of a texture's source while it is in use.
#ifndef QUILLMARSH_SOURCE_GUI_SOURCEIMAGE_H
#define QUILLMARSH_SOURCE_GUI_SOURCEIMAGE_H

#include <quillmarsh/gui/gui_textures.h>

namespace quillmarsh::gui
{

/// Generates the image of a texture's source, and releases it at the end of the scope.
class SourceImageSentry : NoCopy
{
public:
    explicit SourceImageSentry(Texture &texture) : texture_(texture), image_(texture.GenerateSourceImage(originBottom_))
    {
    }
    ~SourceImageSentry()
    {
        if (image_)
            texture_.ReleaseSourceImage(image_);
    }

    /// Returns the image; null if there is none.
    ImageBase const *Get() const { return image_; }
    /// True when the first row of the image is its bottom.
    bool IsOriginBottom() const { return originBottom_; }

private:
    Texture &texture_;
    bool originBottom_ = false;
    ImageBase *image_;
};

} // namespace quillmarsh::gui

#endif
