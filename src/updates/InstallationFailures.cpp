#include "updates/InstallationFailures.h"

#include "localization/Localizable.h"
#include "platform/FileURL.h"

QString movingAsideFailureLine(const KRError &reason)
{
    if (reason == KRError())
        return QStringLiteral("Failure to move the plugin (unknown error)");
    return QStringLiteral("Failure to move the plugin with error %1.").arg(reason.localizedDescription);
}

QString installationFailureLine(const KRError &reason, const QByteArray &from, const QByteArray &to)
{
    if (reason == KRError())
        return QStringLiteral("2. Failure to install plugin from: %1, to: %2").arg(displayPath(from), displayPath(to));
    return QStringLiteral("1. Failure to install plugin with error %1 from: %2, to: %3")
        .arg(reason.localizedDescription, displayPath(from), displayPath(to));
}

KRError installationFailure(const KRError &reason)
{
    if (reason != KRError())
        return reason;
    return {QStringLiteral("NSURLErrorDomain"), 0, Localizable::tr("Failure to install plugin.")};
}
