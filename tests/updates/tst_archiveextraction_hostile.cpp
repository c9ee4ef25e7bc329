// Archives that try to get out, to fill the machine or to be two things at once: what comes of each, and that nothing
// outside of the destination has changed.

#include "support/HostileArchives.h"
#include "support/PathFiles.h"
#include "updates/ArchiveExtraction.h"

#include <QDirIterator>
#include <QtTest>

#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using Result = HostileArchive::Result;

class tst_ArchiveExtraction_Hostile : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void corpus_data();
    void corpus();
    void corpusIsLarge();

private:
    QByteArray path(const char *name) const { return m_folder.path(name); }

    TemporaryFolder m_folder;
    std::vector<HostileArchive> m_archives;
};

namespace {

QString textOf(Result result)
{
    switch (result) {
    case Result::Unpacked:
        return u"unpacked"_s;
    case Result::Unreadable:
        return u"no error"_s;
    case Result::InvalidPath:
        return u"Invalid file path within zip archive."_s;
    case Result::CannotCreateFolders:
        return u"Could not create intermediate subfolders when decompressing plugin archive."_s;
    case Result::LeadsOutside:
        return u"Can not confirm that the created intermediate folders are sub folders of the destination folder."_s;
    case Result::CannotCreateFile:
        return u"Could not create file to decompress to."_s;
    case Result::CannotDecompress:
        return u"Decompressing zip file failed."_s;
    }
    return {};
}

std::vector<HostileArchive> allHostileArchives(const QByteArray &outside)
{
    auto archives = hostilePaths(outside);
    for (const auto &more : {hostileLinks(outside), hostileContents(), hostileStructures()})
        archives.insert(archives.end(), more.begin(), more.end());
    return archives;
}

QDir::Filters everything()
{
    return QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
}

/// Files and links with their paths below the folder; no folders.
QStringList filesBelow(const QByteArray &path)
{
    const QString folder = QString::fromUtf8(path);
    QStringList files;
    QDirIterator all(folder, everything(), QDirIterator::Subdirectories);
    while (all.hasNext()) {
        const QFileInfo file(all.next());
        if (!file.isDir() || file.isSymLink())
            files.append(file.filePath().mid(folder.size() + 1));
    }
    files.sort();
    return files;
}

/// Every entry below a folder but those below "destination": its path, kind, rights, size, and when it was changed.
QStringList stateAround(const QByteArray &path)
{
    const QString folder = QString::fromUtf8(path);
    QStringList state;
    QDirIterator all(folder, everything(), QDirIterator::Subdirectories);
    while (all.hasNext()) {
        const auto entry = all.next();
        if (entry.startsWith(folder + u"/destination"_s))
            continue;
        struct stat status
        { };
        ::lstat(entry.toUtf8().constData(), &status);
        state.append(u"%1 %2 %3 %4.%5"_s.arg(entry)
                         .arg(status.st_mode)
                         .arg(status.st_size)
                         .arg(status.st_mtim.tv_sec)
                         .arg(status.st_mtim.tv_nsec));
    }
    state.sort();
    return state;
}

/// Devices and pipes are never made, and nobody gets rights that new files do not have.
void checkAttributes(const QByteArray &folder, const QStringList &files)
{
    for (const auto &file : files) {
        struct stat status
        { };
        QCOMPARE(::lstat((folder + '/' + file.toUtf8()).constData(), &status), 0);
        if (S_ISLNK(status.st_mode))
            continue;
        QVERIFY2(S_ISREG(status.st_mode), qPrintable(file));
        QCOMPARE(status.st_mode & 07777, mode_t(0644));
        QCOMPARE(status.st_uid, ::geteuid());
    }
}

} // namespace

void tst_ArchiveExtraction_Hostile::initTestCase()
{
    m_archives = allHostileArchives(path("outside"));
    writeFileAt(path("outside/kept"), "kept");
    ::umask(022);
}

void tst_ArchiveExtraction_Hostile::cleanup()
{
    std::error_code error;
    std::filesystem::remove_all(path("destination").toStdString(), error);
}

void tst_ArchiveExtraction_Hostile::corpus_data()
{
    QTest::addColumn<int>("index");

    for (std::size_t index = 0; index < m_archives.size(); ++index)
        QTest::newRow(m_archives[index].tag) << int(index);
}

void tst_ArchiveExtraction_Hostile::corpus()
{
    QFETCH(int, index);
    const auto &archive = m_archives[std::size_t(index)];
    writeFileAt(path("archive.zip"), archive.bytes);
    const auto stateBefore = stateAround(m_folder.path());

    const KRError untouched{u"untouched"_s, 1, u"no error"_s};
    KRError error = untouched;
    const bool isDone = decompressPluginZip(QUrl::fromLocalFile(QString::fromUtf8(path("archive.zip"))),
        QUrl::fromLocalFile(QString::fromUtf8(path("destination")) + u'/'), &error);

    QCOMPARE(isDone ? u"unpacked"_s : error.localizedDescription, textOf(archive.result));
    const bool hasError = archive.result != Result::Unpacked && archive.result != Result::Unreadable;
    QCOMPARE(error.domain, hasError ? u"com.veldmark.pluginmanager.updating"_s : untouched.domain);
    QCOMPARE(error.code, hasError ? 0 : untouched.code);
    const auto left = filesBelow(path("destination"));
    QCOMPARE(left, archive.left);
    checkAttributes(path("destination"), left);
    QCOMPARE(stateAround(m_folder.path()), stateBefore);
}

void tst_ArchiveExtraction_Hostile::corpusIsLarge()
{
    QVERIFY(m_archives.size() >= 60);
}

QTEST_GUILESS_MAIN(tst_ArchiveExtraction_Hostile)
#include "tst_archiveextraction_hostile.moc"
