#include "tests/soak/gui_crowd.h"

#include <quillmarsh/gui/gui_buttons.h>
#include <quillmarsh/gui/gui_cursors.h>
#include <quillmarsh/gui/gui_fonts.h>
#include <quillmarsh/gui/gui_layouters.h>
#include <quillmarsh/gui/gui_renderer.h>
#include <quillmarsh/gui/gui_shaders.h>
#include <quillmarsh/gui/gui_widgets.h>

#include <algorithm>
#include <iostream>
#include <limits>
#include <string_view>

namespace quillmarsh::tests
{
namespace
{

using namespace gui;

constexpr std::size_t s_maxComponents = 60;
constexpr unsigned int s_maxOthers = 8;
constexpr color4b s_white(255, 255, 255, 255);
/// A renderer without a device refuses textures of this width.
constexpr unsigned int s_refusedWidth = 32768;
/// Beginnings of the failures that are provoked.
constexpr std::string_view s_failures[] = {
    "Missing tile-texture for: ", "Missing font for: ",
    "Missing cursor for: ",       "Failed to create gui-texture resource.",
    "Attaching ancestor: ",       "Detaching non-child: ",
};

/// Component of the class `Base` that does something at random in whatever it is told.
template<typename Base>
class WildOf : public Base, public Wild
{
public:
    template<typename... Arguments>
    explicit WildOf(Crowd &crowd, Arguments... arguments)
        : Base(arguments...),
          Wild(static_cast<Component &>(*this)),
          crowd_(crowd)
    {
        crowd_.Enter(*this);
    }
    ~WildOf() override { crowd_.Leave(*this); }

    bool OnKeyboardQueryFocus(bool, eMouseButton, bool &want, bool &needCharacters) override
    {
        want = crowd_.IsOneIn(2);
        needCharacters = crowd_.IsOneIn(2);
        return true;
    }
    using Base::OnKeyboardQueryFocus;
    bool CacheTileTextureHandles(Manager &manager) override
    {
        if (!ActAndSurvive())
            return true;
        texture_ = manager.GetTileTexture(textureName);
        return textureName.empty() || texture_ != nullptr;
    }
    bool HitTestSelf(vec2 const &position) const override { return ActAndSurvive() && Base::HitTestSelf(position); }
    void RecalcSize() override
    {
        if (ActAndSurvive())
            Base::RecalcSize();
    }
    void RecalcLayout() override
    {
        if (ActAndSurvive())
            Base::RecalcLayout();
    }
    void DrawSelf(Renderer &renderer) override
    {
        if (texture_ != nullptr)
            renderer.DrawRectangle(*texture_, RectangleCT({0, 0, texture_->GetTilePixelSizeU(), 9}, s_white));
        if (ActAndSurvive())
            Base::DrawSelf(renderer);
    }
    void OnWindowResize(unsigned int width, unsigned int height) override
    {
        if (ActAndSurvive())
            Base::OnWindowResize(width, height);
    }
    void UpdateGeometryCache() override { crowd_.Act(this); }
    void OnVideoRendererChanged(VideoRenderer *) override { crowd_.Act(this); }
    void OnTileTextureListChanged(Manager &) override { crowd_.Act(this); }
    void PostCacheTileTextureHandles() override { crowd_.Act(this); }
    void PostCacheFontHandles() override { crowd_.Act(this); }
    void PostCacheCursorHandles() override { crowd_.Act(this); }
    void OnShaderListChanged(Manager &) override { crowd_.Act(this); }
    void OnChangedActive() override { crowd_.Act(this); }
    void OnChangedFocused() override { crowd_.Act(this); }
    void OnChangedVisible() override { crowd_.Act(this); }
    void OnChangedBranchVisible(bool) override { crowd_.Act(this); }
    void OnChangedEnabled() override { crowd_.Act(this); }
    void OnAttachedChild(Component &) override { crowd_.Act(this); }
    void OnDetachedChild(Component &) override { crowd_.Act(this); }
    void OnAttachedToParent() override { crowd_.Act(this); }
    void OnDetachedFromParent() override { crowd_.Act(this); }
    void OnTimeDelta(double) override { crowd_.Act(this); }

protected:
    bool HandleMessage(Message &message) override { return !ActAndSurvive() || Base::HandleMessage(message); }
    void OnRegisteredAsServiceProvider(unsigned int) override { crowd_.Act(this); }
    void OnUnregisteredAsServiceProvider(unsigned int) override { crowd_.Act(this); }
    void ServiceProviderPreEventDispatch(double) override { crowd_.Act(this); }
    void ServiceProviderPostEventDispatch(double) override { crowd_.Act(this); }

private:
    /// Returns false if this component is deleted by then.
    bool ActAndSurvive() const
    {
        Watch<Component> const self(component);
        crowd_.Act(const_cast<WildOf *>(this));
        return self.Get() != nullptr;
    }

