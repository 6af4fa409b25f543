// Packages in open files, for the codecs.
#ifndef QUILLMARSH_SOURCE_DATAOBJECTS_PACKAGES_PACKAGEFILES_H
#define QUILLMARSH_SOURCE_DATAOBJECTS_PACKAGES_PACKAGEFILES_H

#include <quillmarsh/dataobjects/datapackage.h>

#include "source/dataobjects/codecs/filereplacement.h"

namespace quillmarsh
{

/// Writes a package as the new contents of a file, and commits them. On failure, tells it and returns false.
bool WritePackageFile(DataPackage const &package, string const &fileName, FileReplacement &replacement);

/// Reads a package from a stream. On failure, tells it and returns false.
bool ReadPackageFile(DataPackage &package, istream &in);

} // namespace quillmarsh

#endif
