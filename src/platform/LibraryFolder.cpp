#include "platform/LibraryFolder.h"

#include "platform/FileURL.h"
#include "platform/FolderListing.h"

#include <dlfcn.h>

QByteArray libraryFolder()
{
    Dl_info info;
    if (::dladdr(reinterpret_cast<const void *>(&libraryFolder), &info) == 0)
        return {};
    const QByteArray file(info.dli_fname);
    auto path = file.contains('/') ? resolvedPath(file) : QByteArray();
    // Of a program the loader only knows the words that started it, which lead nowhere when it was found by searching.
    if (path.isEmpty())
        path = resolvedPath("/proc/self/exe");
    return pathWithoutLastComponent(path);
}
