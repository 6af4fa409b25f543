// What the volume room shows: a volume, where it is cut, and how it is seen.
#ifndef QUILLMARSH_PLUGINS_VIEWER_VOLUME_SCENE_H
#define QUILLMARSH_PLUGINS_VIEWER_VOLUME_SCENE_H

#include <viewer_model/files/latestwork.h>
#include <viewer_model/volumes/rotation.h>
#include <viewer_model/volumes/slices.h>
#include <viewer_model/volumes/smallvolume.h>

#include <array>
#include <optional>

namespace viewer::volumes
{

/// Panes of the room. The first three are the axes of eSliceAxis.
enum class ePane
{
    e_layer,
    e_row,
    e_column,
    e_oblique,
    e_turned
};
constexpr unsigned int s_numPanes = 5;
/// "layer", "row", "column", "oblique", "volume", in the order of the enumeration.
std::span<char const *const> GetPaneNames();

/// Settings that outlive the volume. A plain record.
struct VolumeSettings
{
    static constexpr unsigned int s_maxThickness = 4096;

    eProjection projection = eProjection::e_slice;
    unsigned int thickness = 1;
    RotationAngles oblique = {30, 20, 0};
    DisplaySettings tones = {};
    /// Enlarged slices are drawn between samples, and not as squares.
    bool isSmooth = true;
    bool showsCross = true;
    /// The fourth pane has the turned volume, and not the oblique slice.
    bool showsTurned = false;
    /// How much of the light a sample at full value takes away; 1 is medium.
    double density = 1;
    bool followsController = true;
    bool followsTracker = false;
};

/// Column, row and layer of a sample, in this order.
using Cut = std::array<unsigned int, 3>;

/// The volume with the state of its views. Whoever changes it calls Changed(), or a function that does. Frame thread
/// only.
class Scene : quillmarsh::NoCopy
{
public:
    /// `changed` is called when what the panes show is no longer right; `wake` on any thread, when Poll() has something
    /// to do; `failed` with one line.
    Scene(std::function<void()> changed, std::function<void()> const &wake, std::function<void(string const &)> failed);
    ~Scene();

    VolumeSettings &Settings() { return settings_; }
    VolumeSettings const &Settings() const { return settings_; }
    void Changed();
    /// Finishes what threads have made.
    void Poll();

    /// @name The volume
    /// @{
    /// Shows a content; null for none. Another one is shown as a whole, and cut in its middle.
    void SetContent(ContentPtr content, bool isOther);
    ContentPtr const &GetContent() const { return content_; }
    /// Null if there is none.
    quillmarsh::VolumeBase const *GetVolume() const { return volume_; }
    /// Number of columns, rows, layers by an index of Cut.
    unsigned int GetSize(std::size_t axis) const;
    quillmarsh::vec3 GetSize() const;
    /// Largest nominal value of the channel that shows, for settings in the numbers of the format.
    double GetLargest() const;
    ToneMap const &GetTones();
    /// @}

    /// @name Where it is cut
    /// @{
    Cut const &GetCut() const { return cut_; }
    /// Sets the cut, within the volume.
    void SetCut(Cut const &cut);
    /// The same for a place in samples.
    void SetCutAt(quillmarsh::vec3 const &place);
    /// Middle of the sample at the cut.
    quillmarsh::vec3 GetCutPlace() const;
    /// @}

    /// @name Zoom and place
    /// All panes have the same zoom, and look at the same place.
    /// @{
    static constexpr double s_minZoom = 1.0 / 64;
    static constexpr double s_maxZoom = 64;
    /// Pixels for a sample. `fit` is what would show the whole volume in all panes.
    double GetZoom() const { return fits_ ? fitZoom_ : zoom_; }
    bool Fits() const { return fits_; }
    void SetZoom(double zoom);
    void Fit();
    void SetFitZoom(double zoom);
    /// Place in the middle of the panes, in samples.
    quillmarsh::vec3 const &GetFocus() const { return focus_; }
    void SetFocus(quillmarsh::vec3 const &focus);
    /// @}

