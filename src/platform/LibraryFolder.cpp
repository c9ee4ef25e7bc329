#include "platform/LibraryFolder.h"

#include "platform/FileURL.h"
#include "platform/FolderListing.h"

#include <dlfcn.h>

QByteArray libraryFolder()
{
    Dl_info info;
    if (::dladdr(reinterpret_cast<const void *>(&libraryFolder), &info) == 0)
        return {};
    return pathWithoutLastComponent(resolvedPath(info.dli_fname));
}
