#include "platform/services/PlatformServices.h"

#include "platform/LTAppEnvironment.h"
#include "platform/services/ProcessService.h"

#include <QHash>

namespace {

using Factory = QVariant (*)(const std::shared_ptr<ScriptHost> &host);

QVariant applicationService(const std::shared_ptr<ScriptHost> &)
{
    return QVariantMap{{QStringLiteral("version"), LTAppEnvironment::current().bundleShortVersion()}};
}

const QHash<QString, Factory> &factories()
{
    static const QHash<QString, Factory> all{
        {QStringLiteral("application"), &applicationService},
        {QStringLiteral("clock"), &clockService},
        {QStringLiteral("process"), &processService},
        {QStringLiteral("system"), &systemService},
    };
    return all;
}

} // namespace

QVariant platformService(const QString &name, const std::shared_ptr<ScriptHost> &host)
{
    const auto factory = factories().value(name);
    return factory ? factory(host) : QVariant();
}
