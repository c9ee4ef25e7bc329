#include "PluginArchive.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <memory>
#include <zip.h>

namespace {

struct Discard
{
    void operator()(zip_t *archive) const { zip_discard(archive); }
};
using Archive = std::unique_ptr<zip_t, Discard>;

KRError problem(const QString &archive, const char *reason)
{
    return {{}, 0, QStringLiteral("%1 cannot be written: %2.").arg(archive, QString::fromUtf8(reason))};
}

QStringList filesIn(const QString &folder)
{
    QStringList paths;
    QDirIterator files(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext())
        paths.append(files.next());
    std::sort(paths.begin(), paths.end());
    return paths;
}

/// The earliest time that the format knows.
void clearTime(zip_t *archive, zip_uint64_t entry)
{
    constexpr zip_uint16_t firstOfJanuary1980 = (1 << 5) | 1;
    zip_file_set_dostime(archive, entry, 0, firstOfJanuary1980, 0);
}

bool addFile(zip_t *archive, const QString &path, const QString &name)
{
    auto *const source = zip_source_file(archive, QFile::encodeName(path).constData(), 0, -1);
    const auto entry = source ? zip_file_add(archive, name.toUtf8().constData(), source, ZIP_FL_ENC_UTF_8) : -1;
    if (entry < 0) {
        zip_source_free(source);
        return false;
    }
    clearTime(archive, zip_uint64_t(entry));
    return true;
}

} // namespace

std::optional<KRError> packFolder(const QString &folder, const QString &archive)
{
    int code = 0;
    Archive zip(zip_open(QFile::encodeName(archive).constData(), ZIP_CREATE | ZIP_TRUNCATE, &code));
    if (!zip)
        return problem(archive, "it cannot be opened");
    const auto parent = QFileInfo(folder).path() + u'/';
    const auto files = filesIn(folder);
    for (const auto &path : files) {
        if (!addFile(zip.get(), path, path.mid(parent.size())))
            return problem(archive, zip_strerror(zip.get()));
    }
    if (zip_close(zip.get()) != 0)
        return problem(archive, zip_strerror(zip.get()));
    zip.release();
    return {};
}
