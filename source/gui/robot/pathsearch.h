// Looks for the components of a path.
#ifndef QUILLMARSH_SOURCE_GUI_ROBOT_PATHSEARCH_H
#define QUILLMARSH_SOURCE_GUI_ROBOT_PATHSEARCH_H

#include <quillmarsh/gui/gui_componentpath.h>

namespace quillmarsh::gui::robot_parts
{

/// Follows a path from step to step. Calls no handlers but GetCaption().
class PathSearch
{
public:
    explicit PathSearch(Manager const &manager) : manager_(manager) {}

    /// Follows one more step. Returns false, and stays, if it leads nowhere.
    bool Advance(ComponentPath::Step const &step);
    /// Returns the components that the steps so far lead to; none before the first step.
    std::vector<Component *> const &GetLast() const { return last_; }
    unsigned int GetNumSteps() const { return numSteps_; }
    /// Returns the children of these components; the top-level components before the first step.
    std::vector<Component *> GetChildrenOfLast() const;

private:
    void Collect(Component *parent, ComponentPath::Step const &step, std::vector<Component *> &found) const;

    Manager const &manager_;
    std::vector<Component *> last_;
    unsigned int numSteps_ = 0;
};

/// Returns the children of a component; the top-level components for null.
std::vector<Component *> GetChildren(Component const *parent, Manager const &manager);
/// Returns the class of a component without namespaces.
string MakePlainClassName(Component const &component);
/// Returns the components, at most `limit`, whose class and caption look most like the step, the nearest first.
std::vector<Component *> FindSimilar(Manager const &manager, ComponentPath::Step const &step, std::size_t limit);

} // namespace quillmarsh::gui::robot_parts

#endif