    Crowd &crowd_;
    TileTexture const *texture_ = nullptr;
};

class WildThumb : public WildOf<Thumb>
{
public:
    explicit WildThumb(Crowd &crowd) : WildOf(crowd, crowd.IsOneIn(2), nullptr), crowd_(crowd) {}
    void OnThumbGrabbed() override { crowd_.Act(this); }
    void OnThumbMoved(float) override { crowd_.Act(this); }
    void OnThumbReleased() override { crowd_.Act(this); }

private:
    Crowd &crowd_;
};

Wild *MakeMember(Crowd &crowd)
{
    switch (crowd.RollDice(8))
    {
    case 0:
        return new WildThumb(crowd);
    case 1:
        return new WildOf<Button>(crowd, nullptr, nullptr, 1, static_cast<Button::eStyle>(crowd.RollDice(4)), 0);
    case 2:
        return new WildOf<RubberBand>(crowd, nullptr, 1);
    case 3:
        return new WildOf<layouters::ArrayLayouter>(crowd, nullptr);
    default:
        return new WildOf<Component>(crowd);
    }
}

/// Shader that counts, and acts at random when it is used.
class WildShader : public BaseShader
{
public:
    explicit WildShader(Crowd &crowd) : BaseShader(crowd.MakeName()), crowd_(crowd)
    {
        SetTextAttributes({});
        ++crowd_.numShaders;
    }
    ~WildShader() override { --crowd_.numShaders; }

    void DrawComponent(Component &component, Renderer &renderer) const override
    {
        renderer.DrawRectangle(RectangleC({vec2::ZERO, component.GetSize()}, s_white));
        if (GetFont() != nullptr)
            renderer.DrawText(*GetFont(), component.GetToolTipText(), {});
        crowd_.Act(nullptr);
    }
    bool HitTest(Component const &, vec2 const &) const override
    {
        crowd_.Act(nullptr);
        return true;
    }
    void OnTimeDelta(double) override { crowd_.Act(nullptr); }
    void PostCacheFontHandles() override { crowd_.Act(nullptr); }

private:
    Crowd &crowd_;
};

/// Cursor that counts, and acts at random when it is drawn.
class WildCursor : public ImageCursor
{
public:
    WildCursor(Crowd &crowd, string const &textureName)
        : ImageCursor(crowd.MakeName(), {textureName}, vec2::ZERO, {8, 8}, s_white),
          crowd_(crowd)
    {
        ++crowd_.numCursors;
    }
    ~WildCursor() override { --crowd_.numCursors; }

