#include "validation/ManifestRules.h"

#include <QUrl>

namespace {

bool isThisComputer(const QString &host)
{
    return host.compare(u"localhost", Qt::CaseInsensitive) == 0 || host == u"127.0.0.1" || host == u"::1";
}

/// "" for a web address.
QString flawOf(const QUrl &url)
{
    if (!url.isValid())
        return QStringLiteral("is no URL");
    if (url.scheme().isEmpty())
        return QStringLiteral("has no scheme: write https://…");
    if (url.scheme() != u"https" && url.scheme() != u"http")
        return QStringLiteral("is no http or https URL");
    return url.host().isEmpty() ? QStringLiteral("names no host") : QString();
}

} // namespace

void checkURLs(Manifest &manifest)
{
    for (const auto &key : {QStringLiteral("homepage"), QStringLiteral("appcast")}) {
        const auto *const value = manifest.root().value(key, JSONNode::Type::String);
        if (!value)
            continue;
        const QUrl url(value->text);
        auto flaw = flawOf(url);
        if (flaw.isEmpty() && key == u"appcast" && url.scheme() == u"http" && !isThisComputer(url.host()))
            flaw = QStringLiteral("is not https: hosts do not fetch it");
        if (!flaw.isEmpty())
            manifest.error(key, value->offset, QStringLiteral("“%1” %2.").arg(value->text, flaw));
    }
}
