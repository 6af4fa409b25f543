// Conversions, changes of size and saving, as work for a job.
#ifndef QUILLMARSH_PLUGINS_VIEWER_MODEL_FILES_EDITS_H
#define QUILLMARSH_PLUGINS_VIEWER_MODEL_FILES_EDITS_H

#include <viewer_model/samples/content.h>

#include <quillmarsh/dataobjects/sampleddataoperations.h>

#include <functional>

namespace viewer
{

/// What to do with a content. The words of the console are those of the program qmdp. A plain record.
struct Edit
{
    enum class eKind
    {
        e_convert, ///< to `format`
        e_resize,  ///< to `size`, by `filter`
        e_flip,    ///< along `axis`
        e_crop     ///< to `size` from `origin` on; in the order of Dimensions
    };
    eKind kind;
    quillmarsh::eSampleFormat format = quillmarsh::e_format_none;
    quillmarsh::sampled_data::Dimensions size = {};
    quillmarsh::sampled_data::Dimensions origin = {};
    quillmarsh::sampled_data::eSizeFilter filter = quillmarsh::sampled_data::eSizeFilter::e_linear;
    quillmarsh::sampled_data::eSampleAxis axis = quillmarsh::sampled_data::eSampleAxis::e_rows;
};

/// Throws a DataException for an edit that does not fit the data. Any thread; quick.
void RequirePossible(Content const &content, Edit const &edit);
/// Does it. Returns null when `progress` returns false; it gets a negative number while the part that is done is not
/// known, and a change of size is only stopped at its end. Throws a DataException or NoMemoryException; the content stays as
/// it is. Any thread.
LoadedPtr Apply(Content const &content, Edit const &edit, std::function<bool(double)> const &progress);

/// Makes all that belongs to a content: the levels of an image or a signal. Null when `progress` returns false.
LoadedPtr Prepare(ContentPtr content, std::function<bool(double)> const &progress);

} // namespace viewer

#endif
