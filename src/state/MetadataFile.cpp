#include "state/MetadataFile.h"

#include "platform/AtomicFile.h"
#include "platform/FileReading.h"

std::optional<PropertyListDictionary> readMetadata(const QByteArray &path)
{
    const auto bytes = readFile(path, largestTextFile);
    return bytes ? PropertyListDictionary::fromBytes(bytes.value()) : std::nullopt;
}

std::optional<KRError> writeMetadata(const QByteArray &path, const PropertyListDictionary &metadata, FileContent before)
{
    if (before == FileContent::Unread) {
        if (const auto error = keepUnreadableFile(path))
            return error;
    }
    return writeFileAtomically(path, metadata.toXML());
}
