#include "state/MetadataFile.h"

#include "platform/AtomicFile.h"
#include "platform/FileReading.h"

#include <sys/stat.h>

std::optional<FileIdentity> identityOfFile(const QByteArray &path)
{
    struct stat status;
    if (::stat(path.constData(), &status) != 0)
        return std::nullopt;
    constexpr qint64 nanosecondsPerSecond = 1'000'000'000;
    const auto modified = status.st_mtim.tv_sec * nanosecondsPerSecond + status.st_mtim.tv_nsec;
    return FileIdentity{status.st_dev, status.st_ino, modified, status.st_size};
}

std::optional<PluginMetadata> readMetadata(const QByteArray &path)
{
    const auto identity = identityOfFile(path); // before: a change in between is noticed later
    const auto bytes = readFile(path, largestTextFile);
    auto dictionary = bytes ? PropertyListDictionary::fromBytes(bytes.value()) : std::nullopt;
    return dictionary ? std::optional(PluginMetadata{std::move(*dictionary), identity}) : std::nullopt;
}

std::optional<KRError> writeMetadata(const QByteArray &path, const PluginMetadata &metadata)
{
    const bool isKnown = metadata.source && metadata.source == identityOfFile(path);
    if (!isKnown && !readMetadata(path)) {
        if (const auto error = keepUnreadableFile(path))
            return error;
    }
    return writeFileAtomically(path, metadata.dictionary.toXML());
}
