// Window, renderer and cursor: what the manager draws with.
#ifndef QUILLMARSH_SOURCE_GUI_MANAGER_DISPLAY_H
#define QUILLMARSH_SOURCE_GUI_MANAGER_DISPLAY_H

#include <quillmarsh/gui/gui_cursors.h>
#include <quillmarsh/gui/gui_messages.h>

namespace quillmarsh::gui::manager_parts
{

struct Parts;

/// Connection to the video renderer, and the size of the window. Reads Resources; calls users by ForEachUser().
class VideoConnection : NoCopy
{
public:
    explicit VideoConnection(Parts &parts) : parts_(parts) {}

    void Connect(VideoRenderer &renderer);
    void Disconnect();
    void CreateResources(bool onlyIfUnmanaged);
    void ReleaseResources(bool onlyIfUnmanaged);
    /// See Manager::PrepareVideoRendererResources().
    void PrepareResources(bool allTileTextures, bool allFonts);
    void OnWindowResize(unsigned int width, unsigned int height);
    bool IntersectsWindow(Component const &component) const;
    /// Draws the draw queue and the cursor; nothing without a renderer.
    void Draw();

    /// Null while none is connected.
    VideoRenderer *GetVideoRenderer() const { return videoRenderer_; }
    unsigned int GetWidth() const { return width_; }
    unsigned int GetHeight() const { return height_; }

private:
    /// Tells all users of the renderer.
    void NotifyRendererChanged();
    /// Creates the parts in the renderer of one kind, new or all, while resources are wanted; the flag falls then.
    /// Returns whether it did.
    template<typename Kind>
    bool Create(Kind &kind, bool all, bool &toCreate);

    Parts &parts_;
    VideoRenderer *videoRenderer_ = nullptr;
    Renderer *renderer_ = nullptr;
    bool resourcesWanted_ = false;
    bool managedOnly_ = false;
    unsigned int width_ = 1;
    unsigned int height_ = 1;
};

/// Active cursor, standard cursors, and the cursor of the system. Reads the registry of cursors.
class CursorDisplay : NoCopy
{
public:
    explicit CursorDisplay(Parts &parts) : parts_(parts) {}

    /// Makes and deletes the null cursor; for Parts::Start() and Stop().
    void Start();
    void Stop();

    /// Asks the component under the mouse, and takes the standard cursor of the area if it gives none.
    void SetupActiveCursor(Component &top, eCommandArea area, vec2 const &position);
    /// Looks up the standard cursors; the null cursor stands for those that are missing.
    void CacheHandles();
    /// All standard cursors become the null cursor.
    void InvalidateHandles();
    /// The null cursor takes the place of a deleted one.
    void OnDeleted(Cursor const &cursor);
    /// Updates colours and geometry of all cursors.
    void DispatchGlobalParams();
    /// Shows or hides the system's cursor; acts on a change only.
    void DisplaySystemCursor(bool display);
    void ShowSystemCursor(bool show);
    /// Draws the active cursor, if it is to be drawn.
    void Draw(Renderer &renderer);

    Cursor const *GetActive() const { return active_; }
    bool IsShownSystemCursor() const { return showSystemCursor_; }
    bool showGUICursor = false;

private:
    Parts &parts_;
    /// In no registry, as it is made and deleted while the insert switch of cursors is off.
    AutoPtr<Cursor> nullCursor_;
    Cursor const *standard_[s_numCommandAreas] = {};
    Cursor const *active_ = nullptr;
    bool showSystemCursor_ = true;
    bool systemCursorDisplayed_ = true;
};

} // namespace quillmarsh::gui::manager_parts

#endif
