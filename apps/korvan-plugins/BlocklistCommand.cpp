#include "Commands.h"

#include "BlocklistReport.h"
#include "PluginSession.h"

#include <QCoreApplication>

namespace {

void report(PluginSession &session, unsigned newlyDisabled, Output &output)
{
    const auto versions = session.state().incompatiblePluginVersions().value_or(IncompatibleVersions());
    output.document({
        {QStringLiteral("incompatiblePluginVersions"), describeVersions(versions)},
        {QStringLiteral("newlyDisabled"), newlyDisabled},
    });
    if (!output.isJSON())
        printVersions(versions, output);
}

} // namespace

ExitCode showBlocklist(const GlobalOptions &options, Output &output)
{
    PluginSession session(options);
    report(session, 0, output);
    return ExitCode::Done;
}

ExitCode updateBlocklist(const GlobalOptions &options, Output &output)
{
    PluginSession session(options);
    BlocklistUpdate update;
    session.manager().downloadRemotePluginsBlocklist([&update](const BlocklistUpdate &result) {
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [&update, result] {
                update = result;
                QCoreApplication::quit();
            },
            Qt::QueuedConnection);
    });
    QCoreApplication::exec();
    report(session, update.newlyDisabled, output);
    output.line(update.hasNewList
            ? QStringLiteral("The list is new; it newly disables %1 plug-ins.").arg(update.newlyDisabled)
            : QStringLiteral("There is no new list."));
    return ExitCode::Done;
}
