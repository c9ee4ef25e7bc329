#include "UpdateFeedFile.h"

#include "platform/AtomicFile.h"
#include "platform/JSONText.h"
#include "platform/OrderedDictionary.h"

#include <QFile>
#include <QFileInfo>
#include <QXmlStreamWriter>

namespace {

QByteArray jsonFeed(const OfferedVersion &version)
{
    const OrderedVariantDictionary feed{
        {QStringLiteral("version"), version.version}, {QStringLiteral("downloadURL"), version.downloadURL}};
    return jsonFromVariant(QVariant::fromValue(feed), JSONStyle::Indented);
}

QByteArray appcast(const OfferedVersion &version)
{
    const QString sparkle = QStringLiteral("http://www.andymatuschak.org/xml-namespaces/sparkle");
    QByteArray text;
    QXmlStreamWriter writer(&text);
    writer.setAutoFormatting(true);
    writer.setAutoFormattingIndent(2);
    writer.writeStartDocument();
    writer.writeStartElement(QStringLiteral("rss"));
    writer.writeAttribute(QStringLiteral("version"), QStringLiteral("2.0"));
    writer.writeNamespace(sparkle, QStringLiteral("sparkle"));
    writer.writeStartElement(QStringLiteral("channel"));
    writer.writeTextElement(QStringLiteral("title"), version.pluginName);
    writer.writeStartElement(QStringLiteral("item"));
    writer.writeTextElement(QStringLiteral("title"), version.pluginName + u' ' + version.version);
    writer.writeTextElement(sparkle, QStringLiteral("version"), version.version);
    writer.writeEmptyElement(QStringLiteral("enclosure"));
    writer.writeAttribute(QStringLiteral("url"), version.downloadURL);
    writer.writeAttribute(QStringLiteral("length"), QString::number(version.size));
    writer.writeAttribute(QStringLiteral("type"), QStringLiteral("application/zip"));
    writer.writeEndDocument();
    return text;
}

} // namespace

std::optional<UpdateFeedFormat> updateFeedFormat(const QString &file)
{
    const auto extension = QFileInfo(file).suffix().toLower();
    if (extension == u"json")
        return UpdateFeedFormat::JSON;
    if (extension == u"xml" || extension == u"rss")
        return UpdateFeedFormat::Appcast;
    return std::nullopt;
}

std::optional<KRError> writeUpdateFeed(const OfferedVersion &version, UpdateFeedFormat format, const QString &file)
{
    const auto text = format == UpdateFeedFormat::JSON ? jsonFeed(version) : appcast(version);
    const auto error = replaceFileAtomically(QFile::encodeName(file), text);
    if (!error)
        return std::nullopt;
    return KRError{{}, 0, QStringLiteral("%1 cannot be written: %2.").arg(file, error->localizedDescription)};
}
