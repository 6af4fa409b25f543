// The whole window: files at the left, the view in the middle, settings at the right, a status line below.
#ifndef QUILLMARSH_PLUGINS_VIEWER_DESK_H
#define QUILLMARSH_PLUGINS_VIEWER_DESK_H

#include "inspector.h"
#include "stage.h"
#include "statusline.h"

#include <quillmarsh/widgets/panel.h>
#include <quillmarsh/widgets/splitter.h>

namespace viewer
{

using Rooms = std::vector<std::unique_ptr<Room>>;

/// Fills the window. The manager owns it; workspace and rooms are borrowed, and may go ahead of it. Frame thread only.
class Desk : public quillmarsh::widgets::Panel
{
public:
    Desk(Workspace &workspace, Rooms const &rooms, std::span<KeyBinding const> globalKeys);
    ~Desk() override;

    /// Shows what has changed since the last call. `seconds` is the time since then.
    void Update(double seconds);

    /// @name Columns
    /// @{
    void ShowFiles(bool show);
    bool AreFilesShown() const { return showsFiles_; }
    /// Width of the file list, as a part of the window's.
    void SetFilesShare(float share);
    float GetFilesShare() const { return filesShare_; }
    void ShowInspector(bool show);
    bool IsInspectorShown() const { return inspector_->IsVisible(); }
    Inspector &GetInspector() { return *inspector_; }
    /// @}

    /// Runs the line of a key, if it is bound. True if it is.
    bool RunKey(quillmarsh::eKey key, unsigned int repeatCount);
    void FocusStage() { stage_->RequestKeyboardFocus(); }

    void RecalcSize() override;
    void RecalcLayout() override;
    void OnWindowResize(unsigned int width, unsigned int height) override;
    using Panel::OnKeyboardKey;
    bool OnKeyboardKey(bool down, quillmarsh::eKey key, unsigned int repeatCount, char character) override;

private:
    class Main;

    void AddRooms();
    void ShowDocument();
    void ShowTitles();
    void ShowRoom(Room *room, DocumentPtr const &document);
    void ShowMessage(DocumentPtr const &document);
    KeyBinding const *FindBinding(quillmarsh::eKey key, unsigned int modifiers) const;

    struct ViewOfRoom
    {
        Room *room;
        Component *view;
    };

    Workspace &workspace_;
    Rooms const &rooms_;
    std::span<KeyBinding const> globalKeys_;
    quillmarsh::widgets::Splitter *splitter_;
    Main *main_;
    Stage *stage_;
    Inspector *inspector_;
    StatusLine *status_;
    std::vector<ViewOfRoom> views_;
    bool showsFiles_ = true;
    float filesShare_;
    Room *shownRoom_ = nullptr;
    DocumentPtr shownDocument_;
    unsigned int shownRevision_ = 0;
    unsigned int documentsRevision_;
    /// Seconds since the current document has begun to load.
    double loadingTime_ = 0;
};

} // namespace viewer

#endif
