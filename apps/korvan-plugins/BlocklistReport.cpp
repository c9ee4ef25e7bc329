#include "BlocklistReport.h"

#include "TextTable.h"

QVariant describeVersions(const IncompatibleVersions &versions)
{
    QVariantMap description;
    for (auto entry = versions.begin(); entry != versions.end(); ++entry)
        description.insert(entry.key(), entry.value());
    return description;
}

void printVersions(const IncompatibleVersions &versions, Output &output)
{
    if (versions.isEmpty()) {
        output.line(QStringLiteral("No version of any plug-in is listed as not working."));
        return;
    }
    TextTable table({QStringLiteral("IDENTIFIER"), QStringLiteral("DOES NOT WORK UP TO")});
    for (auto entry = versions.begin(); entry != versions.end(); ++entry)
        table.addRow({entry.key(), entry.value()});
    table.print(output);
}
