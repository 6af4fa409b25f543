// Lists of the manager that stay whole while handlers run.
#ifndef QUILLMARSH_SOURCE_GUI_MANAGER_SAFELISTS_H
#define QUILLMARSH_SOURCE_GUI_MANAGER_SAFELISTS_H

#include <quillmarsh/gui/gui_component.h>

#include <algorithm>
#include <vector>

namespace quillmarsh::gui::manager_parts
{

/// Lists with places in their members. A member stands in each at most once.
enum eList : unsigned int
{
    e_list_top_level = 0,
    e_list_all,
    e_list_draw,
    e_list_dirty_branches,
    e_list_window_resize,
    e_list_cycle,
    e_list_time,
    e_list_tile_texture_requests,
    e_list_font_requests,
    e_list_shader_requests,
    e_list_cursor_requests,
    e_num_lists
};

/// Short lists without places. The mark is set when a component enters, and stays until it is destroyed, so that the
/// destruction of all others searches none of these lists.
enum eMark : std::uint8_t
{
    e_mark_hit_records = 1,
    e_mark_clicked_branches = 2,
    e_mark_modal_stack = 4,
    /// Capture, focus, command, button target, or focus request.
    e_mark_target = 8
};

/// Door of the manager's parts into users and components.
struct Membership
{
    static std::uint32_t &Place(VideoResourceUser &user, eList list) { return user.listPlaces_.places[list]; }
    static std::uint32_t Place(VideoResourceUser const &user, eList list) { return user.listPlaces_.places[list]; }
    static void Mark(VideoResourceUser &user, eMark mark) { user.listPlaces_.marks |= mark; }
    static bool IsMarked(VideoResourceUser const &user, eMark mark) { return (user.listPlaces_.marks & mark) != 0; }
    static void SetActiveGeomUpdateEvent(Component &component, eGeometryUpdateEvent event, eCommandArea area)
    {
        component.SetActiveGeomUpdateEvent(event, area);
    }

private:
    static_assert(VideoResourceUser::ListPlaces::s_numLists == e_num_lists);
};

/// Ordered list of `T`, a class derived from VideoResourceUser, whose members know their places: membership, erasure
/// and replacement take constant time. Nothing is allocated while the capacity suffices.
///
/// An erased member leaves a gap. Gaps are closed when the list is next read by index or rebuilt and no walk runs; walks
/// pass over them. A walk gives each member that stood in the list when it began, and still stands in it when its turn
/// comes, once. When a walk runs, an insertion ahead of the end, a sort and a rebuild set the walked array aside: the
/// walk ends on it, and erasure searches the arrays set aside, too.
template<typename T>
class SafeList : NoCopy
{
public:
    explicit SafeList(eList list) : list_(list) {}

    /// @name Members
    /// @{
    bool Contains(T const &member) const
    {
        return Membership::Place(member, list_) != VideoResourceUser::ListPlaces::s_none;
    }
    /// Returns false if it is a member already.
    bool Append(T &member);
    /// Likewise.
    bool InsertAtFront(T &member);
    /// Returns false if it is no member.
    bool Erase(T &member);
    void Swap(T &a, T &b);
    void MoveToFront(T &member);
    void MoveToEnd(T &member);
    void Clear();
    /// True if member `a` stands ahead of member `b`.
    bool IsAhead(T const &a, T const &b) const { return Membership::Place(a, list_) < Membership::Place(b, list_); }
    /// @}

    /// @name Reading
    /// @{
    unsigned int GetSize() const { return size_; }
    bool IsEmpty() const { return size_ == 0; }
    /// Returns a member by index; null past the end. Closes the gaps.
    T *Get(unsigned int index);
    T *GetFirst() { return Get(0); }
    T *GetLast() { return size_ == 0 ? nullptr : Get(size_ - 1); }
    /// @}

    /// @name Walks
    /// `call` gets a `T &`. The other forms are for calls that run no handler.
    /// @{

    /// Calls for each member. What a call throws passes through.
    template<typename Call>
    void ForEach(Call &&call);
    /// Calls for each member and takes it out first: for lists that are worked off. Members that enter meanwhile stay.
    template<typename Call>
    void WorkOff(Call &&call);
    /// Returns the last member for which `test` is true, from the end; null if there is none.
    template<typename Test>
    T *FindLast(Test &&test) const;
    /// Returns the first one.
    template<typename Test>
    T *FindFirst(Test &&test) const;
    /// @}

    /// @name Rebuild
    /// @{

    /// Empties the list for appends by AppendRebuilt(), and keeps its capacity.
    void BeginRebuild();
    /// Appends something that is no member.
    void AppendRebuilt(T &member)
    {
        Membership::Place(member, list_) = static_cast<std::uint32_t>(members_.size());
        members_.push_back(&member);
        ++size_;
    }
    /// Sorts the members, and keeps the order of equal ones.
    template<typename Less>
    void StableSort(Less &&less);
    /// @}

private:
    eList list_;
    /// Members with null in the gaps.
    std::vector<T *> members_;
    unsigned int size_ = 0;
    /// Walks over members_, and the arrays that walks still use.
    unsigned int numWalks_ = 0;
    std::vector<std::vector<T *>> setAside_;
};

/// Short list of components without places: hit branches, clicked branches. Its walk passes over the components that
/// were erased meanwhile.
class ComponentRow : NoCopy
{
public:
    explicit ComponentRow(eMark mark) : mark_(mark) {}

    void Append(Component &component);
    void Clear();
    /// Linear; called for marked components only.
    void Erase(Component &component);
    bool Contains(Component const &component) const;
    bool IsEmpty() const { return members_.empty(); }
    /// Exchanges the members; not during a walk.
    void Swap(ComponentRow &other) { members_.swap(other.members_); }
    /// Members with null for those that were erased in a walk.
    std::vector<Component *> const &Get() const { return members_; }

    /// Calls for each component that is still there. What comes in meanwhile is left for the next walk.
    template<typename Call>
    void ForEach(Call &&call)
    {
        std::size_t const count = members_.size();
        ++numWalks_;
        try
        {
            for (std::size_t i = 0; i < count && i < members_.size(); ++i)
            {
                if (members_[i] != nullptr)
                    call(*members_[i]);
            }
        }
        catch (...)
        {
            EndWalk();
            throw;
        }
        EndWalk();
    }

private:
    void EndWalk()
    {
        if (--numWalks_ == 0)
            std::erase(members_, nullptr);
    }

    eMark mark_;
    std::vector<Component *> members_;
    unsigned int numWalks_ = 0;
};

} // namespace quillmarsh::gui::manager_parts

#endif
