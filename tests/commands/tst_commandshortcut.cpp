#include "commands/CommandShortcut.h"
#include "platform/MenuItem.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class tst_CommandShortcut : public QObject
{
    Q_OBJECT

private slots:
    void keyAndModifiers_data();
    void keyAndModifiers();
    void masksAreThoseOfThePlatform();
};

void tst_CommandShortcut::keyAndModifiers_data()
{
    QTest::addColumn<QString>("shortcut");
    QTest::addColumn<QString>("key");
    QTest::addColumn<unsigned>("modifiers");

    constexpr unsigned command = 0x100000;
    constexpr unsigned option = 0x80000;
    constexpr unsigned control = 0x40000;
    constexpr unsigned shift = 0x20000;
    QTest::newRow("empty") << u""_s << u""_s << 0U;
    QTest::newRow("a key alone") << u"k"_s << u"k"_s << 0U;
    QTest::newRow("key in lower case") << u"K"_s << u"k"_s << 0U;
    QTest::newRow("key beyond ASCII") << u"cmd Ö"_s << u"ö"_s << command;
    QTest::newRow("key beyond the first plane") << u"cmd 🎨"_s << u"🎨"_s << command;
    QTest::newRow("half a surrogate pair") << QString(QChar(0xDFA8)) << QString(QChar(0xDFA8)) << 0U;
    QTest::newRow("a blank is a key") << u"cmd "_s << u" "_s << command;
    QTest::newRow("cmd") << u"cmd k"_s << u"k"_s << command;
    QTest::newRow("command") << u"command k"_s << u"k"_s << command;
    QTest::newRow("option") << u"option k"_s << u"k"_s << option;
    QTest::newRow("alt") << u"alt k"_s << u"k"_s << option;
    QTest::newRow("control") << u"control k"_s << u"k"_s << control;
    QTest::newRow("ctrl") << u"ctrl k"_s << u"k"_s << control;
    QTest::newRow("shift") << u"shift k"_s << u"k"_s << shift;
    QTest::newRow("blanks between") << u"cmd shift k"_s << u"k"_s << (command | shift);
    QTest::newRow("signs between, another order") << u"shift+cmd+k"_s << u"k"_s << (command | shift);
    QTest::newRow("nothing between") << u"cmdshiftk"_s << u"k"_s << (command | shift);
    QTest::newRow("all four") << u"ctrl alt shift cmd x"_s << u"x"_s << (command | option | control | shift);
    QTest::newRow("a modifier twice counts once") << u"cmd command x"_s << u"x"_s << command;
    QTest::newRow("a modifier alone also gives its last letter") << u"shift"_s << u"t"_s << shift;
    QTest::newRow("inside other words") << u"salty k"_s << u"k"_s << option;
    QTest::newRow("any case") << u"Cmd SHIFT k"_s << u"k"_s << (command | shift);
    QTest::newRow("key first is no key") << u"k cmd"_s << u"d"_s << command;
}

void tst_CommandShortcut::keyAndModifiers()
{
    QFETCH(QString, shortcut);
    QTEST(keyOfShortcut(shortcut), "key");
    QTEST(modifiersOfShortcut(shortcut), "modifiers");
}

void tst_CommandShortcut::masksAreThoseOfThePlatform()
{
    QCOMPARE(unsigned(ModifierFlag::Command), 0x100000U);
    QCOMPARE(unsigned(ModifierFlag::Option), 0x80000U);
    QCOMPARE(unsigned(ModifierFlag::Control), 0x40000U);
    QCOMPARE(unsigned(ModifierFlag::Shift), 0x20000U);
}

QTEST_GUILESS_MAIN(tst_CommandShortcut)
#include "tst_commandshortcut.moc"
