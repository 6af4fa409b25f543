// A second image beside the current one.
#ifndef QUILLMARSH_PLUGINS_VIEWER_IMAGE_COMPARISON_H
#define QUILLMARSH_PLUGINS_VIEWER_IMAGE_COMPARISON_H

#include "../workspace.h"

#include <viewer_model/images/composer.h>
#include <viewer_model/images/figures.h>

namespace viewer
{

using ImageLevelsPtr = std::shared_ptr<ImageLevels const>;

/// How two images share the view.
enum class eComparison
{
    /// Side by side, at the same place and zoom.
    e_side,
    /// One or the other.
    e_blink,
    /// One to the left of a divider, the other to the right.
    e_divider,
    /// What differs.
    e_difference
};
/// "side", "blink", "divider", "difference", in the order of the enumeration.
std::span<char const *const> GetComparisonNames();

/// What the user chooses. A plain record.
struct ComparisonSettings
{
    eComparison mode = eComparison::e_side;
    /// Place of the divider: 0 is the left edge of the view, 1 the right one.
    double divider = 0.5;
    eDifference difference = eDifference::e_absolute;
    /// The difference is shown this many times as large.
    double scale = 1;
};

/// The other image, and the difference between it and the current one. Frame thread only.
class Comparison : quillmarsh::NoCopy
{
public:
    explicit Comparison(Workspace &workspace) : workspace_(workspace) {}
    ~Comparison() { StopDifference(); }

    ComparisonSettings settings;
    /// In e_blink, the other image shows.
    bool showsOther = false;

    /// @name Life
    /// @{
    /// Begins with a document, which may still be loading.
    void Begin(DocumentPtr const &other);
    void End();
    /// True while there is another document, whether its image is there or not.
    bool IsOn() const { return other_ != nullptr; }
    /// True if the view is shared in this way now.
    bool Is(eComparison mode) const { return GetOther() != nullptr && settings.mode == mode; }
    /// Follows the documents, and computes the difference anew if it is shown and no longer right. Returns true if
    /// something that is shown has changed.
    bool Update(LoadedPtr const &current);
    /// @}

    DocumentPtr const &GetDocument() const { return other_; }
    /// Null while the other image is not there.
    ImageLevelsPtr GetOther() const { return loaded_ != nullptr ? loaded_->imageLevels : nullptr; }
    /// Null while it is computed, and if it cannot be.
    ImageLevelsPtr const &GetDifference() const { return difference_; }
    /// Of the whole difference, as parts of the nominal range; null without a difference.
    ChannelFigures const *GetFigures() const;
    /// Why there is no difference, in one line; empty if there is one, or will be.
    string const &GetFailure() const { return failure_; }
    bool IsComputing() const { return job_ != 0; }

private:
    struct Result;

    void StartDifference(LoadedPtr const &current);
    void StopDifference();

    Workspace &workspace_;
    DocumentPtr other_;
    LoadedPtr loaded_;
    unsigned int revision_ = 0;
    /// What the difference belongs to.
    ContentPtr first_;
    ContentPtr second_;
    eDifference kind_ = eDifference::e_absolute;
    ImageLevelsPtr difference_;
    std::optional<Figures> figures_;
    string failure_;
    unsigned int job_ = 0;
    /// False once the result of the job is of no use. The job has it, too, and may end after this object.
    std::shared_ptr<bool> isWanted_;
    bool hasNews_ = false;
};

} // namespace viewer

#endif
