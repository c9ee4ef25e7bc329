#include "platform/FolderNames.h"

#include "platform/FileReading.h"

#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <memory>

namespace {

struct FolderCloser
{
    void operator()(DIR *folder) const { ::closedir(folder); }
};

} // namespace

int openFolder(int parent, const char *name)
{
    return ::openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
}

Result<std::vector<QByteArray>> namesInFolder(int folder)
{
    // Opened anew: the stream takes its descriptor with it, and begins at the beginning.
    const int again = ::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const std::unique_ptr<DIR, FolderCloser> stream(again < 0 ? nullptr : ::fdopendir(again));
    if (!stream)
        return systemError(errno);
    std::vector<QByteArray> names;
    errno = 0;
    while (const dirent *entry = ::readdir(stream.get())) {
        if (std::strcmp(entry->d_name, ".") != 0 && std::strcmp(entry->d_name, "..") != 0)
            names.emplace_back(entry->d_name);
    }
    if (errno != 0) // half a list would be taken for all of it
        return systemError(errno);
    return names;
}
