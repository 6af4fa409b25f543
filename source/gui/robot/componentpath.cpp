#include <quillmarsh/gui/gui_componentpath.h>

#include "source/gui/robot/pathparser.h"
#include "source/gui/robot/pathsearch.h"

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/gui/gui_component.h>
#include <quillmarsh/gui/gui_manager.h>

#include <algorithm>

namespace quillmarsh::gui
{

namespace
{

using robot_parts::PathSearch;

/// Children or paths that a message lists at most.
constexpr std::size_t s_maxListed = 12;
constexpr std::size_t s_maxSimilar = 3;

/// Joins the texts by commas, and says how many more there are.
string List(std::vector<string> const &texts, std::size_t limit = s_maxListed)
{
    string list;
    for (std::size_t i = 0; i < std::min(texts.size(), limit); ++i)
        list += (list.empty() ? "" : ", ") + texts[i];
    if (texts.size() > limit)
        list += " and " + MakeString(static_cast<unsigned int>(texts.size() - limit)) + " more";
    return list;
}

std::vector<string> DescribeAll(std::vector<Component *> const &components)
{
    std::vector<string> texts;
    texts.reserve(components.size());
    for (Component const *component : components)
        texts.push_back(ComponentPath::Describe(*component));
    return texts;
}

std::vector<string> MakePaths(std::vector<Component *> const &components)
{
    std::vector<string> texts;
    texts.reserve(components.size());
    for (Component const *component : components)
        texts.push_back(ComponentPath::Make(*component));
    return texts;
}

/// Says what is below the components that the path still reaches.
string DescribePlace(PathSearch const &search)
{
    std::vector<Component *> const children = search.GetChildrenOfLast();
    if (search.GetNumSteps() == 0)
        return children.empty() ? "There are no components."
                                : "The top-level components are " + List(DescribeAll(children)) + ".";
    string const reached = List(MakePaths(search.GetLast()));
    if (children.empty())
        return "The path leads to " + reached + ", which has no children.";
    return "The path leads to " + reached + ", which has the children " + List(DescribeAll(children)) + ".";
}

string DescribeMissing(PathSearch const &search, ComponentPath::Step const &step, Manager const &manager)
{
    string text = "There is no " + step.text + ". " + DescribePlace(search);
    std::vector<string> const similar = MakePaths(robot_parts::FindSimilar(manager, step, s_maxSimilar));
    if (!similar.empty())
        text += " Similar: " + List(similar) + ".";
    return text;
}

/// Quotes a caption for a path.
string Quote(string const &caption)
{
    string quoted = "'";
    for (char const c : caption)
    {
        if (robot_parts::IsSpecial(c))
            quoted += '\\';
        quoted += c;
    }
    return quoted + '\'';
}

string DescribeStep(Component const &component)
{
    string const caption = component.GetCaption();
    return robot_parts::MakePlainClassName(component) + (caption.empty() ? "" : " " + Quote(caption));
}

/// Returns the index that tells the component from its siblings; empty if it needs none.
string MakeIndex(Component const &component, Manager const &manager)
{
    string const className = robot_parts::MakePlainClassName(component);
    string const caption = component.GetCaption();
    unsigned int numEqual = 0;
    unsigned int index = 0;
    for (Component const *sibling : robot_parts::GetChildren(component.GetParent(), manager))
    {
        if (sibling == &component)
            index = numEqual;
        bool const isEqual = robot_parts::MakePlainClassName(*sibling) == className &&
                             (caption.empty() || sibling->GetCaption() == caption);
        numEqual += isEqual ? 1 : 0;
    }
    return numEqual > 1 ? "[" + MakeString(index) + "]" : "";
}

} // namespace

ComponentPath::ComponentPath(string const &text) : text_(text), steps_(robot_parts::ParsePath(text)) {}

std::vector<Component *> ComponentPath::FindAll(Manager const &manager) const
{
    PathSearch search(manager);
    for (Step const &step : steps_)
    {
        if (!search.Advance(step))
            return {};
    }
    return search.GetLast();
}

Component *ComponentPath::Find(Manager const &manager, string &seen) const
{
    PathSearch search(manager);
    for (Step const &step : steps_)
    {
        if (search.Advance(step))
            continue;
        seen = DescribeMissing(search, step, manager);
        return nullptr;
    }
    std::vector<Component *> found = search.GetLast();
    if (found.size() == 1)
        return found.front();
    std::vector<Component *> visible;
    std::copy_if(found.begin(), found.end(), std::back_inserter(visible),
                 [](Component const *component) { return component->IsBranchVisible(); });
    if (visible.size() == 1)
        return visible.front();
    if (!visible.empty())
        found.swap(visible);
    seen = "The path leads to " + MakeString(static_cast<unsigned int>(found.size())) +
           " components: " + List(MakePaths(found)) + ".";
    return nullptr;
}

string ComponentPath::Make(Component const &component)
{
    Manager const &manager = Manager::Instance();
    std::vector<string> steps;
    for (Component const *step = &component; step != nullptr; step = step->GetParent())
        steps.push_back("/" + DescribeStep(*step) + MakeIndex(*step, manager));
    string path;
    for (auto step = steps.rbegin(); step != steps.rend(); ++step)
        path += *step;
    return path;
}

string ComponentPath::Describe(Component const &component)
{
    return DescribeStep(component);
}

} // namespace quillmarsh::gui
