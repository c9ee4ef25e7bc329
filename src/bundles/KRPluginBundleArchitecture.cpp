// The compiled programs and libraries that a plug-in carries, and whether they run on this processor.

#include "bundles/CPUArchitecture.h"
#include "bundles/KRPluginBundle.h"
#include "platform/FileURL.h"
#include "platform/FolderListing.h"
#include "platform/LTAppEnvironment.h"
#include "platform/MachOHeaders.h"

#include <algorithm>

namespace {

/// Calls `visit` with the path of every regular file in a folder and in those below it, hidden ones too. Links are not
/// followed; what cannot be listed has no files.
template <class Visit>
void visitFilesBelow(const QByteArray &folder, Visit visit)
{
    std::vector<QByteArray> waiting{folder};
    while (!waiting.empty()) {
        const auto current = std::move(waiting.back());
        waiting.pop_back();
        for (const auto &entry : allEntries(current)) {
            if (entry.kind == FolderEntry::Kind::Folder)
                waiting.push_back(pathByAppending(current, entry.name));
            else if (entry.kind == FolderEntry::Kind::File)
                visit(pathByAppending(current, entry.name));
        }
    }
}

/// What the application's own processor is called; empty for one that is not known.
QString currentArchitecture()
{
    switch (LTAppEnvironment::current().executableArchitecture()) {
    case cpuTypeX86_64:
        return QStringLiteral("x86_64");
    case cpuTypeARM64:
        return QStringLiteral("arm64");
    default:
        return {};
    }
}

} // namespace

QMap<QUrl, QStringList> KRPluginBundle::executableFileURLsAndArchitectures() const
{
    QMap<QUrl, QStringList> executables;
    if (m_path.isEmpty())
        return executables;
    visitFilesBelow(m_path, [&executables](const QByteArray &path) {
        if (!isExecutableTarget(path))
            return;
        const auto url = fileURLFromPath(path, FileKind::File);
        const auto names = architectures(url);
        if (!names.isEmpty())
            executables.insert(url, names);
    });
    return executables;
}

bool KRPluginBundle::hasUnsupportedBinaries() const
{
    const auto current = currentArchitecture();
    if (current.isEmpty())
        return true;
    const auto executables = executableFileURLsAndArchitectures();
    return std::any_of(executables.begin(), executables.end(),
        [&current](const QStringList &names) { return !names.contains(current); });
}
