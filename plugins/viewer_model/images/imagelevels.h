// An image at halved sizes, of any size.
#ifndef QUILLMARSH_PLUGINS_VIEWER_MODEL_IMAGES_IMAGELEVELS_H
#define QUILLMARSH_PLUGINS_VIEWER_MODEL_IMAGES_IMAGELEVELS_H

#include <viewer_model/samples/content.h>

#include <quillmarsh/dataobjects/imagebase.h>

#include <functional>

namespace viewer
{

/// The image of a content, and the same at half, a quarter and so on of its size, each dimension rounded up, down to one
/// sample. All levels have the format of the image; each is the mean of two by two samples of the one before. Together
/// they take a third of the image's memory. Immutable; any thread.
class ImageLevels : quillmarsh::NoCopy
{
public:
    /// Has the image itself only. The content must be an image.
    explicit ImageLevels(ContentPtr content);
    ~ImageLevels();

    /// Makes all levels. `progress` gets the part that is done, 0 to 1, now and then, and returns false to stop: the
    /// result is null then. Bytes and the fields of words are rounded to the nearest, halves up; at the edges of odd
    /// sizes, the mean is that of the samples there. A format that is not known gets no levels. Throws
    /// NoMemoryException.
    static std::shared_ptr<ImageLevels const> Build(ContentPtr content,
                                                    std::function<bool(double)> const &progress = {});

    /// At least 1.
    unsigned int GetNumLevels() const { return static_cast<unsigned int>(levels_.size()) + 1; }
    /// Level 0 is the image itself. A level past the last one is the last one.
    quillmarsh::ImageBase const &GetLevel(unsigned int level) const;
    /// Returns the level to draw an image at a size of `zoom` pixels for a sample: the smallest one whose samples are no
    /// larger than a pixel, or the last one.
    unsigned int FindLevel(double zoom) const;
    ContentPtr const &GetContent() const { return content_; }

private:
    ContentPtr content_;
    std::vector<quillmarsh::AutoPtr<quillmarsh::ImageBase>> levels_;
};

} // namespace viewer

#endif
