// Slices through volumes.
#ifndef QUILLMARSH_PLUGINS_VIEWER_MODEL_VOLUMES_SLICES_H
#define QUILLMARSH_PLUGINS_VIEWER_MODEL_VOLUMES_SLICES_H

#include <viewer_model/images/composer.h>

#include <quillmarsh/dataobjects/volumebase.h>
#include <quillmarsh/mathtools/vector3.h>

namespace viewer
{

/// Axis that a slice stands across: its layer, row or column is constant.
enum class eSliceAxis
{
    e_layer,
    e_row,
    e_column
};

/// How the samples of a slab become one.
enum class eProjection
{
    e_slice,
    e_maximum,
    e_mean
};
/// "slice", "maximum", "mean".
std::span<char const *const> GetProjectionNames();

/// Plane through a volume, in samples: the middle of a sample has a whole number plus one half.
struct Plane
{
    /// Point in the middle of the view.
    quillmarsh::vec3 origin;
    /// Steps in the volume for a pixel to the right, and for a pixel down: x columns, y rows, z layers.
    quillmarsh::vec3 right;
    quillmarsh::vec3 down;
};

/// Copies a slice of one axis, or the projection of a slab of `thickness` slices around it, into an image of the volume's
/// format. Layers give rows by columns, rows give layers by columns, columns give layers by rows. The slab is cut to the
/// volume. In a maximum, a NaN gives way to any number. The index is asserted to be in range. A format that is not known
/// gives the slice itself. With a `step` above 1, only the middle one of so many rows and columns of the slice is read:
/// the others of a mapped volume are not touched. A rest at the far end counts as none. `progress` as in
/// ImageLevels::Build(); null when it stops. Any thread.
quillmarsh::AutoPtr<quillmarsh::ImageBase> ExtractSlice(quillmarsh::VolumeBase const &volume, eSliceAxis axis,
                                                        unsigned int index, eProjection projection,
                                                        unsigned int thickness, unsigned int step = 1,
                                                        std::function<bool(double)> const &progress = {});
/// Fills a picture in A8R8G8B8 with the samples that a plane cuts, linearly between the eight nearest. Outside of the
/// volume it gets `background`. Any thread.
void ComposePlane(quillmarsh::ImageBase &picture, quillmarsh::VolumeBase const &volume, Plane const &plane,
                  ToneMap const &tones, Pixel background);

} // namespace viewer

#endif
