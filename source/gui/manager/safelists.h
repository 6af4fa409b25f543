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
    /// All components; for a shader or cursor, the registry of its kind.
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
    e_list_tile_textures_looked_up,
    e_list_fonts_looked_up,
    e_list_shaders_looked_up,
    e_list_cursors_looked_up,
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
    e_mark_target = 8,
    /// No list: the destructor of the component runs.
    e_mark_destroyed = 16
};

/// Door of the manager's parts into users and components.
struct Membership
{
    /// Place of a user that is no member.
    static constexpr std::uint32_t s_none = VideoResourceUser::ListPlaces::s_none;

    static std::uint32_t &Place(VideoResourceUser &user, eList list) { return user.listPlaces_.places[list]; }
    static std::uint32_t Place(VideoResourceUser const &user, eList list) { return user.listPlaces_.places[list]; }
    static void Mark(VideoResourceUser &user, eMark mark) { user.listPlaces_.marks |= mark; }
    static bool IsMarked(VideoResourceUser const &user, eMark mark) { return (user.listPlaces_.marks & mark) != 0; }
    static void SetActiveGeomUpdateEvent(Component &component, eGeometryUpdateEvent event, eCommandArea area)
    {
        component.SetActiveGeomUpdateEvent(event, area);
    }
    /// Takes a shader that is being deleted from a component that has it.
    static void Forget(Component &component, BaseShader const &shader)
    {
        if (component.baseShader_ == &shader)
            component.baseShader_ = nullptr;
    }
    /// Takes a cursor, likewise.
    static void Forget(Component &component, Cursor const &cursor)
    {
        if (component.clientAreaCursor_ == &cursor)
            component.clientAreaCursor_ = nullptr;
    }

private:
    static_assert(VideoResourceUser::ListPlaces::s_numLists == e_num_lists);
};

/// Ordered list of `T`, a class derived from VideoResourceUser, whose members know their places: membership, erasure
/// and replacement take constant time. Nothing is allocated while the capacity suffices.
///
/// An erased member leaves a gap. Gaps are closed when the list is next read by index, reordered or rebuilt; walks pass over
/// them. A walk gives each member that stood in the list when it began, and still stands in it when its turn
/// comes, once. What closes gaps or reorders while a walk runs sets the walked array aside: the walk ends on it, and
/// erasure searches the arrays set aside, too.
template<typename T>
class SafeList : NoCopy
{
public:
    explicit SafeList(eList list) : list_(list) {}

    /// @name Members
    /// @{
    bool Contains(T const &member) const { return Membership::Place(member, list_) != Membership::s_none; }
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
    /// Index of an array set aside, for a walk over the present one.
    static constexpr std::size_t s_present = static_cast<std::size_t>(-1);

    /// Walk that runs now; it ends itself, also when a call throws.
    class Walk : NoCopy
    {
    public:
        explicit Walk(SafeList &list) : list_(list), outer_(list.walks_), count_(list.members_.size())
        {
            list.walks_ = this;
        }
        ~Walk() { list_.EndWalk(outer_); }

        /// Returns the next member that is still there; null at the end.
        T *Next();

    private:
        friend class SafeList;

        SafeList &list_;
        Walk *outer_;
        std::size_t count_;
        std::size_t next_ = 0;
        std::size_t array_ = s_present;
    };

    void EndWalk(Walk *outer);
    /// Leaves the present array to the walks over it, and goes on with a copy.
    void SetAsideIfWalked();
    void CloseGaps();
    /// Keeps a list short whose last members come and go.
    void CloseGapsAtEnd();
    /// Writes the places of all members.
    void Renumber();

