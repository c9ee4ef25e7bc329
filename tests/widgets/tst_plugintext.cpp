#include "widgets/PluginText.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class tst_PluginText : public QObject
{
    Q_OBJECT

private slots:
    void line_data();
    void line();
    void lines();
};

void tst_PluginText::line_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");

    QTest::newRow("plain") << u"Tidy Layers"_s << u"Tidy Layers"_s;
    QTest::newRow("markup stays as it is") << u"<b>Tidy</b> & &amp;"_s << u"<b>Tidy</b> & &amp;"_s;
    QTest::newRow("line ends and tabs are spaces") << u"a\nb\tc\rd\u2028e"_s << u"a b c d e"_s;
    QTest::newRow("zeros and escapes are spaces") << u"a\u0000b\u001bc"_s << u"a b c"_s;
    QTest::newRow("nothing turns the reading direction") << u"safe\u202egnp.exe\u2066x"_s << u"safegnp.exex"_s;
    QTest::newRow("space around is gone") << u" \n Tidy \n"_s << u"Tidy"_s;
    QTest::newRow("empty") << QString() << QString();
    QTest::newRow("too long") << QString(1000, u'x') << QString(300, u'x') + u'…';
    QTest::newRow("as long as it may be") << QString(300, u'x') << QString(300, u'x');
}

void tst_PluginText::line()
{
    QFETCH(QString, text);
    QTEST(plainLine(text), "expected");
}

void tst_PluginText::lines()
{
    QCOMPARE(plainLines(u"one\ntwo\tthree\u202e"_s), u"one\ntwo three"_s);
    QCOMPARE(plainLines(u"abcdef"_s, 3), u"abc…"_s);
}

QTEST_GUILESS_MAIN(tst_PluginText)
#include "tst_plugintext.moc"
