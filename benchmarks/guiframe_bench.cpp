// Frames of a GUI full of buttons, beside the same windows and buttons in Dear ImGui.
#include "benchmarks/support/allocation_counter.h"
#include "tests/support/gui_desk.h"
#include "tests/support/null_video.h"

#include <quillmarsh/gui/gui_buttons.h>
#include <quillmarsh/gui/gui_fonts.h>
#include <quillmarsh/gui/gui_renderer.h>
#include <quillmarsh/gui/gui_shaders.h>

#include <benchmark/benchmark.h>
#include <imgui.h>

#include <array>

namespace quillmarsh::benchmarks
{
namespace
{

using namespace gui;

// Both sides show panels in rows of ten, that fill the window and do not overlap, with a hundred buttons each.
constexpr unsigned int s_columns = 10;
constexpr unsigned int s_numButtonsOfPanel = 100;
constexpr unsigned int s_windowWidth = 4000;
constexpr unsigned int s_windowHeight = 2400;
constexpr float s_panelWidth = 400;
constexpr float s_panelHeight = 240;
constexpr float s_margin = 5;
constexpr float s_buttonWidth = 37;
constexpr float s_buttonHeight = 20;
constexpr float s_spacing = 2;
constexpr float s_textHeight = 13;
constexpr char s_szLabel[] = "Save";

vec2 GetPanelPosition(unsigned int panel)
{
    return {static_cast<float>(panel % s_columns) * s_panelWidth,
            static_cast<float>(panel / s_columns) * s_panelHeight};
}

/// Another place in each frame, all over the panels.
class Path
{
public:
    explicit Path(unsigned int numPanels) : height_(numPanels / s_columns * static_cast<unsigned int>(s_panelHeight)) {}

    void Step()
    {
        x = (x + 1237) % s_windowWidth;
        y = (y + 67) % height_;
    }

    unsigned int x = 0;
    unsigned int y = 0;

private:
    unsigned int height_;
};

class LabelledButton : public Button
{
public:
    explicit LabelledButton(Component &panel) : Button(&panel, nullptr, 1, e_style_push, 0) { SetCanFocus(true); }

    using Button::OnKeyboardQueryFocus;
    bool OnKeyboardQueryFocus(bool byMouse, eMouseButton button, bool &want, bool &needCharacters) override
    {
        DefaultProcessQueryFocus(byMouse, button, want, needCharacters);
        needCharacters = true;
        return true;
    }

    string label = s_szLabel;
};

void DrawBox(Component const &component, Renderer &renderer, color4b color)
{
    Rectangle const box(vec2::ZERO, component.GetSize());
    renderer.DrawRectangle(RectangleC(box, color));
    renderer.DrawRectangleFrame(RectangleC(box, {110, 110, 128, 255}), 1);
}

class PanelLook : public BaseShader
{
public:
    PanelLook() : BaseShader("panel") { SetTextAttributes({}); }
    void DrawComponent(Component &component, Renderer &renderer) const override
    {
        DrawBox(component, renderer, {15, 15, 15, 255});
    }
};

/// Draws a filled rectangle, its frame, and the label in its middle.
class ButtonLook : public BaseShader
{
public:
    ButtonLook() : BaseShader("button")
    {
        TextAttributes attributes = DefaultTextAttributes();
        attributes.metrics.Height = s_textHeight;
        SetTextAttributes(attributes);
    }

    void DrawComponent(Component &component, Renderer &renderer) const override
    {
        auto const &button = static_cast<LabelledButton const &>(component);
        DrawBox(button, renderer, GetColor(button));
        DrawTextParams params;
        params.metrics = GetTextMetricsL();
        vec2 const text(GetFont()->CalcTextWidth(params.metrics, button.label), s_textHeight);
        params.position = (button.GetSize() - text) * 0.5f;
        renderer.DrawText(*GetFont(), button.label, params);
    }

private:
    static color4b GetColor(LabelledButton const &button)
    {
        if (button.IsPressed())
            return {15, 135, 250, 255};
        return button.IsHot() ? color4b(66, 150, 250, 255) : color4b(66, 150, 250, 102);
    }
};

/// Panels on a desk, and a renderer without a device.
class ButtonDesk : public tests::GuiDesk
{
public:
    explicit ButtonDesk(std::int64_t numButtons) : path(static_cast<unsigned int>(numButtons) / s_numButtonsOfPanel)
    {
        DeskKernel::GUIManager_OnWindowResize(s_windowWidth, s_windowHeight);
        new PanelLook;
        new ButtonLook;
        auto font = std::make_unique<FontTexture>(true, 256, false);
        font->SetGenerateImageFromSystemFont(false);
        manager.RegisterFont(BaseShader::DefaultTextAttributes().fontName, font);
        for (unsigned int panel = 0; panel * s_numButtonsOfPanel < numButtons; ++panel)
            AddPanel(panel);
        VideoDoors::GUIManager_ConnectVideoRenderer(video.renderer);
        VideoDoors::GUIManager_CreateVideoResources(false);
        MoveMouse();
        Frame();
        // The renderer keeps the last frame and this one.
        manager.Draw();
        manager.Draw();
    }
    ~ButtonDesk()
    {
        VideoDoors::GUIManager_ReleaseVideoResources(false);
        VideoDoors::GUIManager_DisconnectVideoRenderer();
    }

    void MoveMouse()
    {
        path.Step();
        mouse.x = static_cast<int>(path.x);
        mouse.y = static_cast<int>(path.y);
    }

