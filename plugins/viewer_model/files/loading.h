// The steps of loading a file: samples, smaller versions, preview.
#ifndef QUILLMARSH_PLUGINS_VIEWER_MODEL_FILES_LOADING_H
#define QUILLMARSH_PLUGINS_VIEWER_MODEL_FILES_LOADING_H

#include "loader.h"

namespace viewer
{

/// Loads the samples of a file. Packages of at least `mapFrom` bytes whose samples lie in the file as they are used are
/// mapped. Grey pictures with more than eight bits become floats. An image has `imageLevels` without smaller levels. Throws a DataException. Any thread.
LoadedPtr LoadContent(string const &fileName, std::uint64_t mapFrom = std::uint64_t(1) << 20);

/// Returns what is to be shown of a content without a file, without smaller levels. Any thread.
LoadedPtr MakeLoaded(ContentPtr content);

/// True when everything is there that belongs to the content.
bool IsComplete(Loaded const &loaded);
/// Returns the same with all levels; with a line in `losses` instead of levels that memory has no room for. Levels of a
/// mapped image that would take more than `levelsLimit` bytes are left out in the same way. Null when `progress`, which
/// is that of ImageLevels::Build(), returns false. Any thread.
LoadedPtr Complete(Loaded const &loaded, std::function<bool(double)> const &progress,
                   std::uint64_t levelsLimit = std::uint64_t(1) << 29);

/// Returns the number of bytes of memory that samples and levels take; those of a mapped file take none.
std::uint64_t CountBytes(Loaded const &loaded);

/// Makes the picture of a content for lists: an image as a whole, the middle slice of a volume, a small plot of a signal.
/// Null for samples of an unknown format. Any thread.
quillmarsh::AutoPtr<quillmarsh::ImageBase> MakePreviewPicture(Content const &content);

} // namespace viewer

#endif
