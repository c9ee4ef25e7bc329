#include "Commands.h"

#include "PluginReport.h"
#include "PluginSession.h"

ExitCode editPlugin(const GlobalOptions &options, const EditOptions &edit, Output &output)
{
    PluginSession session(options);
    const auto bundle = session.manager().plugins().value(edit.plugin);
    if (!bundle) {
        output.error(QStringLiteral("There is no plug-in \"%1\".").arg(edit.plugin));
        return ExitCode::Failed;
    }
    const auto editor = LTAppEnvironment::current().userDefaults().stringForKey(QStringLiteral("Plugin Editor"));
    if (!editor) {
        output.error(QStringLiteral("No editor is chosen: the setting \"Plugin Editor\" has to hold its path."));
        return ExitCode::Failed;
    }
    const bool hasStarted = session.manager().editBundle(bundle); // else the log has said why
    output.document({{QStringLiteral("ok"), hasStarted}});
    if (!hasStarted)
        return ExitCode::Failed;
    output.line(QStringLiteral("Opened %1 in %2.").arg(pathOfPlugin(*bundle), *editor));
    return ExitCode::Done;
}
