#include <quillmarsh/mathtools/transforms.h>

#include "tests/support/failures.h"
#include "tests/support/gui_screen.h"
#include "tests/support/scripted_dialogs.h"

#include <gtest/gtest.h>

namespace quillmarsh
{
namespace
{

using gui::Component;
using gui::Cursor;
using tests::GuiDesk;
using tests::GuiScreen;
using tests::PlainShader;
using tests::RecordingUser;
using tests::ScriptedDialogs;
using Lines = std::vector<string>;

/// Font of one white sheet that counts the fonts that live.
struct CountedFont : gui::FontTexture
{
    CountedFont() : FontTexture(true, 256, false)
    {
        SetGenerateImageFromSystemFont(false);
        ++s_numLiving;
    }
    ~CountedFont() override { --s_numLiving; }

    static inline int s_numLiving = 0;
};

class GuiResources : public testing::Test
{
protected:
    static AutoPtr<gui::TileTexture> MakeTexture()
    {
        return std::make_unique<gui::TileTexture>(e_format_A8R8G8B8, false, 16, 16, 2, 2);
    }
    /// Adds and returns a registered texture or font.
    gui::TileTexture *AddTexture(string const &name)
    {
        auto texture = MakeTexture();
        gui::TileTexture *const added = texture.get();
        manager_.RegisterTileTexture(name, texture);
        EXPECT_EQ(texture, nullptr);
        return added;
    }
    CountedFont *AddFont(string const &name)
    {
        auto font = std::make_unique<CountedFont>();
        CountedFont *const added = font.get();
        manager_.RegisterFont(name, font.release());
        return added;
    }
    /// Makes one user of each kind, whose first letters are s, c and a.
    void AddUsers()
    {
        shader_ = new RecordingUser<PlainShader>(log_, "s", "shader");
        new RecordingUser<Cursor>(log_, "c", "cursor", vec2::ZERO, vec2::ONE, color4b(255, 255, 255, 255));
        component_ = new RecordingUser<Component>(log_, "a");
        component_->SetShaderName("shader");
        manager_.SyncObjectStates();
        log_.Take();
    }
    string SyncFailure()
    {
        return tests::MessageOf<GUIException>([this] { manager_.SyncObjectStates(); });
    }
    template<typename T>
    static string NameOf(T const &object)
    {
        return FormatObjectName(GetTypeName(typeid(object)), &object);
    }

