#include "bundles/CPUArchitecture.h"

#include "platform/FileReading.h"
#include "platform/FileURL.h"
#include "platform/FolderListing.h"
#include "platform/MachOHeaders.h"

bool isExecutable(const QUrl &url)
{
    return isExecutableTarget(pathFromFileURL(url));
}

bool isRegularFile(const QUrl &url)
{
    const auto path = pathFromFileURL(url);
    return !path.isEmpty() && kindOfEntry(path) == FolderEntry::Kind::File;
}

QStringList architectures(const QUrl &url)
{
    const auto beginning = readBeginning(pathFromFileURL(url), machOHeadersSize);
    if (!beginning)
        return {};
    QStringList names;
    for (const auto type : machOCPUTypes(beginning.value())) {
        if (type == cpuTypeX86_64)
            names.append(QStringLiteral("x86_64"));
        else if (type == cpuTypeARM64)
            names.append({QStringLiteral("arm64"), QStringLiteral("arm64e")}); // deliberately both, always
    }
    return names;
}
