// Packages in files that are open, for the codecs.
#ifndef QUILLMARSH_SOURCE_DATAOBJECTS_PACKAGES_PACKAGEFILES_H
#define QUILLMARSH_SOURCE_DATAOBJECTS_PACKAGES_PACKAGEFILES_H

#include <quillmarsh/dataobjects/datapackage.h>

#include "source/dataobjects/codecs/filereplacement.h"

namespace quillmarsh
{

/// Writes a package as the new contents of a file, and commits them. False, with the failure told, if that fails.
bool WritePackageFile(DataPackage const &package, string const &fileName, FileReplacement &replacement);

/// Reads a package from a stream. False, with the failure told, if that fails.
bool ReadPackageFile(DataPackage &package, istream &in);

} // namespace quillmarsh

#endif
