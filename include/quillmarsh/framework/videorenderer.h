// Base of the plug-ins that draw.
#ifndef QUILLMARSH_FRAMEWORK_VIDEORENDERER_H
#define QUILLMARSH_FRAMEWORK_VIDEORENDERER_H

#include <quillmarsh/framework/plugin.h>

namespace quillmarsh
{

class ImageBase;
class VideoConfig;
class VideoSubsystem;

namespace gui
{
class Renderer;
}

/// Plug-in that draws for an application and its GUI. Frame thread only.
///
/// The plug-in attaches a GUI renderer in its constructor. The host then keeps this order: connect the subsystem, create
/// the video resources; while frames run, tell new sizes of the window; on the way out, release the resources and
/// disconnect. A call out of this order asserts. An operation that throws leaves nothing behind, because the operation
/// that would undo it is not called then.
class QUILLMARSH_API VideoRenderer : public Plugin
{
public:
    /// Deletes the attached GUI renderer.
    ~VideoRenderer() override;

    /// Returns the name of the drawing interface, by which an application chooses a renderer.
    virtual string GetVideoRendererInterfaceName() const = 0;
    /// Returns true when the renderer can draw with a subsystem. The host asks before it connects one.
    virtual bool IsCompatibleWith(VideoSubsystem const &subsystem) const = 0;

    /// @name Subsystem
    /// @{

    /// Returns the connected subsystem; null while there is none.
    VideoSubsystem *GetVideoSubsystem() const { return videoSubsystem_; }
    /// Returns the configuration in force. Asserts "Video-subsystem not connected." without a subsystem, and returns a
    /// default one then.
    VideoConfig const &GetVideoConfig() const;
    /// Shows the back buffer. Does nothing without a subsystem.
    void PresentBackBuffer();
    /// Reads a buffer into an image: see VideoSubsystem::CaptureFrameBuffer(). False without a subsystem.
    bool CaptureFrameBuffer(AutoPtr<ImageBase> &image, unsigned int buffer, bool topRowFirst);
    /// @}

    /// @name Vertical synchronisation
    /// @{

    /// Switches waiting for the vertical retrace. With dynamic updates the change counts at once; otherwise the kernel is
    /// asked for a reconfiguration. Does nothing without a subsystem, or when nothing changes.
    void UpdateVSync(bool vsync);
    /// Switches dynamic updates for all renderers, and tells the kernel. Off by default.
    static void EnableDynamicVSyncUpdate(bool enable);
    static bool IsEnabledDynamicVSyncUpdate() { return s_enableDynamicVSyncUpdate; }
    /// @}

    /// @name GUI renderer
    /// @{

    /// Returns the attached GUI renderer. Asserts "GUIRenderer not attached." when there is none.
    gui::Renderer &GetGUIRenderer() const;
    /// Attaches a GUI renderer, which this object owns from then on, and deletes the former one. While a subsystem is
    /// connected it asserts "Cannot attach GUIRenderer while VideoSubsystem is connected.": the new GUI renderer does
    /// not know the subsystem.
    void AttachGUIRenderer(gui::Renderer &renderer);
    /// Gives the GUI renderer back to the caller, who owns it again. While a subsystem is connected it asserts "Cannot
    /// detach GUIRenderer while VideoSubsystem is connected.".
    void DetachGUIRenderer();
    /// @}

    /// @name Size of the window in pixels, as told last
    /// @{
    unsigned int GetWindowWidth() const { return windowWidth_; }
    unsigned int GetWindowHeight() const { return windowHeight_; }
    /// @}

protected:
    VideoRenderer();

    /// @name Life
    /// The host calls these through the doors of Kernel. A renderer overrides them and calls the base, which passes the
    /// call on to the GUI renderer. Each asserts "GUIRenderer not attached." when there is none. A bool is true when the
    /// device was lost.
    /// @{
    virtual void ConnectVideoSubsystem(VideoSubsystem &subsystem);
    virtual void DisconnectVideoSubsystem();
    virtual void CreateVideoResources(bool deviceWasLost);
    virtual void ReleaseVideoResources(bool deviceWasLost);
    /// The client area of the window has a new size in pixels. Stores it, each number at least 1.
    virtual void OnWindowResize(unsigned int width, unsigned int height);
    /// @}

private:
    friend class Kernel;

    VideoSubsystem *videoSubsystem_ = nullptr;
    AutoPtr<gui::Renderer> guiRenderer_;
    unsigned int windowWidth_ = 1;
    unsigned int windowHeight_ = 1;

    static bool s_enableDynamicVSyncUpdate;
};

} // namespace quillmarsh

#endif
