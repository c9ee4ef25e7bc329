#include "platform/LTCompareVersions.h"

#include <QRandomGenerator>
#include <QtTest>

using namespace Qt::StringLiterals;

class tst_LTCompareVersions : public QObject
{
    Q_OBJECT

private slots:
    void order_data();
    void order();
    void nilIsOlderThanEveryVersion();
    void orderIsStrictWeakOnRandomTexts();
    void highest_data();
    void highest();
    void highestOfNoneIsNil();
};

void tst_LTCompareVersions::order_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::addColumn<int>("result");

    QTest::newRow("equal texts") << u"1.2.3"_s << u"1.2.3"_s << 0;
    QTest::newRow("components are numbers, not texts") << u"1.9"_s << u"1.10"_s << -1;
    QTest::newRow("earlier components weigh more") << u"2.0"_s << u"1.9.9"_s << 1;
    QTest::newRow("missing component counts as 0") << u"1"_s << u"1.0.0"_s << 0;
    QTest::newRow("missing component is older than 1") << u"1.0"_s << u"1.0.1"_s << -1;
    QTest::newRow("empty component counts as 0") << u"1..2"_s << u"1.0.2"_s << 0;
    QTest::newRow("trailing dot adds nothing") << u"1."_s << u"1"_s << 0;
    QTest::newRow("leading dot is a 0") << u".5"_s << u"0.5"_s << 0;
    QTest::newRow("leading zeros mean nothing") << u"1.002"_s << u"1.2"_s << 0;
    QTest::newRow("numbers of any length") << u"1.99999999999999999999999"_s << u"1.100000000000000000000000"_s << -1;
    QTest::newRow("long equal numbers") << u"123456789012345678901234567890"_s << u"0123456789012345678901234567890"_s
                                        << 0;
    QTest::newRow("beta before release") << u"1.0-beta"_s << u"1.0"_s << -1;
    QTest::newRow("beta before next patch") << u"1.0-beta"_s << u"1.0.1"_s << -1;
    QTest::newRow("beta as a component of its own") << u"1.0.beta"_s << u"1.0"_s << -1;
    QTest::newRow("beta numbers are numbers") << u"1.0b2"_s << u"1.0b10"_s << -1;
    QTest::newRow("beta without number before beta 1") << u"1.0b"_s << u"1.0b1"_s << -1;
    QTest::newRow("alpha before beta") << u"1.0-alpha"_s << u"1.0-beta"_s << -1;
    QTest::newRow("beta 2 after beta") << u"1.0-beta.2"_s << u"1.0-beta"_s << 1;
    QTest::newRow("leading v ignored") << u"v1.2"_s << u"1.2"_s << 0;
    QTest::newRow("leading V ignored") << u"V1.2"_s << u"v1.2"_s << 0;
    QTest::newRow("a v without number is a text") << u"v"_s << u"0"_s << -1;
    QTest::newRow("blanks around ignored") << u" 1.2\n"_s << u"1.2"_s << 0;
    QTest::newRow("no text counts as 0") << u""_s << u"0"_s << 0;
    QTest::newRow("no text is older than 1") << u""_s << u"1"_s << -1;
    QTest::newRow("only dots") << u"..."_s << u"0.0"_s << 0;
    QTest::newRow("digits of other scripts are text") << u"1.٢"_s << u"1.1"_s << -1;
    QTest::newRow("NUL inside") << QString::fromLatin1("1.\0", 3) << u"1"_s << -1;
    QTest::newRow("lone surrogate") << u"1."_s + QChar(0xD800) << u"1.0"_s << -1;
}

void tst_LTCompareVersions::order()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    QFETCH(int, result);

    QCOMPARE(LTCompareVersions(first, second), result);
    QCOMPARE(LTCompareVersions(second, first), -result);
}

void tst_LTCompareVersions::nilIsOlderThanEveryVersion()
{
    QCOMPARE(LTCompareVersions(std::nullopt, u""_s), -1);
    QCOMPARE(LTCompareVersions(std::nullopt, u"-beta"_s), -1);
    QCOMPARE(LTCompareVersions(u"0"_s, std::nullopt), 1);
    QCOMPARE(LTCompareVersions(std::nullopt, std::nullopt), 0);
}

void tst_LTCompareVersions::orderIsStrictWeakOnRandomTexts()
{
    QRandomGenerator random(20240101);
    const QString alphabet = u"0019.ab-vV +\u0662"_s;
    QStringList texts;
    for (int i = 0; i < 60; ++i) {
        QString text;
        for (auto length = random.bounded(7); length > 0; --length)
            text += alphabet[random.bounded(int(alphabet.size()))];
        texts.append(text);
    }
    for (const auto &a : texts) {
        QCOMPARE(LTCompareVersions(a, a), 0);
        for (const auto &b : texts) {
            const int ab = LTCompareVersions(a, b);
            QCOMPARE(ab, -LTCompareVersions(b, a));
            for (const auto &c : texts) {
                const int bc = LTCompareVersions(b, c);
                if (ab <= 0 && bc <= 0) {
                    const bool isBefore = ab < 0 || bc < 0;
                    QVERIFY2(
                        LTCompareVersions(a, c) == (isBefore ? -1 : 0), qPrintable(u"'%1' '%2' '%3'"_s.arg(a, b, c)));
                }
            }
        }
    }
}

void tst_LTCompareVersions::highest_data()
{
    QTest::addColumn<QStringList>("versions");
    QTest::addColumn<QString>("highest");

    QTest::newRow("one") << QStringList{u"1.0"_s} << u"1.0"_s;
    QTest::newRow("whatever the order") << QStringList{u"1.2"_s, u"1.10"_s, u"1.9"_s} << u"1.10"_s;
    QTest::newRow("release over beta") << QStringList{u"2.0-beta"_s, u"2.0"_s} << u"2.0"_s;
    QTest::newRow("first among equals") << QStringList{u"1.0"_s, u"1"_s, u"v1"_s} << u"1.0"_s;
}

void tst_LTCompareVersions::highest()
{
    QFETCH(QStringList, versions);
    QTEST(LTHighestVersionNumber(versions).value_or(u"nil"_s), "highest");
}

void tst_LTCompareVersions::highestOfNoneIsNil()
{
    QVERIFY(!LTHighestVersionNumber({}));
}

QTEST_GUILESS_MAIN(tst_LTCompareVersions)
#include "tst_ltcompareversions.moc"
