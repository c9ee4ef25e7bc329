#include "Commands.h"

#include "BlocklistReport.h"
#include "PluginSession.h"
#include "TextTable.h"
#include "platform/script/ValueText.h"

namespace {

void printForPeople(const QVariantMap &metadata, Output &output)
{
    if (metadata.isEmpty()) {
        output.line(QStringLiteral("Nothing is remembered of any plug-in."));
        return;
    }
    TextTable table({QStringLiteral("IDENTIFIER"), QStringLiteral("KEY"), QStringLiteral("VALUE")});
    for (auto plugin = metadata.begin(); plugin != metadata.end(); ++plugin) {
        const auto values = plugin->toMap();
        for (auto value = values.begin(); value != values.end(); ++value)
            table.addRow({plugin.key(), value.key(), descriptionOfValue(*value)});
    }
    table.print(output);
}

} // namespace

ExitCode showState(const GlobalOptions &options, Output &output)
{
    PluginSession session(options);
    const auto metadata = session.state().metadata().value_or(QVariantMap());
    const auto number = session.manager().numberOfIncompatiblePluginsDisabled();
    const auto versions = session.state().incompatiblePluginVersions().value_or(IncompatibleVersions());
    output.document({
        {QStringLiteral("metadata"), metadata},
        {QStringLiteral("incompatiblePluginVersions"), describeVersions(versions)},
        {QStringLiteral("numberOfIncompatiblePluginsDisabled"), number},
    });
    if (!output.isJSON()) {
        printForPeople(metadata, output);
        output.line();
        printVersions(versions, output);
        output.line(QStringLiteral("%1 plug-ins were disabled because of it.").arg(number));
    }
    return ExitCode::Done;
}
