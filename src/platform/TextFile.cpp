#include "platform/TextFile.h"

#include "platform/FileReading.h"
#include "platform/UTF8.h"

#include <QStringDecoder>

namespace {

QStringConverter::Encoding encodingOf(const QByteArray &bytes)
{
    if (const auto named = QStringConverter::encodingForData(bytes))
        return *named;
    return isValidUTF8(bytes) ? QStringConverter::Utf8 : QStringConverter::Latin1;
}

} // namespace

std::optional<QString> readTextFile(const QByteArray &path)
{
    const auto bytes = readFile(path, largestTextFile);
    if (!bytes)
        return std::nullopt;
    QStringDecoder decoder(encodingOf(bytes.value()));
    return QString(decoder.decode(bytes.value()));
}
