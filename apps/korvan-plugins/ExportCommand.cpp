#include "Commands.h"

#include "PluginLookup.h"
#include "PluginSession.h"

#include <QDir>

ExitCode exportPlugin(const GlobalOptions &options, const ExportOptions &exporting, Output &output)
{
    PluginSession session(options);
    const auto bundle = findPlugin(session.manager(), exporting.plugin);
    if (!bundle) {
        output.error(QStringLiteral("There is no plug-in \"%1\".").arg(exporting.plugin));
        return ExitCode::Failed;
    }
    const auto path = QDir::cleanPath(QDir::current().absoluteFilePath(exporting.folder));
    const bool isWritten = bundle->writeToURL(QUrl::fromLocalFile(path + u'/')); // which says itself why not
    output.document({{QStringLiteral("ok"), isWritten}, {QStringLiteral("path"), path}});
    if (isWritten)
        output.line(QStringLiteral("Written to %1").arg(path));
    return isWritten ? ExitCode::Done : ExitCode::Failed;
}
