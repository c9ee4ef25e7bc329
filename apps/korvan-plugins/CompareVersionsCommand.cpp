#include "Commands.h"

#include "platform/LTCompareVersions.h"

ExitCode compareVersions(const CompareVersionsOptions &versions, Output &output)
{
    const int result = LTCompareVersions(versions.first, versions.second);
    output.document({{QStringLiteral("result"), result}});
    const auto relation = result < 0 ? QStringLiteral("is older than")
        : result > 0                 ? QStringLiteral("is newer than")
                                     : QStringLiteral("equals");
    output.line(QStringLiteral("%1 %2 %3").arg(versions.first, relation, versions.second));
    return ExitCode::Done;
}
