// What the image room shows, and how.
#ifndef QUILLMARSH_PLUGINS_VIEWER_IMAGE_IMAGESTATE_H
#define QUILLMARSH_PLUGINS_VIEWER_IMAGE_IMAGESTATE_H

#include "comparison.h"
#include "figurestask.h"
#include "measurement.h"

#include <viewer_model/images/imageplace.h>

namespace viewer
{

/// What a drag with the left button does in the view.
enum class eImageTool
{
    e_pan,
    e_line,
    e_rectangle
};
/// "pan", "line", "rectangle", in the order of the enumeration.
std::span<char const *const> GetImageToolNames();

/// What the histogram shows. A plain record.
struct HistogramSettings
{
    bool isShown = true;
    bool isLogarithmic = false;
    /// Of what is in view, and not of the whole image.
    bool isOfView = false;

    bool operator==(HistogramSettings const &) const = default;
};

/// The current image with its place and settings. View, inspector and commands share it; whoever changes it calls
/// Change(). Frame thread only.
class ImageState : quillmarsh::NoCopy
{
public:
    explicit ImageState(Workspace &workspace);

    Workspace &GetWorkspace() { return workspace_; }

    /// @name The image
    /// @{
    /// Shows the image of a document; null for none. A content of the same size keeps its place.
    void Show(DocumentPtr const &document);
    LoadedPtr const &GetLoaded() const { return loaded_; }
    /// Null while there is none.
    ImageLevelsPtr GetLevels() const { return loaded_ != nullptr ? loaded_->imageLevels : nullptr; }
    quillmarsh::ImageBase const *GetImage() const;
    quillmarsh::eSampleFormat GetFormat() const;
    /// Of the document.
    string const &GetTitle() const { return title_; }
    /// Throws a DataException when there is none.
    quillmarsh::ImageBase const &RequireImage() const;
    /// @}

    /// @name Settings
    /// @{
    ImagePlace place;
    DisplaySettings display;
    /// Level that is drawn; -1 for the one that fits.
    int level = -1;
    eImageTool tool = eImageTool::e_pan;
    HistogramSettings histogram;
    Comparison comparison;
    /// Window from the least to the greatest value, as soon as figures are there.
    void SetWindowByFigures();
    /// Settings for an image of another format: the same channel there, or all.
    DisplaySettings GetDisplayFor(quillmarsh::eSampleFormat format) const;
    /// @}

    /// @name Figures
    /// @{
    std::optional<Measurement> const &GetMeasurement() const { return measurement_; }
    /// Measures anew; nothing for no measurement. `isFinal` is false while the mouse draws it.
    void Measure(std::optional<Measurement> const &measurement, bool isFinal = true);
    /// Null while they are computed.
    Figures const *GetMeasured() const { return measured_ ? &*measured_ : nullptr; }
    /// Figures of the image, or of what is in view; null while there are none.
    Figures const *GetFigures() const { return figures_ ? &*figures_ : nullptr; }
    /// Computes the figures, also while no histogram shows them.
    void RequestFigures();
    /// What is in view, in samples.
    SampleArea GetVisibleArea() const;
    /// @}

    /// @name Changes
    /// @{
    /// What is drawn has changed: asks for a frame.
    void Change();
    /// The image lies in another place.
    void ChangePlace();
    /// Marks and texts over the picture have changed.
    void ChangeMarks();
    /// Counts changes of the picture, without those of its place.
    unsigned int GetRevision() const { return revision_; }
    unsigned int GetPlaceRevision() const { return placeRevision_; }
    /// Once a frame.
    void Update(double seconds);
    /// Stops all work, ahead of the workspace's end. Nothing may be called any more: views and widgets live longer.
    void Close();
    /// @}

private:
    /// What the figures are of.
    struct FiguresKey
    {
        ContentPtr content;
        SampleArea area;

        bool operator==(FiguresKey const &) const = default;
    };

    void UpdateFigures(double seconds);
    void TakeFigures(Figures const &figures);
    void ApplyWindow();

    Workspace &workspace_;
    LoadedPtr loaded_;
    string title_;
    quillmarsh::eSampleFormat lastFormat_ = quillmarsh::e_format_none;
    std::optional<Measurement> measurement_;
    std::optional<Figures> measured_;
    FiguresTask measureTask_;
    std::optional<Figures> figures_;
    FiguresKey figuresKey_;
    FiguresTask figuresTask_;
    /// Seconds since the area of the figures has changed.
    double restTime_ = 0;
    SampleArea lastArea_;
    bool wantsFigures_ = false;
    bool wantsWindow_ = false;
    unsigned int revision_ = 0;
    unsigned int placeRevision_ = 0;
};

} // namespace viewer

#endif
