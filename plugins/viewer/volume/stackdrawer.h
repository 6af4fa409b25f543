// The volume as a stack of slices, drawn by OpenGL.
#ifndef QUILLMARSH_PLUGINS_VIEWER_VOLUME_STACKDRAWER_H
#define QUILLMARSH_PLUGINS_VIEWER_VOLUME_STACKDRAWER_H

#include "stackfunctions.h"

#include <viewer_model/volumes/rotation.h>
#include <viewer_model/volumes/smallvolume.h>

#include <quillmarsh/gui/gui_rectangle.h>

#include <chrono>

namespace viewer::volumes
{

/// What to draw of a volume. A plain record.
struct StackView
{
    Rotation rotation;
    double zoom = 1;
    double density = 1;
    DisplaySettings tones;

    bool IsSame(StackView const &other) const;
};

/// Draws a small volume as slices across the axis that is nearest to the line of sight, from the back to the front, into
/// a picture of its own, and shows that. The picture is drawn anew when something has changed: coarsely while it changes,
/// and finely a moment later, both within the time that a frame may take on this machine. Belongs to one context, which
/// is current in all calls. Frame thread only.
class StackDrawer : quillmarsh::NoCopy
{
public:
    /// Returns null if there is no OpenGL, or if its driver refuses something; `reason` is a text for the user then.
    static quillmarsh::AutoPtr<StackDrawer> Create(string &reason);
    ~StackDrawer();

    /// Loads a volume; null draws nothing.
    void SetVolume(SmallVolumePtr volume);
    /// Draws into an area of the target, in pixels of the window. The viewport is the whole window.
    void Draw(quillmarsh::gui::Rectangle const &area, StackView const &view, ToneMap const &tones, Pixel background);
    /// True if the picture was drawn coarsely, and it is time to draw it finely.
    bool IsToRefine() const;
    /// True if it was drawn coarsely.
    bool IsCoarse() const { return isCoarse_; }

private:
    using Clock = std::chrono::steady_clock;

    /// Programs of this drawer.
    struct Program
    {
        GLuint name = 0;
        GLint Find(StackFunctions const &gl, char const *variable) const
        {
            return gl.GetUniformLocation(name, variable);
        }
    };
    /// How fine a picture is.
    struct Effort
    {
        unsigned int width;
        unsigned int height;
        unsigned int numSlices;
        bool isFull;
    };

    explicit StackDrawer(StackFunctions const &gl) : gl_(gl) {}

    bool MakeProgram(Program &program, char const *vertexShader, char const *fragmentShader, string &reason);
    bool Prepare(string &reason);
    GLuint MakeTexture(GLenum target, GLenum filter);
    Effort ChooseEffort(unsigned int width, unsigned int height, unsigned int numSlices, double seconds) const;
    void LoadTones(StackView const &view, ToneMap const &tones);
    bool ResizePicture(unsigned int width, unsigned int height);
    void DrawSlices(Effort const &effort, StackView const &view, double aspect, Pixel background);
    void SetVariables(Effort const &effort, StackView const &view, double aspect);
    void Refresh(unsigned int width, unsigned int height, StackView const &view, ToneMap const &tones,
                 Pixel background);
    void ShowPicture(GLint target, GLint const *viewport, quillmarsh::gui::Rectangle const &area);

    StackFunctions gl_;
    Program slices_;
    Program shown_;
    GLuint vertexArray_ = 0;
    GLuint samples_ = 0;
    GLuint tonesTexture_ = 0;
    GLuint picture_ = 0;
    GLuint framebuffer_ = 0;
    unsigned int pictureWidth_ = 0;
    unsigned int pictureHeight_ = 0;
    SmallVolumePtr volume_;
    /// What the picture shows.
    StackView view_;
    unsigned int areaWidth_ = 0;
    unsigned int areaHeight_ = 0;
    bool isDrawn_ = false;
    bool isCoarse_ = false;
    Clock::time_point changeTime_;
    /// Measured time for a pixel of a slice.
    double secondsPerPixel_ = 0;
};

} // namespace viewer::volumes

#endif
