// The view of images: zooming, moving, measuring, comparing by mouse.
#ifndef QUILLMARSH_PLUGINS_VIEWER_IMAGE_IMAGEVIEW_H
#define QUILLMARSH_PLUGINS_VIEWER_IMAGE_IMAGEVIEW_H

#include "../view.h"

#include "panes.h"
#include "samplemarks.h"

#include <optional>

namespace viewer
{

/// Draws the current image and the marks over it. The wheel zooms about the mouse, a drag does what the tool says:
/// with shift it measures a rectangle, with control a line, with the middle button it moves the image. Frame thread
/// only.
class ImageView : public View
{
public:
    ImageView(quillmarsh::gui::Component *parent, std::shared_ptr<ImageState> state);
    ~ImageView() override;

    /// Once a frame, in seconds.
    void Update(double seconds);
    /// Position and values under the mouse, zoom, size.
    string GetStatus() const;

    void DrawSelf(quillmarsh::gui::Renderer &renderer) override;
    bool CacheCursorHandles(quillmarsh::gui::Manager &manager) override;
    bool OnMouseQueryCursor(quillmarsh::gui::Cursor const *&cursor, quillmarsh::gui::eCommandArea area,
                            quillmarsh::vec2 const &position) override;
    bool OnMouseCapture(bool begin) override;
    bool OnMouseEnterExit(bool enter, bool direct, quillmarsh::vec2 const &position) override;
    bool OnMouseMove(bool hover, double hoverSeconds, quillmarsh::vec2 const &position) override;
    using Component::OnMouseWheel;
    bool OnMouseWheel(int delta, quillmarsh::vec2 const &position) override;
    using Component::OnMouseButton;
    bool OnMouseButton(bool down, quillmarsh::eMouseButton button, bool doubleClick, unsigned int repeatCount,
                       quillmarsh::vec2 const &position) override;

protected:
    void Compose(quillmarsh::ImageBase &picture) override;
    void DrawOver(quillmarsh::gui::Renderer &renderer) override;

private:
    /// What the mouse drags.
    enum class eDrag
    {
        e_none,
        e_image,
        e_measurement,
        e_divider
    };
    /// What a part of the last picture shows, to move it instead of making it anew.
    struct LastPane
    {
        ImageLevelsPtr levels;
        PixelArea area;
        double zoom = 0;
        /// Place of the image's corner in whole pixels.
        long left = 0;
        long top = 0;
    };
    struct LastPicture
    {
        unsigned int revision = 0;
        Pixel background = 0;
        unsigned int width = 0;
        unsigned int height = 0;
        std::vector<LastPane> panes;
    };
    /// A position in an image.
    struct ImagePosition
    {
        Pane const *pane;
        double x;
        double y;
    };

    /// @name Picture
    /// @{
    void ComposePane(quillmarsh::ImageBase &picture, Pane const &pane, PixelArea const &area) const;
    LastPicture DescribePicture(unsigned int width, unsigned int height) const;
    bool CanMovePicture(LastPicture const &next) const;
    void MovePane(quillmarsh::ImageBase &picture, std::size_t index, LastPicture const &next) const;
    ToneMap const &GetTones(Pane const &pane) const;
    /// @}

    /// @name Marks
    /// @{
    void DrawTitles(quillmarsh::gui::Renderer &renderer);
    void DrawDivision(quillmarsh::gui::Renderer &renderer) const;
    void DrawScale(quillmarsh::gui::Renderer &renderer);
    void DrawMeasurement(quillmarsh::gui::Renderer &renderer);
    void DrawTwinOfMouse(quillmarsh::gui::Renderer &renderer) const;
    /// @}

    /// @name Mouse
    /// @{
    std::optional<ImagePosition> FindPosition(quillmarsh::vec2 const &position) const;
    eDrag ChooseDrag(quillmarsh::eMouseButton button, quillmarsh::vec2 const &position);
    bool IsOnDivider(quillmarsh::vec2 const &position) const;
    /// Shows the samples under the mouse one by one, or the whole image.
    bool ToggleFit(quillmarsh::vec2 const &position);
    void DragTo(quillmarsh::vec2 const &position);
    void EndDrag();
    string FormatValues() const;
    /// @}

    std::shared_ptr<ImageState> state_;
    std::vector<Pane> panes_;
    SampleMarks marks_;
    LastPicture last_;
    unsigned int revision_ = 0;
    unsigned int placeRevision_ = 0;
    Pixel background_ = 0;
    /// Colours of the last panes.
    struct Tones
    {
        quillmarsh::eSampleFormat format;
        DisplaySettings display;
        ToneMap map;
    };
    mutable std::vector<Tones> tones_;

    /// Over the divider; null if the look has none.
    quillmarsh::gui::Cursor const *dividerCursor_ = nullptr;
    eDrag drag_ = eDrag::e_none;
    quillmarsh::vec2 dragFrom_ = {0, 0};
    quillmarsh::vec2 dragAt_ = {0, 0};
    Measurement drawn_;
    std::optional<quillmarsh::vec2> mouse_;
    int wheelRest_ = 0;
    /// Seconds since the wheel was turned, and the line that does the same until it is shown.
    double wheelTime_ = 0;
    string wheelLine_;
};

} // namespace viewer

#endif
