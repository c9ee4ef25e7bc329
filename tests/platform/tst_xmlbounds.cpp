// Which XML a parser may get.

#include "platform/XMLBounds.h"

#include <QtTest>

class tst_XMLBounds : public QObject
{
    Q_OBJECT

private slots:
    void bounds_data();
    void bounds();
};

namespace {

QByteArray attributes(int count)
{
    QByteArray text;
    for (int i = 0; i < count; ++i)
        text += " a" + QByteArray::number(i) + (i % 2 == 0 ? "=\"'>\"" : "='\">'");
    return text;
}

} // namespace

void tst_XMLBounds::bounds_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<bool>("isWithin");

    const auto row = [](const char *tag, const QByteArray &xml, bool isWithin) {
        QTest::newRow(tag) << xml << isWithin;
    };
    const auto allowed = attributes(mostXMLAttributes);
    const auto tooMany = attributes(mostXMLAttributes + 1);
    row("nothing", "", true);
    row("no XML", "'\">[", true);
    row("attributes as many as allowed", "<a" + allowed + "/>", true);
    row("one attribute more", "<a" + tooMany + "/>", false);
    row("as many in each of several elements", ("<a" + allowed + ">").repeated(3), true);
    row("one more in the last of several elements", ("<a" + allowed + ">").repeated(3) + "<a" + tooMany + ">", false);
    row("one more in a tag that never ends", "<a" + tooMany, false);
    row("namespaces count", "<a xmlns='b'" + allowed + "/>", false);
    row("white space around the equals sign", "<a" + QByteArray(tooMany).replace("=", " \n= ") + "/>", false);
    row("in character data", "<a><![CDATA[<b" + tooMany + ">]]></a>", true);
    row("behind character data", "<a><![CDATA[ ]]><b" + tooMany + "/></a>", false);
    row("behind brackets in character data", "<a><![CDATA[]]]]><b" + tooMany + "/></a>", false);
    row("in a comment", "<!-- <a" + tooMany + "> -->", true);
    row("behind a comment", "<!-- ' --><a" + tooMany + ">", false);
    row("behind a comment without content", "<!----><a" + tooMany + ">", false);
    row("in a comment that seems to have ended", "<!--><a" + tooMany + "> -->", true);
    row("in an instruction", "<?a <a" + tooMany + "> ?>", true);
    row("behind an instruction", "<?xml version=\"1.0\"?><a" + tooMany + ">", false);
    row("behind text with quotation marks", "<a>it's</a><a" + tooMany + ">", false);
    row("text with quotation marks", "<a>" + QByteArray("'").repeated(1000) + "</a>", true);
    row("document type", "<!DOCTYPE rss PUBLIC \"a[\" 'b]>'><rss/>", true);
    row("document type with declarations", "<!DOCTYPE rss [<!ENTITY a 'b'>]><rss/>", false);
    row("document type with no declarations", "<!DOCTYPE rss []><rss/>", false);
    row("document type with both", "<!DOCTYPE rss SYSTEM 'a' [<!ENTITY a 'b'>]><rss/>", false);
    row("document type behind a comment", "<!-- > --><!DOCTYPE rss [ ]><rss/>", false);
    row("brackets in an element", "<a b='[' [>", true);
    row("zero byte", QByteArray("<a>\0</a>", 8), false);
    row("UTF-16", QByteArray("\xFF\xFE<\0a\0/\0>\0", 10), false);
    row("deep elements", QByteArray("<a>").repeated(1000), true);
    row("cut off in a comment", "<!-- <a", true);
    row("cut off in a string", "<a b='", true);
    row("cut off behind the bracket", "<", true);
}

void tst_XMLBounds::bounds()
{
    QFETCH(QByteArray, xml);
    QFETCH(bool, isWithin);

    QCOMPARE(isXMLWithinBounds(xml), isWithin);
}

QTEST_GUILESS_MAIN(tst_XMLBounds)
#include "tst_xmlbounds.moc"
