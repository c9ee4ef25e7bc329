// Values as text for people and logs.

#include "platform/script/ValueText.h"

#include <QDateTime>
#include <QtTest>

#include <limits>

using namespace Qt::StringLiterals;

class tst_ValueText : public QObject
{
    Q_OBJECT

private slots:
    void descriptions_data();
    void descriptions();
    void longTextsAreCutOff();
};

void tst_ValueText::descriptions_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("text");

    const auto row = [](const char *tag, const QVariant &value, const QString &text) {
        QTest::newRow(tag) << value << text;
    };
    row("nil", {}, u"(null)"_s);
    row("null", QVariant::fromValue(nullptr), u"(null)"_s);
    row("text as it stands", u"a \"b\"\n"_s, u"a \"b\"\n"_s);
    row("empty text", u""_s, u""_s);
    row("boolean", true, u"true"_s);
    row("integer", 7, u"7"_s);
    row("fraction", 0.1, u"0.1"_s);
    row("infinity", -std::numeric_limits<double>::infinity(), u"-Infinity"_s);
    row("not a number", std::numeric_limits<double>::quiet_NaN(), u"NaN"_s);
    row("list", QVariantList{1, u"a"_s, QVariant::fromValue(nullptr)}, u"[1, \"a\", null]"_s);
    row("nil in a list", QVariantList{QVariant()}, u"[undefined]"_s);
    row("dictionary", QVariantMap{{u"a"_s, QVariantList{true}}}, u"{\"a\": [true]}"_s);
    row("bytes", QVariantList{QByteArray("abc")}, u"[<3 bytes>]"_s);
    row("date", QDateTime::fromMSecsSinceEpoch(5, Qt::UTC), u"1970-01-01T00:00:00.005Z"_s);
}

void tst_ValueText::descriptions()
{
    QFETCH(QVariant, value);
    QTEST(descriptionOfValue(value), "text");
}

void tst_ValueText::longTextsAreCutOff()
{
    const auto text = descriptionOfValue(QString(10'000'001, u'x'));
    QCOMPARE(text.size(), 10'000'001);
    QVERIFY(text.endsWith(u"x…"_s));
    QVERIFY(descriptionOfValue(QString(10'000'000, u'x')).endsWith(u'x'));
}

QTEST_GUILESS_MAIN(tst_ValueText)
#include "tst_valuetext.moc"
