// Checking plug-ins whose files are not what they should be, be it by malice.

#include "ValidateFixture.h"

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

class tst_CommandLine_Validate_Files : public QObject, private ValidateFixture
{
    Q_OBJECT

private slots:
    void init() { makeFolder(); }
    void manifestThatIsNoFile_data();
    void manifestThatIsNoFile();

private:
    QString inside(const QString &path) const
    {
        return m_folder->filePath(u"plugins/x.korvanplugin/Contents/"_s + path);
    }
};

void tst_CommandLine_Validate_Files::manifestThatIsNoFile_data()
{
    QTest::addColumn<QByteArray>("link"); // none: a pipe
    QTest::addColumn<QString>("message");
    QTest::newRow("a pipe that nobody writes to") << ""_ba << u"Not a regular file"_s;
    QTest::newRow("a device that never ends") << "/dev/zero"_ba << u"Not a regular file"_s;
    QTest::newRow("a folder") << "."_ba << u"Is a directory"_s;
}

void tst_CommandLine_Validate_Files::manifestThatIsNoFile()
{
    QFETCH(QByteArray, link);
    QFETCH(QString, message);
    plugin(u"x"_s, "{}");
    const auto manifest = inside(u"Korvan/manifest.json"_s);
    QVERIFY(QFile::remove(manifest));
    const auto path = QFile::encodeName(manifest);
    QCOMPARE(link.isEmpty() ? ::mkfifo(path.constData(), 0600) : ::symlink(link.constData(), path.constData()), 0);
    QCOMPARE(reports(), QStringList{u"error manifest.json:1:1: The file cannot be read: %1."_s.arg(message)});
}

QTEST_GUILESS_MAIN(tst_CommandLine_Validate_Files)
#include "tst_commandline_validate_files.moc"
