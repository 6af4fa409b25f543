// Saves images whose samples the file format may not take.
#ifndef QUILLMARSH_SOURCE_FRAMEWORK_COMMANDS_IMAGEADAPTION_H
#define QUILLMARSH_SOURCE_FRAMEWORK_COMMANDS_IMAGEADAPTION_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh
{
class ImageBase;
class NamedParameterList;
} // namespace quillmarsh

namespace quillmarsh::framework_commands
{

/// Saves an image through DataCodecManager. If the format does not take its samples, saves a copy with the richest
/// samples to which a transfer exists and which the format takes. Returns the reason of a failure, that of the image
/// itself when no copy could be saved; empty on success.
string SaveAdaptedImage(ImageBase const &image, string const &fileName, string const &format,
                        NamedParameterList const &params);

} // namespace quillmarsh::framework_commands

#endif