    /// @name Slices
    /// @{
    /// A slice with its smaller levels. One of a very large volume may have only each `step`-th row and column.
    struct Slice
    {
        std::shared_ptr<ImageLevels const> levels;
        unsigned int step = 1;
    };
    /// Returns a slice of an axis: the one at the cut, or while a thread makes that, an older one. Without levels if
    /// there is none yet.
    Slice GetSlice(eSliceAxis axis);
    bool IsSlicePending(eSliceAxis axis) const;
    /// Returns the oblique plane for the size of a view.
    Plane GetObliquePlane(float zoom) const;
    Rotation GetObliqueRotation() const { return MakeRotation(settings_.oblique); }
    /// Fills a picture with the oblique slice, or with an older one while a thread makes it. Returns false if there is
    /// none of this size yet.
    bool ComposeOblique(quillmarsh::ImageBase &picture, Pixel background);
    /// @}

    /// @name The turned volume
    /// @{
    Rotation const &GetRotation() const { return rotation_; }
    void SetRotation(Rotation const &rotation);
    double GetTurnZoom() const { return turnZoom_; }
    void SetTurnZoom(double zoom);
    /// Returns the small volume; null while it is being made.
    SmallVolumePtr const &GetSmallVolume();
    /// Counts small volumes.
    unsigned int GetSmallRevision() const { return smallRevision_; }
    /// Fills a picture with the greatest values along the line of sight, as ComposeOblique() does.
    bool ComposeTurned(quillmarsh::ImageBase &picture, Pixel background);
    /// @}

    /// @name Window of the tones
    /// @{
    /// Sets black and white to the extremes of the small volume, as soon as it is there.
    void FitWindow();
    /// @}

private:
    struct SliceKey
    {
        unsigned int index = 0;
        eProjection projection = eProjection::e_slice;
        unsigned int thickness = 1;
        unsigned int step = 1;
        bool operator==(SliceKey const &) const = default;
        /// The same slice, and at least as fine.
        bool Covers(SliceKey const &other) const;
    };
    struct SliceSlot
    {
        std::shared_ptr<ImageLevels const> levels;
        unsigned int levelsStep = 1;
        /// Of `levels`, and of what a thread makes.
        std::optional<SliceKey> shown;
        std::optional<SliceKey> wished;
    };
    /// A picture that a thread makes at the size of a pane, and the number of the state that it shows.
    struct PictureSlot
    {
        std::shared_ptr<quillmarsh::ImageBase> picture;
        unsigned int shown = 0;
        unsigned int wished = 0;
    };
    using Compose = std::function<void(quillmarsh::ImageBase &picture)>;

    SliceKey MakeKey(eSliceAxis axis) const;
    bool IsQuick(eSliceAxis axis, SliceKey const &key) const;
    void RenewSlice(eSliceAxis axis, SliceSlot &slot);
    void WishSlice(eSliceAxis axis, SliceKey const &key);
    bool TakePicture(PictureSlot &slot, unsigned int purpose, quillmarsh::ImageBase &picture, Compose compose);
    void DropAll();
    LatestWork &GetWork(unsigned int purpose);

    std::function<void()> changed_;
    std::function<void(string const &)> failed_;
    /// A column slice may read all of a volume: each kind of work has a thread, so that none waits for another.
    std::array<LatestWork, 4> works_;
    VolumeSettings settings_;
    ContentPtr content_;
    quillmarsh::VolumeBase const *volume_ = nullptr;
    Cut cut_ = {0, 0, 0};
    quillmarsh::vec3 focus_ = {0, 0, 0};
    double zoom_ = 1;
    double fitZoom_ = 1;
    bool fits_ = true;
    std::array<SliceSlot, 3> slices_;
    PictureSlot obliquePicture_;
    PictureSlot turnedPicture_;
    /// Counts calls of Changed().
    unsigned int revision_ = 1;
    std::shared_ptr<ToneMap const> tones_;
    DisplaySettings tonesSettings_;
    Rotation rotation_;
    double turnZoom_ = 1;
    SmallVolumePtr small_;
    int smallChannel_ = -1;
    bool isSmallWished_ = false;
    unsigned int smallRevision_ = 0;
    bool isWindowToFit_ = false;
};

} // namespace viewer::volumes

#endif
