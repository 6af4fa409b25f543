// The room of volumes.
#ifndef QUILLMARSH_PLUGINS_VIEWER_VOLUME_VOLUMEROOM_H
#define QUILLMARSH_PLUGINS_VIEWER_VOLUME_VOLUMEROOM_H

#include "quad.h"
#include "room.h"
#include "stackdrawer.h"
#include "turninput.h"
#include "volumeinspector.h"

namespace viewer::volumes
{

/// Scene, panes and widgets of volumes, and the commands that change them.
class VolumeRoom : public Room
{
public:
    explicit VolumeRoom(Workspace &workspace);
    ~VolumeRoom() override;

    char const *GetTitle() const override { return "Volumes"; }
    unsigned int GetNumDimensions() const override { return 3; }
    void AddCommands(CommandSet &commands) override;
    std::span<KeyBinding const> GetKeys() const override;
    quillmarsh::gui::Component *MakeView(quillmarsh::gui::Component &parent) override;
    void MakeInspector(quillmarsh::widgets::Stack &column) override;
    bool RenderArea(quillmarsh::gui::InterleavedRenderArea const &area) override;
    void CreateVideoResources(bool deviceWasLost) override;
    void ReleaseVideoResources(bool deviceWasLost) override;
    void DisconnectDevices() override { turnInput_.Forget(); }
    void Show(DocumentPtr const &document, bool isOther) override;
    void Update(double seconds) override;
    string GetStatus() const override;
    void WriteState(quillmarsh::ostream &out) const override;

    /// @name For commands
    /// @{
    Scene &GetScene() { return scene_; }
    PaneContext &GetContext() { return context_; }
    /// Null without a GUI.
    Quad *GetQuad() { return quad_; }
    /// Returns the scene; throws a DataException if it has no volume.
    Scene &RequireVolume();
    /// Shows the panes as context and settings want it.
    void Arrange();
    /// Parts of the first column and row.
    quillmarsh::vec2 GetFractions() const;
    void SetFractions(quillmarsh::vec2 const &fractions);
    /// @}

private:
    void OnChanged();

    Workspace &workspace_;
    Scene scene_;
    PaneContext context_;
    TurnInput turnInput_;
    /// Null without OpenGL.
    quillmarsh::AutoPtr<StackDrawer> drawer_;
    quillmarsh::vec2 fractions_ = {0.5F, 0.5F};
    /// @name Owned by their parents
    /// @{
    Quad *quad_ = nullptr;
    VolumeInspector *inspector_ = nullptr;
    /// @}
};

} // namespace viewer::volumes

#endif
