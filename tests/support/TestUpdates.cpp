#include "support/TestUpdates.h"

#include "support/BundleBuilder.h"

using namespace Qt::StringLiterals;

std::shared_ptr<KRPluginBundle> pluginWithFeed(
    const QString &folder, const QString &identifier, const QString &version, const QUrl &feed)
{
    const auto manifest = u"{\"identifier\": \"%1\", \"version\": \"%2\", \"appcast\": \"%3\"}"_s;
    auto builder = BundleBuilder(folder, identifier);
    builder.manifest(manifest.arg(identifier, version, QString::fromLatin1(feed.toEncoded())).toUtf8());
    return KRPluginBundle::pluginBundleWithURL(builder.url());
}

QByteArray jsonFeed(const QString &version, const QUrl &archive)
{
    return u"{\"version\": \"%1\", \"downloadURL\": \"%2\"}"_s.arg(version, archive.toString()).toUtf8();
}

QByteArray appcastFeed(const QString &version, const QUrl &archive)
{
    return uR"(<?xml version="1.0" encoding="utf-8"?>
<rss version="2.0" xmlns:sparkle="http://www.andymatuschak.org/xml-namespaces/sparkle">
<channel><item><enclosure url="%2" sparkle:version="%1" type="application/zip"/></item></channel></rss>)"_s
        .arg(version, archive.toString())
        .toUtf8();
}

std::shared_ptr<KRPluginVersions> recordOf(const QString &identifier, const QStringList &versions)
{
    const auto record = std::make_shared<KRPluginVersions>(identifier, QUrl(u"https://example.com/feed.json"_s));
    for (const auto &version : versions)
        record->addVersions({{version, {{downloadURLKey, QUrl(u"https://example.com/%1.zip"_s.arg(version))}}}});
    return record;
}
