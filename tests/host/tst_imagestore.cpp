#include "canvas/ImageStore.h"

#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

class tst_ImageStore : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void pictures();
    void whatIsNoPicture_data();
    void whatIsNoPicture();

private:
    QString urlOf(const QString &name) const { return QUrl::fromLocalFile(m_folder.filePath(name)).toString(); }

    const QTemporaryDir m_folder;
};

void tst_ImageStore::init()
{
    QImage image(3, 2, QImage::Format_RGB32);
    image.fill(Qt::red);
    QVERIFY(image.save(m_folder.filePath(u"picture.png"_s)));
}

void tst_ImageStore::pictures()
{
    const auto image = ImageStore::shared().image(urlOf(u"picture.png"_s));
    QCOMPARE(image.size(), QSize(3, 2));
    QCOMPARE(image.pixelColor(1, 1), QColor(Qt::red));
}

void tst_ImageStore::whatIsNoPicture_data()
{
    QTest::addColumn<QString>("url");

    const auto pipe = m_folder.filePath(u"pipe"_s);
    QCOMPARE(::mkfifo(qPrintable(pipe), 0600), 0);
    QTest::newRow("nothing") << QString();
    QTest::newRow("missing file") << urlOf(u"missing.png"_s);
    QTest::newRow("folder") << urlOf({});
    QTest::newRow("pipe that nobody writes to") << urlOf(u"pipe"_s);
    QTest::newRow("device without an end") << u"file:///dev/zero"_s;
    QTest::newRow("other scheme") << u"https://korvan.invalid/picture.png"_s;
    QTest::newRow("data that are none") << u"data:image/png;base64,%%%"_s;
}

void tst_ImageStore::whatIsNoPicture()
{
    QFETCH(QString, url);
    QVERIFY(ImageStore::shared().image(url).isNull());
}

QTEST_MAIN(tst_ImageStore)
#include "tst_imagestore.moc"