    void DrawSelf(Renderer &renderer) const override
    {
        ImageCursor::DrawSelf(renderer);
        crowd_.Act(nullptr);
    }

private:
    Crowd &crowd_;
};

/// Texture or font that counts.
template<typename Base>
class Counted : public Base
{
public:
    template<typename... Arguments>
    explicit Counted(unsigned int &count, Arguments... arguments) : Base(arguments...),
                                                                    count_(count)
    {
        ++count_;
    }
    ~Counted() override { --count_; }

private:
    unsigned int &count_;
};

} // namespace

float Crowd::RollFloat(std::size_t sides)
{
    using Limits = std::numeric_limits<float>;
    constexpr float odd[] = {
        Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN(), Limits::max(), -1e6f, 0, -0.0f};
    return IsOneIn(100) ? odd[RollDice(std::size(odd))] : static_cast<float>(RollDice(sides));
}

string Crowd::MakeName()
{
    using namespace std::string_view_literals;
    static constexpr std::string_view s_names[] = {"std/client",   "a",          "",           "\0b"sv,
                                                   "\xff\xfe\x80", "%s%n\r\n\t", "\"\\\x1b[1m"};
    if (unsigned int const dice = RollDice(std::size(s_names) + 2); dice < std::size(s_names))
        return string(s_names[dice]);
    string name(RollDice(300), '\0');
    std::generate(name.begin(), name.end(), [this] { return static_cast<char>(RollDice(256)); });
    return name;
}

string Crowd::PickName(std::vector<string> const &names)
{
    if (IsOneIn(100))
        return MakeName();
    return names.empty() ? "" : names[RollDice(names.size())];
}

string Crowd::PickTextureName()
{
    std::vector<string> names;
    Manager::Instance().GetRegisteredTileTextureNames(names);
    return PickName(names);
}

string Crowd::PickFontName()
{
    std::vector<string> names;
    Manager::Instance().GetRegisteredFontNames(names);
    return PickName(names);
}

string Crowd::PickCursorName()
{
    Manager const &manager = Manager::Instance();
    unsigned int const count = manager.GetNumCursors();
    return PickName(count == 0 ? std::vector<string>() : std::vector{manager.GetCursor(RollDice(count))->GetName()});
}

void Crowd::Make()
{
    Component &component = MakeMember(*this)->component;
    component.SetPosition(RollFloat(200), RollFloat(150));
    component.SetSize(RollFloat(200), RollFloat(200));
    component.SetDefaultCommandArea(IsOneIn(3) ? static_cast<eCommandArea>(RollDice(s_numCommandAreas))
                                               : e_area_client);
    component.SetCanDisable(IsOneIn(2));
    component.SetCanFocus(IsOneIn(2));
    component.EnableShaderHitTest(IsOneIn(2));
    component.SetToolTipText(MakeName());
    Attach(component);
}

bool Crowd::IsMember(Component const &component) const
{
    return std::any_of(components.begin(), components.end(),
                       [&](Wild const *member) { return &member->component == &component; });
}

void Crowd::Attach(Component &component)
{
    Component &parent = Pick().component;
    bool const isWanted = &parent != &component && !IsOneIn(3) && parent.CalcDepth() <= 8;
    if (!isWanted)
        return;
    bool const isCycle = component.IsAncestorOf(parent);
    Component const *const former = component.GetParent();
    try
    {
        parent.Attach(component);
    }
    catch (GUIException const &failure)
    {
        Take(failure);
        if (isCycle && component.GetParent() != former)
            AddFault("a refused attachment changed the tree");
        return;
    }
    if (isCycle)
        AddFault("a cycle was attached");
}

void Crowd::Act(Wild *told)
{
    if (isQuiet || !IsOneIn(rarity) || depth_ > 6 || components.empty())
        return;
    ++depth_;
    ++numActions;
    Wild &member = told != nullptr && IsOneIn(3) ? *told : Pick();
    bool const coin = IsOneIn(2);
    try
    {
        switch (RollDice(10))
        {
        case 0:
        case 1:
        case 2:
            ChangeTree(member, coin);
            break;
        case 3:
        case 4:
            ChangeState(member.component, coin);
            break;
        case 5:
        case 6:
            ChangeTargets(member.component, coin);
            break;
        case 7:
            ChangeHooks(member.component, coin);
            break;
        case 8:
            ChangeLook(member);
            break;
        default:
            coin ? ChangeShadersAndCursors(IsOneIn(2)) : ChangeTexturesAndFonts(IsOneIn(2));
            break;
        }
    }
    catch (GUIException const &failure)
    {
        Take(failure);
    }
    --depth_;
}

void Crowd::ChangeTree(Wild &member, bool coin)
{
    Component &component = member.component;
    switch (RollDice(12))
    {
    case 0:
        delete &component;
        break;
    case 1:
        component.DetachFromParent();
        break;
    case 2:
        // It may be in its destructor.
        if (Component *const top = &component.GetTopLevelAncestor(); IsMember(*top))
            delete top;
        break;
    case 3:
        // What other handlers make or detach meanwhile would stay out of the manager's list.
        isQuiet = IsOneIn(20);
        if (isQuiet)
            Manager::Instance().DeleteAllComponents();
        isQuiet = false;
        break;
    case 4:
        if (components.size() > s_maxComponents / 2)
            coin ? component.DeleteAllChildren() : component.DetachAllChildren();
        break;
    case 5:
        // Mostly it is no child.
        Pick().component.Detach(component);
        break;
    case 6:
    case 7:
    case 8:
        if (components.size() < s_maxComponents)
            Make();
        break;
    default:
        Attach(component);
        break;
    }
}

void Crowd::ChangeState(Component &component, bool coin)
{
    switch (RollDice(8))
    {
    case 0:
        component.SetVisible(!IsOneIn(3));
        break;
    case 1:
        component.SetEnabled(!IsOneIn(3));
        break;
    case 2:
        coin ? component.BringToFront() : component.SendToBack();
        break;
    case 3:
        component.BringInFront(Pick().component);
        break;
    case 4:
        component.SetOverlay(coin);
        component.SetGhost(IsOneIn(4));
        component.SetLayer(RollDice(3));
        break;
    case 5:
        component.UpdateGeometry(coin);
        break;
    case 6:
        component.SetPosition(RollFloat(200), RollFloat(150));
        component.ReportDirtyGeometry();
        break;
    default:
        component.PropagateVisibleToDescendants(true);
        break;
    }
}

void Crowd::ChangeTargets(Component &component, bool coin)
{
    Manager &manager = Manager::Instance();
    switch (RollDice(10))
    {
    case 0:
        coin ? component.RunModal() : component.EndModal();
        break;
    case 1:
        coin ? manager.RunModal(application_) : manager.EndModal(application_);
        break;
    case 2:
        component.ActivateTopLevel(coin);
        break;
    case 3:
        coin ? manager.ActivateApplication() : manager.CycleQueueActivate(IsOneIn(2));
        break;
    case 4:
        coin ? static_cast<void>(component.RequestMouseCapture()) : component.ReleaseMouseCapture();
        break;
    case 5:
        coin ? static_cast<void>(component.RequestKeyboardFocus()) : component.ReleaseKeyboardFocus();
        break;
    case 6:
        manager.BreakCommandMode();
        break;
    case 7:
    {
        Watch<Component> const self(component);
        component.RequestMouseCapture();
        if (self.Get() != nullptr)
            component.RequestKeyboardFocus();
        if (self.Get() != nullptr && coin)
            delete &component;
        break;
    }
    case 8:
        if (auto *const band = dynamic_cast<RubberBand *>(&component))
            band->Begin(vec2::ZERO);
        break;
    default:
        manager.SyncObjectStates();
        break;
    }
}

void Crowd::ChangeHooks(Component &component, bool coin)
{
    Manager &manager = Manager::Instance();
    Component &other = Pick().component;
    switch (RollDice(5))
    {
    case 0:
        component.InstallMessageHook(other, coin, &Pick().component);
        break;
    case 1:
        coin ? component.UninstallMessageHook(other) : component.UninstallAllMessageHooks();
        break;
    case 2:
        coin ? static_cast<void>(component.RegisterAsServiceProvider(RollDice(4)))
             : static_cast<void>(manager.UnregisterServiceProvider(RollDice(4)));
        break;
    case 3:
        manager.TimeNotifyRegister(component, coin);
        break;
    default:
    {
        Message_Show show(true);
        Message_ServiceCommand_ToolTip tip(ToolTipCommand_QueryParams, nullptr);
        coin ? manager.BroadcastMessage(show) : manager.SendMessageToServiceProvider(RollDice(4), tip);
        break;
    }
    }
}

void Crowd::ChangeLook(Wild &member)
{
    Manager const &manager = Manager::Instance();
    switch (RollDice(3))
    {
    case 0:
        if (unsigned int const count = manager.GetNumShaders(); count != 0)
            member.component.SetShaderName(manager.GetShader(RollDice(count))->GetName());
        break;
    case 1:
        member.component.SetClientAreaCursorName(PickCursorName());
        break;
    default:
        member.textureName = PickTextureName();
        member.component.RequestTileTextureRecache();
        break;
    }
}

void Crowd::ChangeShadersAndCursors(bool coin)
{
    Manager &manager = Manager::Instance();
    // Null past the end.
    BaseShader *const shader = manager.GetShader(RollDice(numShaders + 1));
    Cursor *const cursor = manager.GetCursor(RollDice(numCursors + 1));
    switch (RollDice(5))
    {
    case 0:
        if (numShaders < s_maxOthers)
            new WildShader(*this);
        break;
    case 1:
        if (string const textureName = PickTextureName(); numCursors < s_maxOthers && !textureName.empty())
            new WildCursor(*this, textureName);
        break;
    case 2:
        if (shader != nullptr)
        {
            shader->SetTextAttributes({PickFontName(), {}});
            manager.TimeNotifyRegister(*shader, coin);
        }
        break;
    case 3:
        // What is deleted or renamed is soon missing.
        if (cursor != nullptr && IsOneIn(10))
            coin ? manager.DeleteCursor(cursor->GetName()) : cursor->SetName(MakeName());
        else
            Cursor::SetGlobalSize(vec2(RollFloat(20), 8));
        break;
    default:
        if (shader != nullptr)
            coin ? manager.DeleteShader(shader->GetName()) : shader->SetName(MakeName());
        break;
    }
}

void Crowd::ChangeTexturesAndFonts(bool coin)
{
    Manager &manager = Manager::Instance();
    if (IsOneIn(4))
    {
        ChangeAliases(coin);
        return;
    }
    if (IsOneIn(20))
    {
        coin ? manager.UnregisterTileTexture(PickTextureName()) : manager.UnregisterFont(PickFontName());
        return;
    }
    string const name = MakeName();
    if (name.empty() || numTextures >= s_maxOthers)
        return;
    if (coin)
    {
        unsigned int const width = IsOneIn(10) ? s_refusedWidth : 16;
        AutoPtr<TileTexture> texture =
            std::make_unique<Counted<TileTexture>>(numTextures, e_format_A8R8G8B8, false, 1u, width, 1u, 2u);
        manager.RegisterTileTexture(name, texture);
    }
    else
    {
        AutoPtr<FontTexture> font = std::make_unique<Counted<FontTexture>>(numTextures, true, 256u, false);
        font->SetGenerateImageFromSystemFont(false);
        manager.RegisterFont(name, font);
    }
}

void Crowd::ChangeAliases(bool coin)
{
    Manager &manager = Manager::Instance();
    string const alias = MakeName();
    switch (RollDice(4))
    {
    case 0:
        coin ? manager.AddTileTextureAlias(alias, PickTextureName()) : manager.ClearTileTextureAlias(alias);
        break;
    case 1:
        coin ? manager.AddFontAlias(alias, PickFontName()) : manager.ClearFontAlias(alias);
        break;
    case 2:
        coin ? manager.AddShaderAlias(alias, MakeName()) : manager.ClearAllShaderAliases();
        break;
    default:
        coin ? manager.AddCursorAlias(alias, PickCursorName()) : manager.ClearCursorAlias(alias);
        break;
    }
}

void Crowd::Heal()
{
    Manager &manager = Manager::Instance();
    for (Wild *member : components)
    {
        member->textureName.clear();
        member->component.SetClientAreaCursorName("");
    }
    for (unsigned int i = 0; i < manager.GetNumShaders(); ++i)
        manager.GetShader(i)->SetTextAttributes({});
    manager.DeleteAllCursors();
    manager.UnregisterAllTileTextures();
    manager.ClearAllTileTextureAliases();
    manager.ClearAllFontAliases();
    manager.ClearAllCursorAliases();
}

void Crowd::Take(GUIException const &failure)
{
    ++numFailures;
    string const &text = failure.GetMessage();
    if (std::none_of(std::begin(s_failures), std::end(s_failures),
                     [&](std::string_view beginning) { return text.starts_with(beginning); }))
        AddFault("unexpected failure: " + text);
}

void Crowd::AddFault(string const &text)
{
    std::cerr << text << std::endl;
    isWell = false;
}

} // namespace quillmarsh::tests
