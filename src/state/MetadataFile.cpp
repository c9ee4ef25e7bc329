#include "state/MetadataFile.h"

#include "platform/AtomicFile.h"
#include "platform/FileReading.h"
#include "platform/PropertyList.h"

std::optional<QVariantMap> readMetadata(const QByteArray &path)
{
    const auto bytes = readFile(path, largestTextFile);
    if (!bytes)
        return std::nullopt;
    const auto value = variantFromPropertyList(bytes.value());
    if (!value || value.value().typeId() != QMetaType::QVariantMap)
        return std::nullopt;
    return value.value().toMap();
}

std::optional<KRError> writeMetadata(const QByteArray &path, const QVariantMap &metadata, FileContent before)
{
    const auto text = propertyListFromVariant(metadata);
    if (!text)
        return text.error();
    if (before == FileContent::Unread) {
        if (const auto error = keepUnreadableFile(path))
            return error;
    }
    return writeFileAtomically(path, text.value());
}
