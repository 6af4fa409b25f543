#include "tests/support/failures.h"
#include "tests/support/probe_component.h"
#include "tests/support/test_kernel.h"

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/gui/gui_manager.h>
#include <quillmarsh/gui/gui_shaders.h>

#include <gtest/gtest.h>

#include <sstream>

namespace quillmarsh
{
namespace
{

using tests::ProbeComponent;

string ObjectName(gui::Component const &component)
{
    return FormatObjectName(GetTypeName(typeid(component)), &component);
}

/// A root with the children "a" and "b"; "a" has the children "c" and "d".
class GuiComponent : public ::testing::Test
{
protected:
    ProbeComponent *Make(string const &name, gui::Component *parent = nullptr)
    {
        return new ProbeComponent(name, log, parent);
    }
    /// Returns the log since the last call.
    string TakeLog() { return std::exchange(log, {}); }

    /// The components write to it until the manager deletes them.
    string log;
    gui::Manager manager;
    ProbeComponent *root = Make("root");
    ProbeComponent *a = Make("a", root);
    ProbeComponent *b = Make("b", root);
    ProbeComponent *c = Make("c", a);
    ProbeComponent *d = Make("d", a);
};

// Tree.

TEST_F(GuiComponent, MovesToAnotherParent)
{
    b->SetVisible(false);
    TakeLog();
    b->Attach(*a);
    EXPECT_EQ(TakeLog(), "a.detached;root.lost;a.branch on;c.branch on;d.branch on;"
                         "b.got a;a.attached;a.branch off;c.branch off;d.branch off;");
    EXPECT_EQ(root->GetChildren(), std::vector<gui::Component *>{b});
    EXPECT_TRUE(a->IsChildOf(*b) && root->IsAncestorOf(*c) && c->IsDescendantOf(*b) && !b->IsDescendantOf(*b));
    EXPECT_EQ(c->CalcDepth(), 3u);
    EXPECT_EQ(&c->GetTopLevelAncestor(), root);
    EXPECT_EQ(a->GetChild(2), nullptr);

    // What is attached already, and the component itself, change nothing.
    b->Attach(*a);
    b->Attach(*b);
    EXPECT_EQ(TakeLog(), "");
}

TEST_F(GuiComponent, RefusesWrongRelativesAndChangesNothing)
{
    EXPECT_EQ(tests::MessageOf<GUIException>([&] { c->Attach(*root); }),
              "Attaching ancestor: " + ObjectName(*root) + " to descendant: " + ObjectName(*c));
    EXPECT_EQ(tests::MessageOf<GUIException>([&] { root->Detach(*c); }),
              "Detaching non-child: " + ObjectName(*c) + " from: " + ObjectName(*root));
    EXPECT_EQ(TakeLog(), "");
    EXPECT_TRUE(root->IsTopLevel() && a->IsChildOf(*root) && c->IsChildOf(*a));
    EXPECT_EQ(ObjectName(*c).substr(0, 24), "tests::ProbeComponent@0x");
}

TEST_F(GuiComponent, DetachesFromTheLastAndDeletesFromTheFirst)
{
    root->DetachAllChildren();
    EXPECT_EQ(TakeLog(), "b.detached;root.lost;b.branch on;a.detached;root.lost;a.branch on;c.branch on;d.branch on;");
    a->DeleteAllChildren();
    EXPECT_EQ(TakeLog(), "c.detached;a.lost;c.branch on;~c;d.detached;a.lost;d.branch on;~d;");
    a->AttachTo(*root);
    Make("e", a);
    // The hooks of a class are silent once its destructor has run.
    delete root;
    EXPECT_EQ(TakeLog(), "~root;a.detached;a.branch on;e.branch on;~a;e.detached;e.branch on;~e;");
}

TEST_F(GuiComponent, ChildrenKeepTheirOrderWhicheverLeave)
{
    std::vector<gui::Component *> expected = {a, b};
    for (int i = 0; i < 200; ++i)
    {
        expected.push_back(new gui::Component);
        root->Attach(*expected.back());
        if (i % 3 == 0)
            continue;
        // From the front mostly, which leaves a gap that must not show.
        auto const leaving = expected.begin() + (i % 7 == 0 ? static_cast<std::ptrdiff_t>(expected.size()) / 2 : 0);
        EXPECT_EQ(root->GetChild(0), expected.front());
        root->Detach(**leaving);
        expected.erase(leaving);
        ASSERT_EQ(root->GetNumChildren(), expected.size());
        EXPECT_EQ(root->GetChild(root->GetNumChildren() - 1), expected.back());
        if (i % 5 == 0)
        {
            ASSERT_EQ(root->GetChildren(), expected);
        }
    }
    EXPECT_EQ(root->GetChildren(), expected);
}

TEST_F(GuiComponent, LongChainsNeedNoStack)
{
    // Its log gets what a synchronisation does.
    tests::TestKernel const kernel;
    // Chains of twice the length, again and again: an attachment takes the time of both lengths.
    constexpr std::size_t length = 1 << 15;
    std::vector<std::pair<gui::Component *, gui::Component *>> chains(length);
    for (auto &[top, bottom] : chains)
        top = bottom = new gui::Component;
    for (std::size_t step = 1; step < length; step *= 2)
    {
        for (std::size_t i = 0; i < length; i += 2 * step)
        {
            chains[i].second->Attach(*chains[i + step].first);
            chains[i].second = chains[i + step].second;
        }
    }
    auto const [top, bottom] = chains.front();
    b->Attach(*top);
    EXPECT_EQ(bottom->CalcDepth(), length + 1);
    gui::Watch<gui::Component> const watch(bottom);
    top->SetPosition(2, 1);
    manager.SyncObjectStates();
    EXPECT_EQ(bottom->GetAbsolutePosition(), vec2(2, 1));
    root->SetVisible(false);
    delete root;
    EXPECT_EQ(watch.Get(), nullptr);
}

/// What a handler does in the middle of an attachment or a detachment.
struct Interference
{
    char const *who;
    char const *what;
    void (*act)(ProbeComponent &parent, ProbeComponent &child, ProbeComponent &other);
    /// Log of the attachment of the child of `other` to `parent`.
    char const *log;
};

constexpr Interference s_interferences[] = {
    {"child", "detached", [](ProbeComponent &, ProbeComponent &child, ProbeComponent &) { delete &child; },
     "child.detached;~child;"},
    {"child", "detached", [](ProbeComponent &parent, ProbeComponent &, ProbeComponent &) { delete &parent; },
     "child.detached;~parent;other.lost;child.branch on;"},
    {"other", "lost", [](ProbeComponent &, ProbeComponent &, ProbeComponent &other) { delete &other; },
     "child.detached;other.lost;~other;child.branch on;parent.got child;child.attached;child.branch on;"},
    {"other", "lost", [](ProbeComponent &, ProbeComponent &child, ProbeComponent &other) { other.Attach(child); },
     "child.detached;other.lost;other.got child;child.attached;child.branch on;child.branch on;"},
    {"parent", "got child", [](ProbeComponent &, ProbeComponent &child, ProbeComponent &) { delete &child; },
     "child.detached;other.lost;child.branch on;parent.got child;~child;parent.lost;"},
    {"parent", "got child", [](ProbeComponent &parent, ProbeComponent &, ProbeComponent &) { delete &parent; },
     "child.detached;other.lost;child.branch on;parent.got child;~parent;child.detached;child.branch on;~child;"},
    {"parent", "got child", [](ProbeComponent &, ProbeComponent &child, ProbeComponent &) { child.DetachFromParent(); },
     "child.detached;other.lost;child.branch on;parent.got child;child.detached;parent.lost;child.branch on;"},
    {"child", "attached", [](ProbeComponent &parent, ProbeComponent &, ProbeComponent &) { delete &parent; },
     "child.detached;other.lost;child.branch on;parent.got child;child.attached;~parent;child.detached;child.branch on;"
     "~child;"},
};

TEST_F(GuiComponent, GoesOnWithWhatHandlersLeaveOfAnAttachment)
{
    for (Interference const &interference : s_interferences)
    {
        SCOPED_TRACE(string(interference.who) + " " + interference.what + " " + interference.log);
        auto *const other = Make("other");
        auto *const parent = Make("parent");
        auto *const child = Make("child", other);
        for (ProbeComponent *component : {other, parent, child})
        {
            component->action = [=, &interference](string const &what)
            {
                if (component->GetName() != interference.who || what != interference.what)
                    return;
                for (ProbeComponent *each : {other, parent, child})
                    each->action = nullptr;
                interference.act(*parent, *child, *other);
            };
        }
        parent->Attach(*child);
        EXPECT_EQ(TakeLog(), interference.log);
        manager.DeleteAllComponents();
    }
}

TEST_F(GuiComponent, HandlersDeleteWhileChildrenAreDeletedAndDetached)
{
    // The first child takes its sibling and its parent with it.
    c->action = [&](string const &what)
    {
        if (what == "detached")
            delete d;
    };
    a->DeleteAllChildren();
    EXPECT_EQ(TakeLog(), "c.detached;~d;a.lost;a.lost;c.branch on;~c;");

    Make("e", a);
    auto *const f = Make("f", a);
    f->action = [&](string const &)
    {
        f->action = nullptr;
        delete a;
    };
    a->DetachAllChildren();
    EXPECT_EQ(TakeLog(), "f.detached;~a;root.lost;e.branch on;e.detached;e.branch on;~e;f.branch on;");
    EXPECT_TRUE(f->IsTopLevel());
}

TEST_F(GuiComponent, NobodyGetsWhatIsInItsDestructor)
{
    root->action = [&](string const &what)
    {
        if (what == "lost")
            root->Attach(*a);
    };
    c->action = [&](string const &what)
    {
        if (what != "detached")
            return;
        c->action = nullptr;
        a->Attach(*c);
        manager.DeleteAllComponents();
    };
    delete a;
    EXPECT_EQ(TakeLog(), "~a;root.lost;c.branch on;d.branch on;c.detached;~c;~root;b.detached;b.branch on;~b;"
                         "d.detached;d.branch on;~d;");
    EXPECT_EQ(manager.GetNumTopLevelComponents(), 0u);
}

// State.

TEST_F(GuiComponent, TellsOfVisibilityAndEndsActivity)
{
    for (ProbeComponent *component : {root, a, c})
        component->SetActive(true);
    TakeLog();
    // Only a top-level component tells its branch.
    a->SetVisible(false);
    EXPECT_EQ(TakeLog(), "a.visible;a.active;c.active;");
    EXPECT_FALSE(c->IsBranchVisible());
    root->SetVisible(false);
    EXPECT_EQ(TakeLog(),
              "root.visible;root.branch off;a.branch off;c.branch off;d.branch off;b.branch off;root.active;");
    // Hiding what is hidden ends the activity, too.
    d->SetActive(true);
    TakeLog();
    root->SetVisible(false);
    EXPECT_EQ(TakeLog(), "d.active;");

    root->PropagateVisibleToDescendants(false);
    EXPECT_EQ(TakeLog(), "c.visible;d.visible;b.visible;");
    root->PropagateVisibleToChildren(true);
    EXPECT_EQ(TakeLog(), "a.visible;b.visible;");
}

TEST_F(GuiComponent, StopsTellingWhenHandlersDelete)
{
    root->action = [&](string const &what)
    {
        if (what == "branch off")
            delete a;
    };
    b->SetActive(true);
    TakeLog();
    root->SetVisible(false);
    EXPECT_EQ(TakeLog(), "root.visible;root.branch off;~a;root.lost;c.branch on;d.branch on;c.detached;c.branch on;~c;"
                         "d.detached;d.branch on;~d;b.branch off;b.active;");
    b->action = [&](string const &what)
    {
        if (what == "visible")
            delete root;
    };
    root->PropagateVisibleToDescendants(false);
    EXPECT_EQ(TakeLog(), "b.visible;~root;b.detached;b.branch off;~b;");
}

TEST_F(GuiComponent, EnablesFocusesAndActivates)
{
    a->SetActive(true);
    TakeLog();
    a->SetEnabled(false);
    EXPECT_TRUE(a->IsEnabled());
    EXPECT_EQ(TakeLog(), "");

    a->SetCanDisable(true);
    a->SetFocused(true);
    EXPECT_FALSE(a->IsFocused());
    a->SetCanFocus(true);
    a->SetFocused(true);
    EXPECT_EQ(TakeLog(), "a.focused;");
    // The activity of a disabled component ends without a call, and it can be activated.
    a->SetEnabled(false);
    EXPECT_EQ(TakeLog(), "a.enabled;a.focused;");
    EXPECT_FALSE(a->IsActive() || a->IsFocused());
    a->SetFocused(true);
    EXPECT_EQ(TakeLog(), "");
    a->SetActive(true);
    EXPECT_TRUE(a->IsActive());
    EXPECT_EQ(TakeLog(), "a.active;");

    a->SetFlags(6);
    a->SetFlagsOnOff(3, true);
    a->SetFlagsOff(4);
    a->SetFlagsOn(3);
    EXPECT_EQ(a->GetFlags(), 3u);
    EXPECT_EQ(a->IsFlagOn(6), 2u);
    EXPECT_EQ(TakeLog(), "a.flags;a.flags;a.flags;");
}

// Geometry.

TEST_F(GuiComponent, UpdatesInPassesOverTheVisibleBranch)
{
    root->SetPosition(10, 20);
    a->SetPosition(1, 2);
    c->SetPosition(3, 4);
    d->SetPosition(5, 6);
    d->SetVisible(false);
    TakeLog();
    c->UpdateGeometry(true);
    EXPECT_EQ(TakeLog(), "c.size;a.size;b.size;root.size;root.layout;a.layout;c.layout;b.layout;"
                         "root.cache;a.cache;c.cache;b.cache;");
    EXPECT_EQ(c->GetAbsolutePosition(), vec2(14, 26));
    EXPECT_EQ(d->GetAbsolutePosition(), vec2(0, 0));

    // A layout may spare a child's branch its own.
    root->action = [&](string const &what)
    {
        if (what == "layout")
            a->ResetRecalcLayoutFlag(true);
    };
    a->SetPosition(2, 2);
    root->UpdateGeometry(false);
    EXPECT_EQ(TakeLog(), "c.size;a.size;b.size;root.size;root.layout;b.layout;root.cache;a.cache;c.cache;b.cache;");
    EXPECT_EQ(c->GetAbsolutePosition(), vec2(15, 26));
    root->action = nullptr;
    a->UpdateGeometry(false);
    EXPECT_EQ(TakeLog(), "c.size;a.size;a.layout;c.layout;a.cache;c.cache;");

    // One that fails leaves nothing out of the next update.
    c->action = [&](string const &what)
    {
        if (what == "layout")
            throw GUIException();
    };
    EXPECT_THROW(a->UpdateGeometry(false), GUIException);
    c->action = nullptr;
    TakeLog();
    a->UpdateGeometry(false);
    EXPECT_EQ(TakeLog(), "c.size;a.size;a.layout;c.layout;a.cache;c.cache;");
}

TEST_F(GuiComponent, UpdatesWhatHandlersLeave)
{
    c->action = [&](string const &what)
    {
        if (what == "size")
            delete d;
        else if (what == "layout")
            delete a;
    };
    b->action = [&](string const &what)
    {
        if (what == "cache")
            delete root;
    };
    root->UpdateGeometry(false);
    EXPECT_EQ(TakeLog(), "c.size;~d;a.lost;a.size;b.size;root.size;root.layout;a.layout;c.layout;"
                         "~a;root.lost;c.branch on;c.detached;c.branch on;~c;b.layout;root.cache;b.cache;"
                         "~root;b.detached;b.branch on;~b;");
}

TEST_F(GuiComponent, LimitsSizesWhereAsked)
{
    a->SetMinSize(vec2(-1, 20));
    a->SetMaxSize(vec2(50, 10));
    EXPECT_EQ(a->GetMinSize(), vec2(0, 20));
    EXPECT_EQ(a->GetMaxSize(), vec2(50, 20));
    a->SetMinSize(vec2(60, 5));
    EXPECT_EQ(a->GetMinSize(), vec2(50, 5));
    a->SetSize(1, 2);
    EXPECT_EQ(a->GetSize(), vec2(1, 2));
    EXPECT_EQ(a->CalcMinMaxClampedSize(vec2(1, 30)), vec2(50, 20));
    a->SetPosition(7, 8);
    EXPECT_EQ(a->CalcEndPosition(), vec2(8, 10));
    EXPECT_EQ(c->GetParentPosition(), vec2(7, 8));
    EXPECT_EQ(c->GetParentSize(), vec2(1, 2));
}

TEST_F(GuiComponent, FollowsTheWindow)
{
    struct Case
    {
        gui::eAutoPosition way;
        float position;
        float expected;
    };
    // Size 30, offset 7, window 100.
    constexpr Case cases[] = {
        {gui::e_autopos_none, 500, 500},        {gui::e_autopos_near, 500, 7},
        {gui::e_autopos_far, 500, 63},          {gui::e_autopos_center, 500, 35},
        {gui::e_autopos_keep_inside, 99, 99},   {gui::e_autopos_keep_inside, 100, 70},
        {gui::e_autopos_keep_inside, -50, -50},
    };
    for (Case const &each : cases)
    {
        SCOPED_TRACE(each.expected);
        root->SetSize(30, 300);
        root->SetPosition(each.position, each.position);
        root->SetAutoPositionOnWindowResize(each.way, gui::e_autopos_keep_inside, 7, 0);
        root->OnWindowResize(100, 100);
        // Larger than the window, it stands at its edge.
        EXPECT_EQ(root->GetPosition(), vec2(each.expected, each.position >= 100 ? 0 : each.position));
    }
    a->SetAutoPositionOnWindowResize(gui::e_autopos_near, gui::e_autopos_near, 7, 7);
    a->OnWindowResize(100, 100);
    EXPECT_EQ(a->GetPosition(), vec2(0, 0));
}

// Hit test.

/// Lets points through its left half, and makes areas void.
class HalfShader : public gui::BaseShader
{
public:
    HalfShader() : BaseShader("half") {}
    void DrawComponent(gui::Component &, gui::Renderer &) const override {}
    bool HitTest(gui::Component const &, vec2 const &position) const override { return position.x >= 5; }
    gui::eCommandArea HitTestCommandArea(gui::eCommandArea, vec2 const &) const override { return gui::e_area_void; }
};

TEST_F(GuiComponent, IsHitInsideItsRectangle)
{
    a->SetSize(10, 20);
    EXPECT_TRUE(a->HitTest(vec2(0, 0)) && a->HitTest(vec2(9.5f, 19.5f)));
    EXPECT_FALSE(a->HitTest(vec2(10, 5)) || a->HitTest(vec2(5, 20)) || a->HitTest(vec2(-0.5f, 5)));
    a->SetGhost(true);
    EXPECT_FALSE(a->HitTest(vec2(0, 0)));
    a->SetGhost(false);

    a->SetBaseShader(new HalfShader);
    a->SetDefaultCommandArea(gui::e_area_move);
    EXPECT_TRUE(a->HitTest(vec2(0, 0)));
    EXPECT_EQ(a->HitTestCommandArea(vec2(0, 0)), gui::e_area_move);
    a->EnableShaderHitTest(true);
    EXPECT_FALSE(a->HitTest(vec2(0, 0)) || a->HitTest(vec2(10, 0)));
    EXPECT_TRUE(a->HitTest(vec2(5, 0)));
    EXPECT_EQ(a->HitTestCommandArea(vec2(0, 0)), gui::e_area_void);
}

// Diagnostics.

TEST_F(GuiComponent, DumpsItsBranch)
{
    auto const line = [](gui::Component const &component, string const &before, string const &behind)
    {
        string name = ObjectName(component);
        return before + name.replace(name.find('@'), 1, ", ") + behind + "\n";
    };
    a->SetShaderName("half");
    c->SetVisible(false);
    std::ostringstream all;
    root->DumpHierarchy(all, 1, true, true, 0, false, 0);
    EXPECT_EQ(all.str(), line(*root, "\t0, ", ", Shader=, Flags=") + line(*a, "\t\t1, ", ", Shader=half, Flags=") +
                             line(*c, "\t\t\t2, ", ", Shader=, Flags=H") + line(*d, "\t\t\t2, ", ", Shader=, Flags=") +
                             line(*b, "\t\t1, ", ", Shader=, Flags="));
    std::ostringstream first;
    root->DumpHierarchy(first, 0, false, false, 0, true, 0);
    EXPECT_EQ(first.str(), line(*root, "", ""));
    EXPECT_EQ(d->MakeHierarchyTrace(" > "), ObjectName(*root) + " > " + ObjectName(*a) + " > " + ObjectName(*d));
}

} // namespace
} // namespace quillmarsh
