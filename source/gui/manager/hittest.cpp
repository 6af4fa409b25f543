#include "source/gui/manager/hittest.h"

#include "source/gui/manager/parts.h"

namespace quillmarsh::gui::manager_parts
{

namespace
{

constexpr int s_noRecord = -1;

/// Looks for a component. Begins behind the place of the last one that was found, as both lists have mostly the same
/// components in the same order.
class RecordSearch
{
public:
    explicit RecordSearch(std::vector<HitRecord> const &records) : records_(records) {}

    /// Returns null if there is no record of the component.
    HitRecord const *Find(Component const *component)
    {
        for (std::size_t i = 0; i < records_.size(); ++i)
        {
            if (next_ >= records_.size())
                next_ = 0;
            HitRecord const &record = records_[next_++];
            if (record.component == component)
                return &record;
        }
        return nullptr;
    }

private:
    std::vector<HitRecord> const &records_;
    std::size_t next_ = 0;
};

void Replace(HitRecord &record, Component const &deleted, Component &substitute)
{
    if (record.component == &deleted)
        record.component = &substitute;
}

/// Replaces the record of a component, of which there is one at most. Looks from `next` on, and leaves there the place
/// behind it: many components are mostly deleted in the order of their records.
void Replace(std::vector<HitRecord> &records, std::size_t &next, Component const &deleted, Component &substitute)
{
    for (std::size_t i = 0; i < records.size(); ++i)
    {
        if (next >= records.size())
            next = 0;
        HitRecord &record = records[next++];
        if (record.component != &deleted)
            continue;
        record.component = &substitute;
        return;
    }
}

} // namespace

void HitTest::Collect(vec2 const &position)
{
    parts_.pending.forceHitTest = false;
    newRecords_.clear();
    unsigned int const numDeleted = parts_.numDeleted;
    Component *const modalTarget = parts_.modality.GetTarget();
    if (modalTarget != nullptr)
    {
        CollectBranch(*modalTarget, position);
    }
    else
    {
        // By index, as the hit test of a component may change the list.
        SafeList<Component> &topLevel = parts_.queues.topLevel;
        for (unsigned int i = topLevel.GetSize(); i > 0 && newRecords_.empty() && numDeleted == parts_.numDeleted; --i)
        {
            if (Component *const root = topLevel.Get(i - 1))
                CollectBranch(*root, position);
        }
    }
    bool const wasDisturbed = numDeleted != parts_.numDeleted;
    if (wasDisturbed)
    {
        newRecords_.clear();
        parts_.pending.forceHitTest = true;
    }
    if (newRecords_.empty())
    {
        bool const isNothing = wasDisturbed || modalTarget != nullptr;
        Component &target = isNothing ? static_cast<Component &>(*parts_.nullTarget) : *parts_.adapter;
        newRecords_.push_back({&target, 0, false});
    }
    FindTop();
}

void HitTest::CollectBranch(Component &root, vec2 const &position)
{
    unsigned int const numDeleted = parts_.numDeleted;
    int depth = 0;
    int overlayDepth = 0;
    int bestOverlayDepth = 0;
    int bestOverlay = s_noRecord;
    parentRecords_.clear();
    stack_.assign(1, {&root, 0, true, s_noRecord});
    while (!stack_.empty())
    {
        StackEntry &entry = stack_.back();
        Component &component = *entry.component;
        if (entry.firstVisit)
        {
            if (!component.IsVisible())
            {
                stack_.pop_back();
                continue;
            }
            entry.firstVisit = false;
            ++depth;
            bool const isOverlay = component.IsOverlay();
            overlayDepth += isOverlay ? 1 : 0;
            bool const isHit = component.HitTest(position - component.GetAbsolutePosition());
            if (numDeleted != parts_.numDeleted)
                return;
            if (isHit)
            {
                entry.parentRecord = AppendRecord(component, depth, entry.parentRecord);
                if (isOverlay && overlayDepth > bestOverlayDepth)
                {
                    bestOverlayDepth = overlayDepth;
                    bestOverlay = entry.parentRecord;
                }
            }
        }
        if (overlayDepth >= bestOverlayDepth && entry.nextChild < component.GetNumChildren())
        {
            Component *const child = component.GetChildren()[entry.nextChild++];
            int const parentRecord = entry.parentRecord;
            stack_.push_back({child, 0, true, parentRecord});
            continue;
        }
        --depth;
        overlayDepth -= component.IsOverlay() ? 1 : 0;
        stack_.pop_back();
    }
    if (bestOverlay != s_noRecord)
        ReduceToOverlay(bestOverlay);
}

int HitTest::AppendRecord(Component &component, int depth, int parentRecord)
{
    if (parentRecord != s_noRecord)
        newRecords_[static_cast<std::size_t>(parentRecord)].covered = true;
    Membership::Mark(component, e_mark_hit_records);
    newRecords_.push_back({&component, depth, false});
    parentRecords_.push_back(parentRecord);
    return static_cast<int>(newRecords_.size()) - 1;
}

void HitTest::ReduceToOverlay(int bestOverlay)
{
    int ancestor = parentRecords_[static_cast<std::size_t>(bestOverlay)];
    while (ancestor != s_noRecord)
    {
        HitRecord const record = newRecords_[static_cast<std::size_t>(ancestor)];
        newRecords_.push_back(record);
        ancestor = parentRecords_[static_cast<std::size_t>(ancestor)];
    }
    newRecords_.erase(newRecords_.begin(), newRecords_.begin() + bestOverlay);
}

void HitTest::FindTop()
{
    newTop_ = newRecords_.front();
    for (HitRecord const &record : newRecords_)
    {
        if (record.depth > newTop_.depth)
            newTop_ = record;
    }
}

void HitTest::ExtractDifferences()
{
    entered_.clear();
    RecordSearch searchOld(oldRecords_);
    for (HitRecord const &record : newRecords_)
    {
        HitRecord const *const old = searchOld.Find(record.component);
        if (old == nullptr || old->covered != record.covered)
            entered_.push_back(record);
    }
    left_.clear();
    RecordSearch searchNew(newRecords_);
    for (HitRecord const &record : oldRecords_)
    {
        if (searchNew.Find(record.component) == nullptr)
            left_.push_back(record);
    }
}

void HitTest::KeepRecords()
{
    oldRecords_ = newRecords_;
    oldTop_ = newTop_;
}

void HitTest::Invalidate()
{
    parts_.pending.forceHitTest = true;
    newRecords_.clear();
    oldRecords_.clear();
    left_.clear();
    entered_.clear();
    newTop_ = {};
    oldTop_ = {};
}

void HitTest::OnDeleted(Component &component)
{
    Component &nullTarget = *parts_.nullTarget;
    std::size_t *next = nextDeleted_;
    for (std::vector<HitRecord> *records : {&newRecords_, &oldRecords_, &left_, &entered_})
        Replace(*records, *next++, component, nullTarget);
    Replace(newTop_, component, nullTarget);
    Replace(oldTop_, component, nullTarget);
}

Component &HitTest::GetTarget() const
{
    return newTop_.component != nullptr ? *newTop_.component : *parts_.nullTarget;
}

} // namespace quillmarsh::gui::manager_parts
