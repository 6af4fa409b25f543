// Panes with slices, and the cross hair in them.
#ifndef QUILLMARSH_PLUGINS_VIEWER_VOLUME_PANE_H
#define QUILLMARSH_PLUGINS_VIEWER_VOLUME_PANE_H

#include "scene.h"
#include "view.h"
#include "workspace.h"

namespace viewer::volumes
{

/// What panes need of their room. Borrowed; outlives the panes' use.
class PaneContext : quillmarsh::NoCopy
{
public:
    PaneContext(Workspace &itsWorkspace, Scene &itsScene) : workspace(itsWorkspace), scene(itsScene) {}

    Workspace &workspace;
    Scene &scene;
    /// The pane that keys act on.
    ePane active = ePane::e_layer;
    /// The pane that fills the room; nothing if all show.
    std::optional<ePane> whole = {};

    /// Shows a line on the console once nothing has come for a while: a wheel turns by many notches.
    void EchoLater(string const &line);
    void Update(double seconds);

private:
    string later_ = string();
    double laterAge_ = 0;
};

/// Colour that stands for a pane: of its frame, its title, and of the lines where it cuts the others.
quillmarsh::color4b GetPaneColour(ePane pane);

/// A pane: what is dragged in it, and its frame with the title. The right button moves the window of tones, the middle one
/// the place, the wheel steps through slices or zooms with control. Frame thread only.
class Pane : public View
{
public:
    Pane(PaneContext &context, ePane pane, quillmarsh::gui::Component *parent);
    ~Pane() override;

    ePane GetPane() const { return pane_; }
    /// Gives the place in the volume under a place in the pane, in samples; false where there is none.
    virtual bool FindPlace(quillmarsh::vec2 const &position, quillmarsh::vec3 &place) const = 0;
    /// One line for the title of the pane.
    virtual string GetTitle() const = 0;

    bool OnMouseMove(bool hover, double hoverSeconds, quillmarsh::vec2 const &position) override;
    bool OnMouseCapture(bool begin) override;
    using Component::OnMouseButton;
    bool OnMouseButton(bool down, quillmarsh::eMouseButton button, bool doubleClick, unsigned int repeatCount,
                       quillmarsh::vec2 const &position) override;
    using Component::OnMouseWheel;
    bool OnMouseWheel(int delta, quillmarsh::vec2 const &position) override;
    bool OnMouseEnterExit(bool enter, bool direct, quillmarsh::vec2 const &position) override;
    string GetCaption() const override;

    static constexpr Pixel s_background = 0xFF101318;

protected:
    /// @name What the mouse does
    /// @{
    /// The left button is down at a position, or was moved there by a distance. Returns whether that has done something.
    virtual bool DragLeft(quillmarsh::vec2 const &position, quillmarsh::vec2 const &distance) = 0;
    /// Returns the line that does what the drag has done.
    virtual string GetLeftLine() const = 0;
    /// The middle button has moved by a distance in pixels.
    virtual void DragMiddle(quillmarsh::vec2 const &distance) = 0;
    virtual string GetMiddleLine() const;
    /// Steps by slices, positive ones away from the eye.
    virtual void Step(int count);
    virtual string GetStepLine() const;
    virtual void ZoomAt(double factor, quillmarsh::vec2 const &position) = 0;
    virtual string GetZoomLine() const;
    /// @}

    PaneContext &GetContext() const { return context_; }
    Scene &GetScene() const { return context_.scene; }
    /// Draws the frame and the title over the picture.
    void DrawFrame(quillmarsh::gui::Renderer &renderer);
    /// Draws a line in the colour of another pane, thin, with a gap around its middle.
    void DrawCut(quillmarsh::gui::Renderer &renderer, quillmarsh::vec2 const &middle, quillmarsh::vec2 const &direction,
                 ePane pane);

private:
    void DragWindow(quillmarsh::vec2 const &distance);

    PaneContext &context_;
    ePane pane_;
    std::optional<quillmarsh::eMouseButton> dragged_;
    bool hasDragged_ = false;
    quillmarsh::vec2 last_ = {0, 0};
    /// Part of a notch of the wheel that has not counted yet.
    int wheelRest_ = 0;
};

/// A slice of an axis.
class SlicePane : public Pane
{
public:
    SlicePane(PaneContext &context, eSliceAxis axis);

    bool FindPlace(quillmarsh::vec2 const &position, quillmarsh::vec3 &place) const override;
    string GetTitle() const override;

protected:
    void Compose(quillmarsh::ImageBase &picture) override;
    void DrawOver(quillmarsh::gui::Renderer &renderer) override;
    bool DragLeft(quillmarsh::vec2 const &position, quillmarsh::vec2 const &distance) override;
    string GetLeftLine() const override;
    void DragMiddle(quillmarsh::vec2 const &distance) override;
    void ZoomAt(double factor, quillmarsh::vec2 const &position) override;

private:
    Placement GetPlacement() const;
    quillmarsh::vec3 ToPlace(quillmarsh::vec2 const &position) const;
    quillmarsh::vec2 ToView(quillmarsh::vec3 const &place) const;

    eSliceAxis axis_;
};

/// The oblique slice.
class ObliquePane : public Pane
{
public:
    explicit ObliquePane(PaneContext &context);

    bool FindPlace(quillmarsh::vec2 const &position, quillmarsh::vec3 &place) const override;
    string GetTitle() const override;

protected:
    void Compose(quillmarsh::ImageBase &picture) override;
    void DrawOver(quillmarsh::gui::Renderer &renderer) override;
    bool DragLeft(quillmarsh::vec2 const &position, quillmarsh::vec2 const &distance) override;
    string GetLeftLine() const override;
    void DragMiddle(quillmarsh::vec2 const &distance) override;
    void ZoomAt(double factor, quillmarsh::vec2 const &position) override;

private:
    quillmarsh::vec3 ToPlace(quillmarsh::vec2 const &position) const;

    bool isTurning_ = false;
};

/// Returns the axis of Cut that a pane shows to the right, down, and away from the eye. The oblique and the turned one
/// count as layers.
std::array<std::size_t, 3> GetPaneAxes(ePane pane);
/// Steps through the slices of a pane; the oblique one moves the cut along its own direction.
void StepPane(Scene &scene, ePane pane, int count);
/// Returns "cut X Y Z", and so on: the lines that set what movements of the mouse have changed.
/// @{
string MakeCutLine(Scene const &scene);
string MakeWindowLine(Scene const &scene);
string MakeObliqueLine(Scene const &scene);
string MakeFocusLine(Scene const &scene);
string MakeZoomLine(Scene const &scene);
string MakeTurnLine(Scene const &scene);
/// @}

} // namespace viewer::volumes

#endif
