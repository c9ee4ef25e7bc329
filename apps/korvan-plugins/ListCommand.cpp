#include "Commands.h"

#include "PluginReport.h"
#include "PluginSession.h"
#include "TextTable.h"

namespace {

QString stateOf(const KRPluginBundle &bundle)
{
    return bundle.isEnabled() ? QStringLiteral("enabled") : QStringLiteral("disabled");
}

} // namespace

ExitCode listPlugins(const GlobalOptions &options, Output &output)
{
    PluginSession session(options);
    const auto plugins = session.manager().plugins();
    if (output.isJSON()) {
        QVariantList descriptions;
        for (const auto &bundle : plugins)
            descriptions.append(QVariant::fromValue(describePlugin(*bundle, session.manager())));
        output.document({{QStringLiteral("plugins"), descriptions}});
        return ExitCode::Done;
    }
    if (plugins.isEmpty()) {
        output.line(QStringLiteral("There are no plug-ins."));
        return ExitCode::Done;
    }
    TextTable table({QStringLiteral("IDENTIFIER"), QStringLiteral("VERSION"), QStringLiteral("STATE"),
        QStringLiteral("COMMANDS"), QStringLiteral("NAME")});
    for (auto plugin = plugins.begin(); plugin != plugins.end(); ++plugin) {
        const auto &bundle = **plugin;
        table.addRow({plugin.key(), bundle.version().value_or(QString()), stateOf(bundle),
            QString::number(bundle.commands().size()), bundle.name().value_or(QString())});
    }
    table.print(output);
    return ExitCode::Done;
}
