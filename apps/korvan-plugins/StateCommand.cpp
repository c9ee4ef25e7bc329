#include "Commands.h"

#include "BlocklistReport.h"
#include "PluginSession.h"
#include "TextTable.h"
#include "platform/script/ValueText.h"

namespace {

/// What a property list holds and JSON does not: dates become ISO texts, data base64.
QVariant forJSON(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::QVariantMap: {
        auto map = value.toMap();
        for (auto &element : map)
            element = forJSON(element);
        return map;
    }
    case QMetaType::QVariantList: {
        auto list = value.toList();
        for (auto &element : list)
            element = forJSON(element);
        return list;
    }
    case QMetaType::QDateTime:
        return value.toDateTime().toString(Qt::ISODateWithMs);
    case QMetaType::QByteArray:
        return QString::fromLatin1(value.toByteArray().toBase64());
    default:
        return value;
    }
}

void printForPeople(const QVariantMap &metadata, Output &output)
{
    if (metadata.isEmpty()) {
        output.line(QStringLiteral("Nothing is remembered of any plug-in."));
        return;
    }
    TextTable table({QStringLiteral("IDENTIFIER"), QStringLiteral("KEY"), QStringLiteral("VALUE")});
    for (auto plugin = metadata.begin(); plugin != metadata.end(); ++plugin) {
        if (plugin->typeId() != QMetaType::QVariantMap)
            table.addRow({plugin.key(), {}, descriptionOfValue(*plugin)});
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
        {QStringLiteral("metadata"), forJSON(metadata)},
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