    eList list_;
    /// Members with null in the gaps.
    std::vector<T *> members_;
    unsigned int size_ = 0;
    /// Walks that run now, the innermost first, and the arrays that they still use.
    Walk *walks_ = nullptr;
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

template<typename T>
T *SafeList<T>::Walk::Next()
{
    while (true)
    {
        std::vector<T *> const &members = array_ == s_present ? list_.members_ : list_.setAside_[array_];
        if (next_ >= std::min(count_, members.size()))
            return nullptr;
        T *const member = members[next_++];
        if (member != nullptr && list_.Contains(*member))
            return member;
    }
}

template<typename T>
void SafeList<T>::EndWalk(Walk *outer)
{
    walks_ = outer;
    if (walks_ != nullptr)
        return;
    setAside_.clear();
    CloseGapsAtEnd();
}

template<typename T>
void SafeList<T>::CloseGapsAtEnd()
{
    while (!members_.empty() && members_.back() == nullptr)
        members_.pop_back();
}

template<typename T>
void SafeList<T>::SetAsideIfWalked()
{
    bool isWalked = false;
    for (Walk *walk = walks_; walk != nullptr; walk = walk->outer_)
    {
        if (walk->array_ != s_present)
            continue;
        walk->array_ = setAside_.size();
        isWalked = true;
    }
    if (isWalked)
        setAside_.push_back(members_);
    CloseGaps();
}

template<typename T>
void SafeList<T>::CloseGaps()
{
    if (size_ == members_.size())
        return;
    std::erase(members_, nullptr);
    Renumber();
}

template<typename T>
void SafeList<T>::Renumber()
{
    for (std::size_t i = 0; i < members_.size(); ++i)
        Membership::Place(*members_[i], list_) = static_cast<std::uint32_t>(i);
}

template<typename T>
bool SafeList<T>::Append(T &member)
{
    if (Contains(member))
        return false;
    AppendRebuilt(member);
    return true;
}

template<typename T>
bool SafeList<T>::InsertAtFront(T &member)
{
    if (Contains(member))
        return false;
    SetAsideIfWalked();
    members_.insert(members_.begin(), &member);
    ++size_;
    Renumber();
    return true;
}

template<typename T>
bool SafeList<T>::Erase(T &member)
{
    // An array set aside may have what the list has no more.
    for (std::vector<T *> &array : setAside_)
        std::replace(array.begin(), array.end(), &member, static_cast<T *>(nullptr));
    if (!Contains(member))
        return false;
    std::uint32_t &place = Membership::Place(member, list_);
    members_[place] = nullptr;
    place = Membership::s_none;
    --size_;
    if (walks_ == nullptr)
        CloseGapsAtEnd();
    return true;
}

template<typename T>
void SafeList<T>::Swap(T &a, T &b)
{
    SetAsideIfWalked();
    std::uint32_t &placeA = Membership::Place(a, list_);
    std::uint32_t &placeB = Membership::Place(b, list_);
    std::swap(members_[placeA], members_[placeB]);
    std::swap(placeA, placeB);
}

template<typename T>
void SafeList<T>::MoveToFront(T &member)
{
    SetAsideIfWalked();
    auto const place = members_.begin() + Membership::Place(member, list_);
    std::rotate(members_.begin(), place, place + 1);
    Renumber();
}

template<typename T>
void SafeList<T>::MoveToEnd(T &member)
{
    SetAsideIfWalked();
    auto const place = members_.begin() + Membership::Place(member, list_);
    std::rotate(place, place + 1, members_.end());
    Renumber();
}

template<typename T>
void SafeList<T>::Clear()
{
    SetAsideIfWalked();
    for (T *member : members_)
        Membership::Place(*member, list_) = Membership::s_none;
    members_.clear();
    size_ = 0;
}

template<typename T>
void SafeList<T>::BeginRebuild()
{
    Clear();
}

template<typename T>
T *SafeList<T>::Get(unsigned int index)
{
    if (index >= size_)
        return nullptr;
    if (size_ != members_.size())
        SetAsideIfWalked();
    return members_[index];
}

template<typename T>
template<typename Call>
void SafeList<T>::ForEach(Call &&call)
{
    for (Walk walk(*this); T *member = walk.Next();)
        call(*member);
}

template<typename T>
template<typename Call>
void SafeList<T>::WorkOff(Call &&call)
{
    for (Walk walk(*this); T *member = walk.Next();)
    {
        Erase(*member);
        call(*member);
    }
}

template<typename T>
template<typename Test>
T *SafeList<T>::FindLast(Test &&test) const
{
    for (auto member = members_.rbegin(); member != members_.rend(); ++member)
    {
        if (*member != nullptr && test(**member))
            return *member;
    }
    return nullptr;
}

template<typename T>
template<typename Test>
T *SafeList<T>::FindFirst(Test &&test) const
{
    for (T *member : members_)
    {
        if (member != nullptr && test(*member))
            return member;
    }
    return nullptr;
}

template<typename T>
template<typename Less>
void SafeList<T>::StableSort(Less &&less)
{
    SetAsideIfWalked();
    std::stable_sort(members_.begin(), members_.end(), [&](T *a, T *b) { return less(*a, *b); });
    Renumber();
}

} // namespace quillmarsh::gui::manager_parts

#endif
