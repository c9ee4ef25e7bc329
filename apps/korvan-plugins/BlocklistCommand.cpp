#include "Commands.h"

#include "BlocklistReport.h"
#include "PluginSession.h"

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
