// Paths that name components for people, scripts and robots.
#ifndef QUILLMARSH_GUI_GUI_COMPONENTPATH_H
#define QUILLMARSH_GUI_GUI_COMPONENTPATH_H

#include <quillmarsh/platform/types.h>

#include <vector>

namespace quillmarsh::gui
{

class Component;
class Manager;

/// Path to components by class, caption and index, such as
///
///     Panel 'Files' / ListBox / Button 'Open'
///
/// A path consists of steps. A step names a class, a caption in single or double quotes, or both, and may end with an
/// index in brackets:
///
/// | Step | Components |
/// |---|---|
/// | `Button` | of the class, without its namespaces or with them (`gui::Button`) |
/// | `Button 'Open'` | of the class and with the caption |
/// | `'Open'`, `* 'Open'` | of any class with the caption |
/// | `Button[2]`, `*[2]` | the third of these components, counted from 0 |
///
/// Between two steps, `/` leads to the children and `//` to all descendants. The first step may be at any depth of the
/// tree; with a `/` ahead of it, it is a top-level component. Children and descendants are counted in their order in
/// the tree, for each parent anew, hidden ones included. In a caption, `*` stands for any characters and `?` for one; a
/// backslash takes the meaning from the character behind it. The caption is what Component::GetCaption() returns. The
/// text of a path is UTF-8.
///
/// Frame thread only, except the constructor.
class QUILLMARSH_API ComponentPath
{
public:
    /// Throws a GUIException that says what is wrong with the text, and at which character.
    explicit ComponentPath(string const &text);

    /// Returns the text as it was given.
    string const &GetText() const { return text_; }

    /// Returns all components that the path leads to, in the order of the tree.
    std::vector<Component *> FindAll(Manager const &manager) const;
    /// Returns the one component that the path leads to: among several, the one that can be seen. Null if there is
    /// none, or no single one; `seen` then says what is there instead: how far the path leads, the children there, and
    /// components that the path may mean.
    Component *Find(Manager const &manager, string &seen) const;

    /// Returns a path from the top level that leads to this component alone.
    static string Make(Component const &component);
    /// Returns the class of a component without namespaces, and its caption in quotes if it has one.
    static string Describe(Component const &component);

    /// @cond
    struct Step
    {
        /// Among all descendants, and not only among the children.
        bool isDeep = false;
        /// Empty for any.
        string className;
        bool hasCaption = false;
        /// Pattern, in Latin-1.
        string caption;
        bool hasIndex = false;
        unsigned int index = 0;
        /// As it stands in the path.
        string text;
    };
    /// @endcond

private:
    string text_;
    std::vector<Step> steps_;
};

} // namespace quillmarsh::gui

#endif
