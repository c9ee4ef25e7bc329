#include "platform/MenuShortcut.h"

#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

constexpr auto shift = static_cast<unsigned>(ModifierFlag::Shift);
constexpr auto control = static_cast<unsigned>(ModifierFlag::Control);
constexpr auto option = static_cast<unsigned>(ModifierFlag::Option);
constexpr auto command = static_cast<unsigned>(ModifierFlag::Command);

} // namespace

class tst_MenuShortcut : public QObject
{
    Q_OBJECT

private slots:
    void shortcuts_data();
    void shortcuts();
};

void tst_MenuShortcut::shortcuts_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<unsigned>("modifiers");
    QTest::addColumn<QKeySequence>("expected");

    QTest::newRow("no shortcut") << QString() << 0U << QKeySequence();
    QTest::newRow("modifiers without a key") << QString() << command << QKeySequence();
    QTest::newRow("a key alone") << u"k"_s << 0U << QKeySequence(Qt::Key_K);
    QTest::newRow("Command is Ctrl") << u"k"_s << command << QKeySequence(Qt::CTRL | Qt::Key_K);
    QTest::newRow("Control is Meta") << u"k"_s << control << QKeySequence(Qt::META | Qt::Key_K);
    QTest::newRow("Option is Alt") << u"k"_s << option << QKeySequence(Qt::ALT | Qt::Key_K);
    QTest::newRow("Shift is Shift") << u"k"_s << shift << QKeySequence(Qt::SHIFT | Qt::Key_K);
    QTest::newRow("all of them") << u"k"_s << (command | control | option | shift)
                                 << QKeySequence(Qt::CTRL | Qt::META | Qt::ALT | Qt::SHIFT | Qt::Key_K);
    QTest::newRow("unknown modifiers are left out")
        << u"k"_s << (command | 0x10000 | 1) << QKeySequence(Qt::CTRL | Qt::Key_K);
    QTest::newRow("a digit") << u"1"_s << command << QKeySequence(Qt::CTRL | Qt::Key_1);
    QTest::newRow("punctuation") << u"/"_s << command << QKeySequence(Qt::CTRL | Qt::Key_Slash);
    QTest::newRow("a comma is no list") << u","_s << command << QKeySequence(Qt::CTRL | Qt::Key_Comma);
    QTest::newRow("a plus is no separator") << u"+"_s << command << QKeySequence(Qt::CTRL | Qt::Key_Plus);
    QTest::newRow("space") << u" "_s << command << QKeySequence(Qt::CTRL | Qt::Key_Space);
    QTest::newRow("a letter of Latin-1") << u"ö"_s << command << QKeySequence(Qt::CTRL | Qt::Key_Odiaeresis);
    QTest::newRow("a letter beyond") << u"ж"_s << command << QKeySequence(Qt::CTRL | Qt::Key(0x416));
    QTest::newRow("a letter of two units") << u"𐐨"_s << command << QKeySequence(Qt::CTRL | Qt::Key(0x10400));
    QTest::newRow("half a letter") << QString(QChar(0xD801)) << command << QKeySequence();
    QTest::newRow("several letters") << u"kk"_s << command << QKeySequence();
    QTest::newRow("tab") << u"\t"_s << command << QKeySequence(Qt::CTRL | Qt::Key_Tab);
    QTest::newRow("return") << u"\r"_s << command << QKeySequence(Qt::CTRL | Qt::Key_Return);
    QTest::newRow("line feed") << u"\n"_s << command << QKeySequence(Qt::CTRL | Qt::Key_Return);
    QTest::newRow("escape") << u"\u001b"_s << command << QKeySequence(Qt::CTRL | Qt::Key_Escape);
    QTest::newRow("backspace") << u"\b"_s << command << QKeySequence(Qt::CTRL | Qt::Key_Backspace);
    QTest::newRow("delete backwards") << u"\u007f"_s << command << QKeySequence(Qt::CTRL | Qt::Key_Backspace);
    QTest::newRow("another control character") << u"\u0001"_s << command << QKeySequence();
    QTest::newRow("arrow up") << u"\uf700"_s << 0U << QKeySequence(Qt::Key_Up);
    QTest::newRow("arrow right") << u"\uf703"_s << 0U << QKeySequence(Qt::Key_Right);
    QTest::newRow("the first function key") << u"\uf704"_s << 0U << QKeySequence(Qt::Key_F1);
    QTest::newRow("the last function key") << u"\uf726"_s << 0U << QKeySequence(Qt::Key_F35);
    QTest::newRow("delete forwards") << u"\uf728"_s << 0U << QKeySequence(Qt::Key_Delete);
    QTest::newRow("page down") << u"\uf72d"_s << 0U << QKeySequence(Qt::Key_PageDown);
    QTest::newRow("a key that nobody has") << u"\uf8fe"_s << 0U << QKeySequence();
}

void tst_MenuShortcut::shortcuts()
{
    QFETCH(QString, key);
    QFETCH(unsigned, modifiers);

    MenuItem item;
    item.keyEquivalent = key;
    item.keyEquivalentModifierMask = modifiers;
    QTEST(keySequenceOf(item), "expected");
}

QTEST_GUILESS_MAIN(tst_MenuShortcut)
#include "tst_menushortcut.moc"
