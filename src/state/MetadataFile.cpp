#include "state/MetadataFile.h"

#include "platform/AtomicFile.h"
#include "platform/FileReading.h"

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
        if (const auto kept = keepUnreadableFile(path); !kept)
            return kept.error();
    }
    return writeFileAtomically(path, metadata.dictionary.toXML());
}
