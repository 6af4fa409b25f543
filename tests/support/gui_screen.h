// A video renderer for the GUI manager, and users of its resources that record what they are told.
#ifndef QUILLMARSH_TESTS_SUPPORT_GUI_SCREEN_H
#define QUILLMARSH_TESTS_SUPPORT_GUI_SCREEN_H

#include "tests/support/gui_desk.h"
#include "tests/support/recording_renderer.h"

#include <quillmarsh/gui/gui_cursors.h>
#include <quillmarsh/gui/gui_shaders.h>

#include <functional>
#include <set>

namespace quillmarsh::tests
{

/// Connects a renderer to the manager of a desk, with its resources, for its own life.
class ScreenConnection : NoCopy
{
public:
    explicit ScreenConnection(VideoRenderer &renderer)
    {
        GuiDesk::DeskKernel::GUIManager_ConnectVideoRenderer(renderer);
        GuiDesk::DeskKernel::GUIManager_CreateVideoResources(false);
    }
    ~ScreenConnection()
    {
        GuiDesk::DeskKernel::GUIManager_ReleaseVideoResources(false);
        GuiDesk::DeskKernel::GUIManager_DisconnectVideoRenderer();
    }
};

/// A recording renderer that is connected.
struct GuiScreen
{
    using Doors = GuiDesk::DeskKernel;

    explicit GuiScreen(bool managedOnly = false) : renderer(managedOnly) {}

    RecordingRenderer renderer;
    RecordingGUIRenderer &gui = renderer.GetGUI();
    ScreenConnection const connection{renderer};
};

/// What users of resources were told, in order: "label what".
struct UserLog
{
    std::vector<string> Take() { return std::exchange(lines, {}); }

    std::vector<string> lines;
    /// Runs at each line, before it is recorded.
    std::function<void(string const &line)> reaction;
    /// Lines of look-ups that fail.
    std::set<string> missing;

    bool Add(string const &label, char const *what)
    {
        string const line = label + ' ' + what;
        if (reaction)
            reaction(line);
        lines.push_back(line);
        return !missing.contains(line);
    }
};

/// User that records what it is told. Base is a component, shader or cursor.
template<typename Base>
class RecordingUser : public Base
{
public:
    template<typename... Arguments>
    RecordingUser(UserLog &log, string label, Arguments const &...arguments)
        : Base(arguments...),
          log_(log),
          label_(std::move(label))
    {
    }

    void OnVideoRendererChanged(VideoRenderer *renderer) override
    {
        log_.Add(label_, renderer != nullptr ? "renderer came" : "renderer went");
    }
    void OnTileTextureListChanged(gui::Manager &) override { log_.Add(label_, "texture list"); }
    void OnFontListChanged(gui::Manager &) override { log_.Add(label_, "font list"); }
    // The object may be gone when the log has told it to whom it concerns.
    bool CacheTileTextureHandles(gui::Manager &) override { return log_.Add(label_, "textures"); }
    void PostCacheTileTextureHandles() override { log_.Add(label_, "got textures"); }
    bool CacheFontHandles(gui::Manager &) override { return log_.Add(label_, "fonts"); }
    void PostCacheFontHandles() override { log_.Add(label_, "got fonts"); }

private:
    UserLog &log_;
    string label_;
};

/// Shader without a font that fills its component with white.
class PlainShader : public gui::BaseShader
{
public:
    explicit PlainShader(string const &name) : BaseShader(name) { SetTextAttributes({}); }

    void DrawComponent(gui::Component &component, gui::Renderer &renderer) const override
    {
        renderer.DrawRectangle(gui::RectangleC({vec2::ZERO, component.GetSize()}, {255, 255, 255, 255}));
    }
};

} // namespace quillmarsh::tests

#endif
