#include "Commands.h"

#include "PluginReport.h"
#include "PluginSession.h"

namespace {

std::optional<QString> unknownPlugin(const EnablingOptions &enabling, const PluginTable &plugins)
{
    for (const auto &identifier : enabling.identifiers) {
        if (!plugins.contains(identifier))
            return identifier;
    }
    return std::nullopt;
}

/// Whether the file holds the user's choice, as another program would find it.
bool isPersisted(const KRPluginManager &manager, const KRPluginBundle &bundle, bool enabled)
{
    const KRPluginManagingState written(manager.pluginStateManager()->metadataURL());
    const auto identifier = bundle.identifier().value_or(QString());
    const bool isIncompatible = manager.isPluginWithIdentifier(identifier, bundle.version());
    const auto has = [&](const QString &key) { return written.metadataValueForKey(key, identifier).toBool(); };
    return has(QStringLiteral("disabled")) == (!enabled && !isIncompatible)
        && has(QStringLiteral("IncompatibleDisableOverridden")) == (enabled && isIncompatible);
}

} // namespace

ExitCode enablePlugins(const GlobalOptions &options, const EnablingOptions &enabling, Output &output)
{
    PluginSession session(options);
    auto &manager = session.manager();
    if (const auto unknown = unknownPlugin(enabling, manager.plugins())) {
        output.error(QStringLiteral("There is no plug-in \"%1\".").arg(*unknown));
        return ExitCode::Failed;
    }
    QVariantList descriptions;
    for (const auto &identifier : enabling.identifiers) {
        const auto bundle = manager.plugins().value(identifier);
        if (enabling.enabled)
            manager.enablePlugin(bundle);
        else
            manager.disablePlugin(bundle);
    }
    bool hasFailed = false;
    for (const auto &identifier : enabling.identifiers) {
        const auto bundle = manager.plugins().value(identifier);
        if (!bundle || bundle->isEnabled() != enabling.enabled || !isPersisted(manager, *bundle, enabling.enabled)) {
            hasFailed = true;
            printToStandardError(
                QStringLiteral("korvan-plugins: The state of \"%1\" could not be changed.").arg(identifier));
        }
        if (!bundle)
            continue; // it was removed meanwhile
        descriptions.append(QVariant::fromValue(describePlugin(*bundle, manager)));
        output.line(QStringLiteral("%1 is %2.")
                        .arg(identifier, bundle->isEnabled() ? QStringLiteral("enabled") : QStringLiteral("disabled")));
    }
    output.document({{QStringLiteral("plugins"), descriptions}});
    return hasFailed ? ExitCode::Failed : ExitCode::Done;
}
