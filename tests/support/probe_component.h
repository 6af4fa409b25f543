// A component that records what it is told.
#ifndef QUILLMARSH_TESTS_SUPPORT_PROBE_COMPONENT_H
#define QUILLMARSH_TESTS_SUPPORT_PROBE_COMPONENT_H

#include <quillmarsh/gui/gui_component.h>

#include <functional>
#include <utility>

namespace quillmarsh::tests
{

/// Appends "name.what;" to a log for each hook and message, and then runs an action, which may delete it.
class ProbeComponent : public gui::Component
{
public:
    /// The log is borrowed. Becomes a child of `parent` without a record; stays top-level for null.
    ProbeComponent(string name, string &log, gui::Component *parent = nullptr) : name_(std::move(name)), log_(log)
    {
        if (parent != nullptr)
            AttachTo(*parent);
        log_.clear();
    }
    ~ProbeComponent() override { log_ += "~" + name_ + ";"; }

    /// Gets what was recorded.
    std::function<void(string const &what)> action;
    /// Answer to every message.
    bool consumes = false;

    string const &GetName() const { return name_; }

    using Component::SendMessageToChildren;
    using Component::SendMessageToFirstChild;
    using Component::SendMessageToLastChild;
    using Component::SendMessageToNextSibling;
    using Component::SendMessageToParent;
    using Component::SendMessageToPreviousSibling;
    using Component::SendMessageToSelfAndSiblings;
    using Component::SendMessageToSiblings;

    void OnAttachedChild(gui::Component &child) override
    {
        auto const *const probe = dynamic_cast<ProbeComponent const *>(&child);
        Record("got " + (probe != nullptr ? probe->name_ : "another"));
    }
    void OnDetachedChild(gui::Component &) override { Record("lost"); }
    void OnAttachedToParent() override { Record("attached"); }
    void OnDetachedFromParent() override { Record("detached"); }
    void RecalcSize() override { Record("size"); }
    void RecalcLayout() override { Record("layout"); }
    void UpdateGeometryCache() override { Record("cache"); }
    void OnChangedBranchVisible(bool visible) override { Record(visible ? "branch on" : "branch off"); }
    void OnChangedVisible() override { Record("visible"); }
    void OnChangedEnabled() override { Record("enabled"); }
    void OnChangedFocused() override { Record("focused"); }
    void OnChangedActive() override { Record("active"); }
    void OnChangedFlags() override { Record("flags"); }
    void DrawSelf(gui::Renderer &) override { Record("draw"); }
    void OnTimeDelta(double) override { Record("time"); }
    bool HitTestSelf(vec2 const &position) const override
    {
        Record("hit");
        return Component::HitTestSelf(position);
    }
    bool OnMsgOnOff(bool on) override
    {
        bool const result = consumes;
        Record(on ? "on" : "off");
        return result;
    }

protected:
    void Record(string const &what) const
    {
        log_ += name_ + "." + what + ";";
        // The action may delete its own holder.
        if (auto const call = action)
            call(what);
    }

private:
    string name_;
    string &log_;
};

} // namespace quillmarsh::tests

#endif
