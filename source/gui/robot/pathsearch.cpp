#include "source/gui/robot/pathsearch.h"

#include "source/gui/robot/pathparser.h"

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/gui/gui_component.h>
#include <quillmarsh/gui/gui_manager.h>

#include <algorithm>
#include <numeric>
#include <unordered_set>
#include <utility>

namespace quillmarsh::gui::robot_parts
{

namespace
{

/// Components that FindSimilar() compares, and characters of their captions, so that a huge tree costs no seconds.
constexpr std::size_t s_maxCompared = 10000;
constexpr std::size_t s_maxComparedLength = 64;
/// Share of the wanted characters that may differ.
constexpr std::size_t s_similarShare = 2;

string MakeClassName(Component const &component)
{
    return FormatClassName(GetTypeName(typeid(component)));
}

/// Returns where the name without namespaces begins. Those of template arguments do not count.
std::size_t FindPlainName(string const &name)
{
    std::size_t begin = 0;
    int depth = 0;
    for (std::size_t i = 0; i + 1 < name.size(); ++i)
    {
        depth += name[i] == '<' ? 1 : name[i] == '>' ? -1 : 0;
        if (depth == 0 && name.compare(i, 2, "::") == 0)
            begin = i + 2;
    }
    return begin;
}

/// True for the full name, and for its end behind any of its namespaces.
bool IsOfClass(Component const &component, string const &wanted)
{
    string const name = MakeClassName(component);
    if (!name.ends_with(wanted))
        return false;
    std::size_t const begin = name.size() - wanted.size();
    return begin == 0 || (begin <= FindPlainName(name) && name.compare(begin - 2, 2, "::") == 0);
}

bool Matches(Component const &component, ComponentPath::Step const &step)
{
    return (step.className.empty() || IsOfClass(component, step.className)) &&
           (!step.hasCaption || MatchesPattern(component.GetCaption(), step.caption));
}

/// Calls for all descendants of a component, or for all components, in the order of the tree, until the call returns
/// false.
template<typename Call>
void WalkDescendants(Component const *parent, Manager const &manager, Call &&call)
{
    std::vector<Component *> stack = GetChildren(parent, manager);
    std::reverse(stack.begin(), stack.end());
    while (!stack.empty())
    {
        Component *const component = stack.back();
        stack.pop_back();
        if (!call(*component))
            return;
        std::vector<Component *> const &children = component->GetChildren();
        stack.insert(stack.end(), children.rbegin(), children.rend());
    }
}

/// Number of characters to insert, delete or replace.
std::size_t GetDistance(string const &one, string const &other)
{
    string const a = one.substr(0, s_maxComparedLength);
    string const b = other.substr(0, s_maxComparedLength);
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i)
    {
        std::size_t diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < b.size(); ++j)
        {
            std::size_t const replaced = diagonal + (a[i] == b[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

string ToLower(string text)
{
    LowerCase(text);
    return text;
}

} // namespace

bool PathSearch::Advance(ComponentPath::Step const &step)
{
    std::vector<Component *> found;
    if (numSteps_ == 0)
        Collect(nullptr, step, found);
    for (Component *const parent : last_)
        Collect(parent, step, found);
    if (found.empty())
        return false;
    // Descendants of two components of one branch come twice.
    std::unordered_set<Component *> seen;
    std::erase_if(found, [&](Component *component) { return !seen.insert(component).second; });
    last_.swap(found);
    ++numSteps_;
    return true;
}

std::vector<Component *> PathSearch::GetChildrenOfLast() const
{
    if (numSteps_ == 0)
        return GetChildren(nullptr, manager_);
    std::vector<Component *> children;
    for (Component const *parent : last_)
        children.insert(children.end(), parent->GetChildren().begin(), parent->GetChildren().end());
    return children;
}

void PathSearch::Collect(Component *parent, ComponentPath::Step const &step, std::vector<Component *> &found) const
{
    unsigned int numMatches = 0;
    auto const take = [&](Component &component)
    {
        if (!Matches(component, step))
            return true;
        if (!step.hasIndex || numMatches == step.index)
            found.push_back(&component);
        return !step.hasIndex || numMatches++ < step.index;
    };
    if (step.isDeep)
    {
        WalkDescendants(parent, manager_, take);
        return;
    }
    for (Component *const child : GetChildren(parent, manager_))
    {
        if (!take(*child))
            return;
    }
}

std::vector<Component *> GetChildren(Component const *parent, Manager const &manager)
{
    if (parent != nullptr)
        return parent->GetChildren();
    std::vector<Component *> components;
    for (unsigned int i = 0; i < manager.GetNumTopLevelComponents(); ++i)
    {
        if (Component *const component = manager.GetTopLevelComponent(i))
            components.push_back(component);
    }
    return components;
}

string MakePlainClassName(Component const &component)
{
    string const name = MakeClassName(component);
    return name.substr(FindPlainName(name));
}

std::vector<Component *> FindSimilar(Manager const &manager, ComponentPath::Step const &step, std::size_t limit)
{
    struct Candidate
    {
        std::size_t distance;
        Component *component;
    };
    string const className = ToLower(step.className);
    string const caption = ToLower(StripPattern(step.caption));
    std::size_t const maxDistance = (className.size() + caption.size()) / s_similarShare;
    std::vector<Candidate> candidates;
    std::size_t numCompared = 0;
    WalkDescendants(nullptr, manager,
                    [&](Component &component)
                    {
                        std::size_t distance = 0;
                        if (!className.empty())
                            distance += GetDistance(className, ToLower(MakePlainClassName(component)));
                        if (step.hasCaption)
                            distance += GetDistance(caption, ToLower(component.GetCaption()));
                        if (distance <= maxDistance)
                            candidates.push_back({distance, &component});
                        return ++numCompared < s_maxCompared;
                    });
    std::stable_sort(candidates.begin(), candidates.end(),
                     [](Candidate const &a, Candidate const &b) { return a.distance < b.distance; });
    std::vector<Component *> similar;
    for (std::size_t i = 0; i < std::min(candidates.size(), limit); ++i)
        similar.push_back(candidates[i].component);
    return similar;
}

} // namespace quillmarsh::gui::robot_parts
