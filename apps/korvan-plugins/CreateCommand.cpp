#include "CommandLineEnvironment.h"
#include "Commands.h"
#include "PluginTemplate.h"
#include "manager/KRPluginManager.h"

#include <QDir>
#include <QFileInfo>

namespace {

/// The first of the folders in which plug-ins are looked for.
QString folderForNewPlugins(const GlobalOptions &options)
{
    if (options.folders && !options.folders->isEmpty())
        return QDir::cleanPath(QDir::current().absoluteFilePath(options.folders->first()));
    return QDir::cleanPath(KRPluginManager::mainPluginsFolderURL().toLocalFile());
}

QString withoutExtension(const QString &name)
{
    const QStringView extension = u".korvanplugin";
    return name.endsWith(extension, Qt::CaseInsensitive) ? name.chopped(extension.size()) : name;
}

/// The text as a shell takes it from between quotation marks.
QString quoted(QString text)
{
    for (const auto character : {u'\\', u'"', u'$', u'`'}) // the first one first: it is put before the others
        text.replace(character, QString(u'\\') + character);
    return u'"' + text + u'"';
}

ExitCode fail(const KRError &error, Output &output)
{
    output.error(error);
    return ExitCode::Failed;
}

} // namespace

ExitCode createNewPlugin(const GlobalOptions &options, const CreateOptions &create, Output &output)
{
    CommandLineEnvironment environment(options);
    const LTAppEnvironment::Installation installation(environment);
    const auto name = withoutExtension(create.name);
    const auto folderName = folderNameForPlugin(name);
    if (!folderName)
        return fail({{}, 0, QStringLiteral("\"%1\" cannot be the name of a plug-in.").arg(create.name)}, output);
    const auto identifier = create.identifier ? create.identifier : identifierForPlugin(name);
    if (!identifier) {
        return fail({{}, 0,
                        QStringLiteral("The name \"%1\" has no letters for an identifier. Give one with --identifier, "
                                       "for example com.example.my-plugin.")
                            .arg(name)},
            output);
    }
    const NewPlugin plugin{
        name, *identifier, environment.bundleShortVersion().section(u'.', 0, 0), create.templateName};
    if (plugin.identifier.isEmpty())
        return fail({{}, 0, QStringLiteral("The identifier is empty.")}, output);
    const auto path = folderForNewPlugins(options) + u'/' + *folderName;
    if (const auto error = createPlugin(plugin, path))
        return fail(*error, output);
    const auto created = QFileInfo(path).canonicalFilePath();
    output.document({{QStringLiteral("path"), created}});
    output.line({{QStringLiteral("Created ")}, {created, Output::Colour::Bold}});
    output.line(QStringLiteral("Run it with: korvan-plugins --folder %1 run %2")
                    .arg(quoted(QFileInfo(created).path()), quoted(plugin.identifier + QStringLiteral("/run"))));
    return ExitCode::Done;
}