    GuiDesk desk_;
    gui::Manager &manager_ = desk_.manager;
    tests::UserLog log_;
    gui::BaseShader *shader_ = nullptr;
    Component *component_ = nullptr;
};

TEST_F(GuiResources, ResolveAliasesInOneStep)
{
    gui::Font *const font = AddFont("font");
    manager_.AddFontAlias("alias", "font");
    manager_.AddFontAlias("second", "alias");
    manager_.AddFontAlias("nowhere", "missing");
    manager_.AddFontAlias("alias", "");
    EXPECT_EQ(manager_.GetFont("alias"), font);
    EXPECT_EQ(manager_.GetFont("second"), nullptr);
    EXPECT_EQ(manager_.GetFont("nowhere"), nullptr);
    EXPECT_EQ(manager_.GetFont(""), nullptr);
    string name;
    EXPECT_FALSE(manager_.ResolveFontAlias("font", name));
    EXPECT_EQ(name, "font");
    EXPECT_TRUE(manager_.ResolveFontAlias("second", name));
    EXPECT_EQ(name, "alias");

    // An alias hides an object of its name; deletion knows no aliases.
    auto *const real = new PlainShader("real");
    auto *const hidden = new PlainShader("hidden");
    manager_.AddShaderAlias("hidden", "real");
    EXPECT_EQ(manager_.GetShader("hidden"), real);
    manager_.DeleteShader("hidden");
    EXPECT_EQ(manager_.GetShader("hidden"), real);
    EXPECT_EQ(manager_.GetNumShaders(), 1u);
    manager_.ClearShaderAlias("hidden");
    EXPECT_EQ(manager_.GetShader("hidden"), nullptr);
    EXPECT_NE(static_cast<void *>(hidden), nullptr);
}

TEST_F(GuiResources, RefuseRegistrationAndLeaveTheObject)
{
    auto texture = MakeTexture();
    AutoPtr<gui::Font> font;
    EXPECT_EQ(tests::MessageOf<GUIException>([&] { manager_.RegisterTileTexture("", texture); }),
              "Invalid argument: passed empty string for texture-name.");
    EXPECT_EQ(tests::MessageOf<GUIException>([&] { manager_.RegisterFont("f", font); }),
              "Invalid argument: passed null for font-object.");
    EXPECT_NE(texture, nullptr);

    gui::TileTexture *const registered = texture.get();
    manager_.RegisterTileTexture("first", texture);
    EXPECT_EQ(tests::MessageOf<GUIException>([&] { manager_.RegisterTileTexture("second", registered); }),
              "second: texture-object already registered under name: first");
    EXPECT_EQ(manager_.GetTileTexture("second"), nullptr);

    // A font is a tile texture, too, and has one owner only.
    CountedFont *const both = AddFont("font");
    EXPECT_EQ(tests::MessageOf<GUIException>([&] { manager_.RegisterFont("other", both); }),
              "other: font-object already registered under name: font");
    EXPECT_EQ(tests::MessageOf<GUIException>([&] { manager_.RegisterTileTexture("tiles", both); }),
              "tiles: texture-object already registered under name: font");
    // One that was removed can be registered anew, as it is still there.
    manager_.UnregisterFont("font");
    manager_.RegisterFont("other", both);
    manager_.SyncObjectStates();
    EXPECT_EQ(CountedFont::s_numLiving, 1);
    EXPECT_EQ(manager_.GetFont("other"), both);
}

TEST_F(GuiResources, ReportMissingOnesAtSynchronisation)
{
    GuiScreen const screen;
    auto *const shader = new PlainShader("shader");
    manager_.AddFontAlias("alias", "font");
    manager_.SyncObjectStates();
    gui::TextAttributes attributes;
    attributes.fontName = "alias";
    shader->SetTextAttributes(attributes);
    // It stays missing, and the application may still register it.
    EXPECT_EQ(SyncFailure(), "Missing font for: " + NameOf(*shader));
    EXPECT_EQ(SyncFailure(), "Missing font for: " + NameOf(*shader));
    gui::Font *const font = AddFont("font");
    EXPECT_EQ(SyncFailure(), "");
    EXPECT_EQ(shader->GetFont(), font);

    Component &component = desk_.Add("a", {0, 0}, {10, 10});
    component.SetClientAreaCursorName("hand");
    EXPECT_EQ(SyncFailure(), "Missing cursor for: " + NameOf(component));
    new Cursor("hand", vec2::ZERO, vec2::ONE, {255, 255, 255, 255});
    // A missing shader is none.
    component.SetShaderName("nothing");
    EXPECT_EQ(SyncFailure(), "");
    EXPECT_EQ(component.GetBaseShader(), nullptr);
}

TEST_F(GuiResources, OutliveANestedSynchronisationThatFails)
{
    GuiScreen const screen;
    AddFont("font");
    AddUsers();
    manager_.UnregisterFont("font");
    log_.reaction = [&](string const &line)
    {
        if (line != "s fonts")
            return;
        log_.reaction = nullptr;
        log_.missing = {"c fonts"};
        EXPECT_NE(SyncFailure(), "");
        log_.missing.clear();
    };
    manager_.SyncObjectStates();
    // The cursor and the component have not looked up since.
    EXPECT_EQ(CountedFont::s_numLiving, 1);
    manager_.SyncObjectStates();
    EXPECT_EQ(CountedFont::s_numLiving, 0);
}

TEST_F(GuiResources, LookUpEverythingBeforeAnybodyIsTold)
{
    GuiScreen const screen;
    AddUsers();
    manager_.SyncObjectStates();
    EXPECT_EQ(log_.Take(), Lines());

    AddFont("font");
    AddTexture("texture");
    manager_.SyncObjectStates();
    EXPECT_EQ(log_.Take(),
              (Lines{"s texture list", "c texture list", "a texture list", "s font list", "c font list", "a font list",
                     "s textures", "c textures", "a textures", "s fonts", "c fonts", "a fonts", "s got textures",
                     "c got textures", "a got textures", "s got fonts", "c got fonts", "a got fonts"}));

    // Requests concern their user only; one that comes while users are told is worked off next time.
    log_.reaction = [&](string const &line)
    {
        if (line == "a got fonts")
            component_->RequestFontRecache();
    };
    component_->RequestFontRecache();
    component_->RequestFontRecache();
    manager_.SyncObjectStates();
    EXPECT_EQ(log_.Take(), (Lines{"a fonts", "a got fonts"}));
    log_.reaction = nullptr;
    manager_.SyncObjectStates();
    EXPECT_EQ(log_.Take(), (Lines{"a fonts", "a got fonts"}));

    // After a failure the whole step is repeated, and nobody was told.
    log_.missing = {"c fonts"};
    manager_.AddFontAlias("x", "font");
    EXPECT_NE(SyncFailure(), "");
    log_.Take();
    EXPECT_NE(SyncFailure(), "");
    EXPECT_EQ(log_.Take(), (Lines{"s fonts", "c fonts"}));
    log_.missing.clear();
    EXPECT_EQ(SyncFailure(), "");
    EXPECT_EQ(log_.Take(), (Lines{"s fonts", "c fonts", "a fonts", "s got fonts", "c got fonts", "a got fonts"}));
}

/// Makes a component in the middle of a synchronisation.
struct Maker : Component
{
    void OnFontListChanged(gui::Manager &) override
    {
        if (made != nullptr)
            return;
        made = new Component;
        made->SetShaderName("shader");
    }
    Component *made = nullptr;
};

/// User that is in no list of the manager, and asks for its font.
struct FreeUser : gui::VideoResourceUser
{
    bool CacheFontHandles(gui::Manager &) override
    {
        ++numLookUps;
        return true;
    }
    int numLookUps = 0;
};

TEST_F(GuiResources, LoseNoRequestWhenEverybodyLooksUpAnew)
{
    auto *const shader = new PlainShader("shader");
    auto *const maker = new Maker;
    FreeUser user;
    manager_.RequestFontRecache(user);
    AddFont("font");
    manager_.SyncObjectStates();
    manager_.SyncObjectStates();
    ASSERT_NE(nullptr, maker->made);
    EXPECT_EQ(shader, maker->made->GetBaseShader());
    EXPECT_EQ(1, user.numLookUps);
}

TEST_F(GuiResources, SurviveUsersThatDeleteOneAnother)
{
    GuiScreen const screen;
    AddUsers();
    new RecordingUser<Component>(log_, "b");
    manager_.SyncObjectStates();
    log_.Take();
    log_.reaction = [&](string const &line)
    {
        if (line == "s font list")
            manager_.DeleteCursor("cursor");
        if (line == "a fonts")
        {
            delete component_;
            component_ = nullptr;
        }
        if (line == "b fonts")
            manager_.DeleteAllShaders();
    };
    log_.missing = {"a fonts"};
    AddFont("font");
    // The address of the object that has deleted itself is still told.
    EXPECT_NE(SyncFailure(), "");
    log_.missing.clear();
    EXPECT_EQ(SyncFailure(), "");
    EXPECT_EQ(log_.Take(), (Lines{"s font list", "a font list", "b font list", "s fonts", "a fonts", "s fonts",
                                  "b fonts", "b got fonts"}));
    EXPECT_EQ(manager_.GetNumShaders() + manager_.GetNumCursors(), 0u);
}

TEST_F(GuiResources, KeepReplacedFontsUntilUsersHaveNewOnes)
{
    GuiScreen const screen;
    CountedFont *const first = AddFont("font");
    auto *const shader = new PlainShader("shader");
    gui::TextAttributes attributes;
    attributes.fontName = "font";
    shader->SetTextAttributes(attributes);
    manager_.SyncObjectStates();
    EXPECT_EQ(shader->GetFont(), first);
    EXPECT_EQ(screen.gui.GetNumTextures(), 1);

    CountedFont *const second = AddFont("font");
    EXPECT_EQ(CountedFont::s_numLiving, 2);
    EXPECT_EQ(shader->GetFont(), first);
    manager_.SyncObjectStates();
    EXPECT_EQ(shader->GetFont(), second);
    EXPECT_EQ(CountedFont::s_numLiving, 1);
    EXPECT_EQ(screen.gui.GetNumTextures(), 1);

    // Without a new one, the user has the old one for as long as the failure lasts.
    manager_.UnregisterAllFonts();
    EXPECT_NE(SyncFailure(), "");
    EXPECT_EQ(CountedFont::s_numLiving, 1);
    shader->SetTextAttributes({});
    EXPECT_EQ(SyncFailure(), "");
    EXPECT_EQ(CountedFont::s_numLiving, 0);
}

TEST_F(GuiResources, FollowARendererThatGoesAndComes)
{
    AddTexture("texture");
    AddUsers();
    manager_.SyncObjectStates();
    EXPECT_EQ(log_.Take(), Lines());
    tests::RecordingRenderer renderer;
    tests::RecordingGUIRenderer &gui = renderer.GetGUI();
    GuiScreen::Doors::GUIManager_ConnectVideoRenderer(renderer);
    EXPECT_EQ(log_.Take(), (Lines{"s renderer came", "c renderer came", "a renderer came"}));
    EXPECT_NE(desk_.kernel.logOut.str().find("gui-renderer-interface creates managed resources only: false"),
              string::npos);
    manager_.SyncObjectStates();
    EXPECT_EQ(gui.GetNumTextures(), 0);
    // What is refused is asked for again when all synchronise.
    gui.refusesTextures = true;
    constexpr char const *refused = "Failed to create gui-texture resource.";
    EXPECT_EQ(tests::MessageOf<GUIException>([] { GuiScreen::Doors::GUIManager_CreateVideoResources(false); }),
              refused);
    EXPECT_EQ(SyncFailure(), refused);
    gui.refusesTextures = false;
    EXPECT_EQ(SyncFailure(), "");
    EXPECT_EQ(gui.GetNumTextures(), 1);

    AddTexture("new");
    EXPECT_EQ(gui.GetNumTextures(), 1);
    gui.refusesTextures = true;
    EXPECT_EQ(SyncFailure(), refused);
    gui.refusesTextures = false;
    EXPECT_EQ(SyncFailure(), "");
    EXPECT_EQ(gui.GetNumTextures(), 2);

    // What was replaced must not outlive the renderer either.
    AddTexture("new");
    GuiScreen::Doors::GUIManager_ReleaseVideoResources(true);
    EXPECT_EQ(gui.GetNumTextures(), 0);
    log_.Take();
    GuiScreen::Doors::GUIManager_DisconnectVideoRenderer();
    EXPECT_EQ(log_.Take(), (Lines{"s renderer went", "c renderer went", "a renderer went"}));
    manager_.Draw();
    EXPECT_EQ(gui.calls, Lines());
}

TEST_F(GuiResources, KeepManagedOnesWhenTheDeviceIsLost)
{
    GuiScreen screen(true);
    gui::TileTexture *const texture = AddTexture("texture");
    manager_.SyncObjectStates();
    auto *const part = texture->GetVideoRendererResource();
    ASSERT_NE(part, nullptr);
    GuiScreen::Doors::GUIManager_ReleaseVideoResources(true);
    EXPECT_EQ(texture->GetVideoRendererResource(), part);
    // Without resources, new ones have to wait.
    gui::TileTexture *const later = AddTexture("later");
    manager_.SyncObjectStates();
    EXPECT_EQ(later->GetVideoRendererResource(), nullptr);
    GuiScreen::Doors::GUIManager_CreateVideoResources(true);
    manager_.SyncObjectStates();
    EXPECT_EQ(texture->GetVideoRendererResource(), part);
    EXPECT_NE(later->GetVideoRendererResource(), nullptr);
    EXPECT_EQ(screen.gui.requests.size(), 2u);

    ScriptedDialogs dialogs;
    tests::RecordingRenderer other;
    GuiScreen::Doors::GUIManager_ConnectVideoRenderer(other);
    GuiScreen::Doors::GUIManager_DisconnectVideoRenderer();
    GuiScreen::Doors::GUIManager_CreateVideoResources(false);
    GuiScreen::Doors::GUIManager_ReleaseVideoResources(false);
    EXPECT_EQ(dialogs.TakeTexts(), (Lines{"Video-renderer already connected to GUI-manager.",
                                          "Video-renderer is not connected to GUI-manager.",
                                          "Video-renderer is not connected to GUI-manager."}));
    GuiScreen::Doors::GUIManager_ConnectVideoRenderer(screen.renderer);
}

TEST_F(GuiResources, ForgetDeletedShadersAtOnce)
{
    GuiScreen screen;
    auto *const shader = new PlainShader("look");
    Component &parent = desk_.Add("parent", {10, 20}, {100, 100});
    Component &child = desk_.Add("child", {1, 2}, {10, 10}, &parent);
    child.SetShaderName("look");
    manager_.TimeNotifyRegister(*shader, true);
    manager_.Draw();
    EXPECT_EQ(child.GetBaseShader(), shader);
    EXPECT_EQ(screen.gui.calls, (Lines{"begin", "colored @11,22", "end"}));

    manager_.DeleteShader("look");
    EXPECT_EQ(child.GetBaseShader(), nullptr);
    screen.gui.calls.clear();
    desk_.mouse.SetCanDisplaySystemCursor(true);
    desk_.Frame();
    manager_.Draw();
    EXPECT_EQ(screen.gui.calls, (Lines{"begin", "end"}));

    // A name that comes back is found again. Of equal names, the older one counts.
    auto *const again = new PlainShader("other");
    new PlainShader("look");
    again->SetName("look");
    manager_.SyncObjectStates();
    EXPECT_EQ(child.GetBaseShader(), manager_.GetShader(0u));
    EXPECT_EQ(manager_.GetShader(1u), again);
    std::ostringstream out;
    again->SetName("");
    manager_.DumpRegisteredShaders(out, 1);
    string address;
    ToString(address, static_cast<void *>(again));
    EXPECT_EQ(out.str(), "\t[unnamed] @ " + address + "\n\tlook\n");
}

TEST_F(GuiResources, DrawWithinAPictureThatHasBegun)
{
    GuiScreen screen;
    new PlainShader("look");
    Component &component = desk_.Add("a", {10, 20}, {30, 40});
    component.SetShaderName("look");
    mat4 former;
    GenerateTranslateVM(former, 5, 6, 7);
    screen.gui.Begin();
    screen.gui.SetTransform(former);
    manager_.Draw();
    mat4 after;
    screen.gui.GetTransform(after);
    EXPECT_EQ(after, former);
    EXPECT_EQ(screen.gui.calls, (Lines{"begin", "colored @10,20"}));

    EXPECT_TRUE(manager_.IntersectsWindow(component));
    component.SetPosition(641, 0);
    component.UpdateGeometry(true);
    EXPECT_FALSE(manager_.IntersectsWindow(component));
}

} // namespace
} // namespace quillmarsh