    Path path;
    tests::NullVideo video;

private:
    struct VideoDoors : DeskKernel
    {
        using Kernel::GUIManager_ConnectVideoRenderer;
        using Kernel::GUIManager_CreateVideoResources;
        using Kernel::GUIManager_DisconnectVideoRenderer;
        using Kernel::GUIManager_ReleaseVideoResources;
    };

    static void AddPanel(unsigned int index)
    {
        auto &panel = *new Component;
        panel.SetShaderName("panel");
        panel.SetPosition(GetPanelPosition(index));
        panel.SetSize(s_panelWidth, s_panelHeight);
        for (unsigned int i = 0; i < s_numButtonsOfPanel; ++i)
        {
            auto &button = *new LabelledButton(panel);
            button.SetShaderName("button");
            button.SetPosition(s_margin + static_cast<float>(i % s_columns) * (s_buttonWidth + s_spacing),
                               s_margin + static_cast<float>(i / s_columns) * (s_buttonHeight + s_spacing));
            button.SetSize(s_buttonWidth, s_buttonHeight);
        }
    }
};

/// Dispatches a frame in which the mouse has moved.
void Dispatch(benchmark::State &state)
{
    ButtonDesk desk(state.range(0));
    RunCounted(state,
               [&]
               {
                   desk.MoveMouse();
                   desk.Frame();
               });
}
BENCHMARK(Dispatch)->Name("guiframe/dispatch")->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

/// Draws a frame. The counter "items" reports what was drawn.
void Draw(benchmark::State &state)
{
    ButtonDesk desk(state.range(0));
    RunCounted(state, [&] { desk.manager.Draw(); });
    state.counters["items"] = static_cast<double>(desk.video.gui.GetLastFrame().items.size());
}
BENCHMARK(Draw)->Name("guiframe/draw")->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

/// Dispatches and draws a frame in which the mouse has moved, with held keys that repeat.
void WholeFrame(benchmark::State &state)
{
    ButtonDesk desk(state.range(0));
    desk.manager.GetTopLevelComponent(0)->GetChild(0)->RequestKeyboardFocus();
    desk.manager.ShowGUICursor(true);
    desk.keyboard.pressed = {e_key_a, e_key_l_shift, e_key_arrow_left};
    // The first repeats.
    for (int i = 0; i < 100; ++i)
        desk.Frame();
    RunCounted(state,
               [&]
               {
                   desk.MoveMouse();
                   desk.Frame();
                   desk.manager.Draw();
               });
}
BENCHMARK(WholeFrame)->Name("guiframe/whole")->Arg(10000)->Unit(benchmark::kMicrosecond);

/// Dear ImGui with the same places and sizes, and without antialiasing of frames.
class Peer : NoCopy
{
public:
    explicit Peer(std::int64_t numButtons)
        : numPanels_(static_cast<unsigned int>(numButtons) / s_numButtonsOfPanel),
          path_(numPanels_)
    {
        IMGUI_CHECKVERSION();
        context_ = ImGui::CreateContext();
        ImGuiIO &io = ImGui::GetIO();
        io.IniFilename = nullptr;
        io.DisplaySize = ImVec2(s_windowWidth, s_windowHeight);
        io.DeltaTime = 0.01f;
        unsigned char *pixels = nullptr;
        int width = 0, height = 0;
        io.Fonts->GetTexDataAsRGBA32(&pixels, &width, &height);
        ImGuiStyle &style = ImGui::GetStyle();
        style.AntiAliasedLines = style.AntiAliasedFill = false;
        style.WindowPadding = ImVec2(s_margin, s_margin);
        style.ItemSpacing = ImVec2(s_spacing, s_spacing);
        style.FrameBorderSize = 1;
    }
    ~Peer() { ImGui::DestroyContext(context_); }

    void Frame()
    {
        path_.Step();
        ImGui::GetIO().MousePos = ImVec2(static_cast<float>(path_.x), static_cast<float>(path_.y));
        ImGui::NewFrame();
        for (unsigned int panel = 0; panel < numPanels_; ++panel)
            ShowPanel(panel);
        ImGui::Render();
    }
    /// Returns the vertices of the last frame.
    static int CountVertices() { return ImGui::GetDrawData()->TotalVtxCount; }

private:
    static void ShowPanel(unsigned int index)
    {
        constexpr ImGuiWindowFlags flags = ImGuiWindowFlags_NoDecoration | ImGuiWindowFlags_NoMove;
        std::array<char, 16> name{};
        std::snprintf(name.data(), name.size(), "panel %u", index);
        vec2 const position = GetPanelPosition(index);
        ImGui::SetNextWindowPos(ImVec2(position.x, position.y));
        ImGui::SetNextWindowSize(ImVec2(s_panelWidth, s_panelHeight));
        if (ImGui::Begin(name.data(), nullptr, flags))
        {
            for (unsigned int i = 0; i < s_numButtonsOfPanel; ++i)
            {
                if (i % s_columns != 0)
                    ImGui::SameLine();
                ImGui::PushID(static_cast<int>(i));
                benchmark::DoNotOptimize(ImGui::Button(s_szLabel, ImVec2(s_buttonWidth, s_buttonHeight)));
                ImGui::PopID();
            }
        }
        ImGui::End();
    }

    unsigned int numPanels_;
    Path path_;
    ImGuiContext *context_;
};

/// Runs the peer's frame. The counter "vertices" reports that no button was left out.
void FrameOfPeer(benchmark::State &state)
{
    Peer peer(state.range(0));
    // Windows are hidden in their first frame.
    peer.Frame();
    RunCounted(state, [&] { peer.Frame(); });
    state.counters["vertices"] = Peer::CountVertices();
}
BENCHMARK(FrameOfPeer)->Name("peer/imgui_frame")->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace quillmarsh::benchmarks
