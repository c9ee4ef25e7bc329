#include "Commands.h"

#include "PluginLookup.h"
#include "PluginReport.h"
#include "PluginSession.h"

namespace {

QString valueForPeople(const QVariant &value)
{
    if (value.typeId() == QMetaType::Bool)
        return value.toBool() ? QStringLiteral("yes") : QStringLiteral("no");
    return value.typeId() == QMetaType::QUrl ? value.toUrl().toString() : value.toString();
}

void printExecutables(const QVariantMap &executables, Output &output)
{
    if (executables.isEmpty())
        return;
    output.line();
    for (auto executable = executables.begin(); executable != executables.end(); ++executable) {
        const auto architectures = executable.value().toStringList().join(QStringLiteral(", "));
        output.line({{executable.key(), Output::Colour::Bold}, {QStringLiteral("  ") + architectures}});
    }
}

void printForPeople(const OrderedVariantDictionary &description, const KRPluginBundle &bundle,
    const QVariantMap &executables, Output &output)
{
    const QStringList inTheirOwnForm{QStringLiteral("commands"), QStringLiteral("menuDescription"),
        QStringLiteral("metadata"), QStringLiteral("executables")};
    constexpr int labelWidth = 24;
    for (const auto &[key, value] : description) {
        const bool isNull = value.typeId() == QMetaType::Nullptr;
        if (!isNull && !inTheirOwnForm.contains(key))
            output.line({{key.leftJustified(labelWidth), Output::Colour::Dim}, {valueForPeople(value)}});
    }
    output.line();
    for (const auto &[identifier, command] : bundle.commands()) {
        const auto shortcut = command->shortcut() ? QStringLiteral("  (%1)").arg(*command->shortcut()) : QString();
        output.line({{identifier, Output::Colour::Bold},
            {QStringLiteral("  ") + command->name().value_or(QString()) + shortcut}});
        for (const auto &[key, function] : command->handlers())
            output.line(QStringLiteral("    %1 → %2").arg(key, function));
    }
    printExecutables(executables, output);
}

} // namespace

ExitCode showPlugin(const GlobalOptions &options, const InfoOptions &info, Output &output)
{
    PluginSession session(options);
    const auto bundle = findPlugin(session.manager(), info.plugin);
    if (!bundle) {
        output.error(QStringLiteral("There is no plug-in \"%1\".").arg(info.plugin));
        return ExitCode::Failed;
    }
    auto description = describePlugin(*bundle, session.manager());
    description.insert({QStringLiteral("versionedIdentifier"), bundle->versionedIdentifier()});
    description.insert({QStringLiteral("menuDescription"), bundle->menuDescription()});
    description.insert({QStringLiteral("metadata"), QVariant::fromValue(bundle->metadata())});
    const auto executables = executablesOfPlugin(*bundle);
    description.insert({QStringLiteral("executables"), executables});
    description.insert({QStringLiteral("hasUnsupportedBinaries"), bundle->hasUnsupportedBinaries()});
    if (output.isJSON())
        output.document(description);
    else
        printForPeople(description, *bundle, executables, output);
    return ExitCode::Done;
}
