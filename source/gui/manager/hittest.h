// What is under the mouse.
#ifndef QUILLMARSH_SOURCE_GUI_MANAGER_HITTEST_H
#define QUILLMARSH_SOURCE_GUI_MANAGER_HITTEST_H

#include "source/gui/manager/safelists.h"

namespace quillmarsh::gui::manager_parts
{

struct Parts;

/// Component that the mouse is over.
struct HitRecord
{
    /// Never null: a deleted component gives way to the null target.
    Component *component = nullptr;
    int depth = 0;
    /// A descendant was hit, too.
    bool covered = false;
};

/// Hit records of this and of the former test, and their differences. Walks the tree itself, and keeps its stack between
/// the tests. It reads the children anew at each step. When client code deletes a component during a test
/// (Parts::numDeleted), the test ends with the null target, and another one is forced for the next frame.
class HitTest : NoCopy
{
public:
    explicit HitTest(Parts &parts) : parts_(parts) {}

    /// Tests the modal branch, or else the top-level components from the front, into the new records. Clears the flag
    /// Pending::forceHitTest.
    void Collect(vec2 const &position);
    /// Computes left and entered components from old and new records.
    void ExtractDifferences();
    /// The new records become the old ones.
    void KeepRecords();
    /// Empties all records and sets Pending::forceHitTest.
    void Invalidate();
    /// Puts the null target in the place of the component in all records; called for marked ones.
    void OnDeleted(Component &component);

    /// Top records; their component is the null target if nothing was hit, and null before the first test.
    HitRecord const &GetNewTop() const { return newTop_; }
    HitRecord const &GetOldTop() const { return oldTop_; }
    /// Returns the component of the new top record, or the null target. Never null.
    Component &GetTarget() const;

    /// @name Walks for dispatch
    /// `call` gets a `Component &` and whether it is covered; the null target in place of a component that was deleted
    /// meanwhile. A walk empties the differences. Only one dispatch of the mouse runs at a time.
    /// @{
    template<typename Call>
    void ForEachLeft(Call &&call);
    template<typename Call>
    void ForEachEntered(Call &&call);
    /// @}

private:
    struct StackEntry
    {
        Component *component;
        unsigned int nextChild;
        bool firstVisit;
        /// Record of the nearest hit ancestor; of the component itself once it is hit. -1 for none.
        int parentRecord;
    };

    /// Tests one branch, and appends its records.
    void CollectBranch(Component &root, vec2 const &position);
    /// Returns the index of the record.
    int AppendRecord(Component &component, int depth, int parentRecord);
    /// Keeps the best overlay's record, what follows it, and its chain of ancestors.
    void ReduceToOverlay(int bestOverlay);
    void FindTop();

    Parts &parts_;
    std::vector<StackEntry> stack_;
    std::vector<HitRecord> newRecords_;
    std::vector<HitRecord> oldRecords_;
    std::vector<HitRecord> left_;
    std::vector<HitRecord> entered_;
    /// Places in these four behind the record of the last deleted component.
    std::size_t nextDeleted_[4] = {};
    /// Index of the parent's record for each new record, while an overlay may reduce them; -1 for none.
    std::vector<int> parentRecords_;
    HitRecord newTop_;
    HitRecord oldTop_;
};

template<typename Call>
void HitTest::ForEachLeft(Call &&call)
{
    for (std::size_t i = 0; i < left_.size(); ++i)
        call(*left_[i].component, left_[i].covered);
    left_.clear();
}

template<typename Call>
void HitTest::ForEachEntered(Call &&call)
{
    for (std::size_t i = 0; i < entered_.size(); ++i)
        call(*entered_[i].component, entered_[i].covered);
    entered_.clear();
}

} // namespace quillmarsh::gui::manager_parts

#endif
