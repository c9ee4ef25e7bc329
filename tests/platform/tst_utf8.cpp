#include "platform/UTF8.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class tst_UTF8 : public QObject
{
    Q_OBJECT

private slots:
    void validity_data();
    void validity();
    void badByteIsFoundAtEveryPlace();
};

void tst_UTF8::validity_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("isValid");

    QTest::newRow("null") << QByteArray() << true;
    QTest::newRow("empty") << ""_ba << true;
    QTest::newRow("ASCII") << "text"_ba << true;
    QTest::newRow("NUL") << QByteArray("a\0b", 3) << true;
    QTest::newRow("two bytes") << "\xC3\xA4"_ba << true;
    QTest::newRow("three bytes") << "\xE2\x82\xAC"_ba << true;
    QTest::newRow("four bytes") << "\xF0\x9F\x98\x80"_ba << true;
    QTest::newRow("byte-order mark") << "\xEF\xBB\xBF"_ba << true;
    QTest::newRow("highest character") << "\xF4\x8F\xBF\xBF"_ba << true;
    QTest::newRow("above the highest character") << "\xF4\x90\x80\x80"_ba << false;
    QTest::newRow("Latin-1") << "caf\xE9"_ba << false;
    QTest::newRow("cut off at the end") << "\xE2\x82"_ba << false;
    QTest::newRow("cut off inside") << "\xE2\x82 x"_ba << false;
    QTest::newRow("continuation alone") << "\x80"_ba << false;
    QTest::newRow("overlong slash") << "\xC0\xAF"_ba << false;
    QTest::newRow("overlong NUL") << "\xC0\x80"_ba << false;
    QTest::newRow("surrogate") << "\xED\xA0\x80"_ba << false;
    QTest::newRow("UTF-16") << "\xFF\xFEt\x00"_ba << false;
}

void tst_UTF8::validity()
{
    QFETCH(QByteArray, bytes);
    QTEST(isValidUTF8(bytes), "isValid");
}

/// The check works on blocks of bytes; none of its places may be blind.
void tst_UTF8::badByteIsFoundAtEveryPlace()
{
    const QByteArray good = QByteArray("\xF0\x9F\x98\x80").repeated(50);
    QVERIFY(isValidUTF8(good));
    for (qsizetype i = 0; i < good.size(); ++i) {
        auto bad = good;
        bad[i] = char(0xFF);
        QVERIFY2(!isValidUTF8(bad), qPrintable(u"place %1"_s.arg(i)));
        QVERIFY2(isValidUTF8(good.left(i)) == (i % 4 == 0), qPrintable(u"first %1 bytes"_s.arg(i)));
    }
}

QTEST_GUILESS_MAIN(tst_UTF8)
#include "tst_utf8.moc"
