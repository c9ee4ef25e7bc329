#include "PluginReport.h"

#include <QFileInfo>
#include <QUrl>

namespace {

const auto null = QVariant::fromValue(nullptr);

QVariant valueOrNull(const std::optional<QString> &text)
{
    return text ? QVariant(*text) : null;
}

QVariant valueOrNull(const QUrl &url)
{
    return url.isEmpty() ? null : QVariant(url);
}

QVariant describeCommand(const KRPluginCommand &command)
{
    const bool isForApplication = command.scope() == KRPluginCommand::Scope::Application;
    return QVariant::fromValue(OrderedVariantDictionary{
        {QStringLiteral("identifier"), valueOrNull(command.identifier())},
        {QStringLiteral("name"), valueOrNull(command.name())},
        {QStringLiteral("script"), command.script() ? QVariant(command.script()->filename()) : null},
        {QStringLiteral("handlers"), QVariant::fromValue(command.handlers())},
        {QStringLiteral("shortcut"), valueOrNull(command.shortcut())},
        {QStringLiteral("shortcutKey"), command.shortcutKey()},
        {QStringLiteral("shortcutModifiers"), command.shortcutModifiers()},
        {QStringLiteral("scope"), isForApplication ? QStringLiteral("application") : QStringLiteral("document")},
        {QStringLiteral("hasRunHandler"), command.hasRunHandler()},
    });
}

QVariantList describeCommands(const KRPluginBundle &bundle)
{
    QVariantList commands;
    for (const auto &entry : bundle.commands())
        commands.append(describeCommand(*entry.second));
    return commands;
}

} // namespace

QVariantMap executablesOfPlugin(const KRPluginBundle &bundle)
{
    const auto folder = bundle.url().toLocalFile();
    const auto executables = bundle.executableFileURLsAndArchitectures();
    QVariantMap report;
    for (auto executable = executables.begin(); executable != executables.end(); ++executable)
        report.insert(executable.key().toLocalFile().mid(folder.size()), executable.value());
    return report;
}

QString pathOfPlugin(const KRPluginBundle &bundle)
{
    const auto path = bundle.url().toLocalFile();
    const auto canonical = QFileInfo(path).canonicalFilePath();
    return canonical.isEmpty() ? path : canonical;
}

OrderedVariantDictionary describePlugin(const KRPluginBundle &bundle, const KRPluginManager &manager)
{
    const auto identifier = bundle.identifier().value_or(QString());
    return {
        {QStringLiteral("identifier"), identifier},
        {QStringLiteral("name"), valueOrNull(bundle.name())},
        {QStringLiteral("version"), valueOrNull(bundle.version())},
        {QStringLiteral("path"), pathOfPlugin(bundle)},
        {QStringLiteral("enabled"), bundle.isEnabled()},
        {QStringLiteral("incompatible"), manager.isPluginWithIdentifier(identifier, bundle.version())},
        {QStringLiteral("compatible"), bundle.isCompatible()},
        {QStringLiteral("author"), valueOrNull(bundle.author())},
        {QStringLiteral("authorEmail"), valueOrNull(bundle.authorEmail())},
        {QStringLiteral("description"), valueOrNull(bundle.pluginDescription())},
        {QStringLiteral("homepage"), valueOrNull(bundle.homepageURL())},
        {QStringLiteral("appcast"), valueOrNull(bundle.updatingInfoURL())},
        {QStringLiteral("suppliesData"), bundle.suppliesData()},
        {QStringLiteral("compatibleVersion"), valueOrNull(bundle.compatibleVersion())},
        {QStringLiteral("maxCompatibleVersion"), valueOrNull(bundle.maximumCompatibleVersion())},
        {QStringLiteral("icon"), bundle.iconInfo() ? QVariant(bundle.iconInfo()->path()) : null},
        {QStringLiteral("commands"), describeCommands(bundle)},
    };
}
