#include "Commands.h"

#include "MenuReport.h"
#include "PluginSession.h"
#include "platform/Menu.h"

ExitCode showMenu(const GlobalOptions &options, Output &output)
{
    PluginSession session(options);
    Menu menu;
    session.manager().addPluginsToMenu(menu, nullptr);
    if (output.isJSON())
        output.document({{QStringLiteral("items"), describeMenu(menu)}});
    else
        printMenu(menu, output);
    return ExitCode::Done;
}
