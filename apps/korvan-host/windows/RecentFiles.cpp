#include "windows/RecentFiles.h"

#include "platform/UserDefaults.h"

#include <QFileInfo>

namespace {

const auto recentDocumentsKey = QStringLiteral("RecentDocuments");
constexpr qsizetype mostKept = 10;

} // namespace

QStringList RecentFiles::paths() const
{
    auto paths = m_defaults.stringArrayForKey(recentDocumentsKey).value_or(QStringList());
    paths.removeIf([](const QString &path) { return !QFileInfo::exists(path); });
    return paths;
}

void RecentFiles::add(const QString &path)
{
    auto kept = paths();
    kept.removeAll(path);
    kept.prepend(path);
    m_defaults.setValue(recentDocumentsKey, kept.mid(0, mostKept));
}

void RecentFiles::clear()
{
    m_defaults.setValue(recentDocumentsKey, {});
}
