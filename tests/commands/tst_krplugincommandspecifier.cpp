#include "commands/KRPluginCommandSpecifier.h"
#include "support/NilableText.h"

#include <QHash>
#include <QtTest>

using namespace Qt::StringLiterals;

class tst_KRPluginCommandSpecifier : public QObject
{
    Q_OBJECT

private slots:
    void keepsBothIdentifiers_data();
    void keepsBothIdentifiers();
    void equality_data();
    void equality();
    void equalSpecifiersHaveEqualHashes();
    void hashIsThatOfTheText();
    void sameTextDoesNotMakeEqual();
    void servesAsKey();
    void copiesAreEqualAndIndependent();
    void otherValuesAreNeverEqual();
    void debugDescriptionNamesClassAndText();
};

void tst_KRPluginCommandSpecifier::keepsBothIdentifiers_data()
{
    QTest::addColumn<Text>("plugin");
    QTest::addColumn<Text>("command");
    QTest::addColumn<Text>("text");

    QTest::newRow("both") << Text(u"com.example.tidy"_s) << Text(u"sort-layers"_s)
                          << Text(u"com.example.tidy/sort-layers"_s);
    QTest::newRow("no plug-in") << nil << Text(u"run"_s) << Text(u"run"_s);
    QTest::newRow("no command") << Text(u"x"_s) << nil << Text(u"x/(null)"_s);
    QTest::newRow("neither") << nil << nil << nil;
    QTest::newRow("empty plug-in is not nil") << Text(u""_s) << Text(u"run"_s) << Text(u"/run"_s);
    QTest::newRow("empty command is not nil") << Text(u"x"_s) << Text(u""_s) << Text(u"x/"_s);
    QTest::newRow("slashes are kept") << Text(u"a/b"_s) << Text(u"c/d"_s) << Text(u"a/b/c/d"_s);
    QTest::newRow("percent signs are kept") << Text(u"%2"_s) << Text(u"%1 %@"_s) << Text(u"%2/%1 %@"_s);
}

void tst_KRPluginCommandSpecifier::keepsBothIdentifiers()
{
    QFETCH(Text, plugin);
    QFETCH(Text, command);
    const KRPluginCommandSpecifier specifier(plugin, command);
    QCOMPARE(specifier.pluginBundleIdentifier(), plugin);
    QCOMPARE(specifier.commandIdentifier(), command);
    QTEST(specifier.stringValue(), "text");
}

void tst_KRPluginCommandSpecifier::equality_data()
{
    QTest::addColumn<KRPluginCommandSpecifier>("first");
    QTest::addColumn<KRPluginCommandSpecifier>("second");
    QTest::addColumn<bool>("isEqual");

    const KRPluginCommandSpecifier run(u"x"_s, u"run"_s);
    QTest::newRow("same identifiers") << run << KRPluginCommandSpecifier(u"x"_s, u"run"_s) << true;
    QTest::newRow("nil plug-in equals nil")
        << KRPluginCommandSpecifier(nil, u"run"_s) << KRPluginCommandSpecifier(nil, u"run"_s) << true;
    QTest::newRow("nil plug-in and some plug-in") << KRPluginCommandSpecifier(nil, u"run"_s) << run << false;
    QTest::newRow("nil plug-in and empty plug-in")
        << KRPluginCommandSpecifier(nil, u"run"_s) << KRPluginCommandSpecifier(u""_s, u"run"_s) << false;
    QTest::newRow("other plug-in") << run << KRPluginCommandSpecifier(u"y"_s, u"run"_s) << false;
    QTest::newRow("other command") << run << KRPluginCommandSpecifier(u"x"_s, u"walk"_s) << false;
    QTest::newRow("case of the plug-in counts") << run << KRPluginCommandSpecifier(u"X"_s, u"run"_s) << false;
    QTest::newRow("case of the command counts") << run << KRPluginCommandSpecifier(u"x"_s, u"Run"_s) << false;
    QTest::newRow("character for character")
        << KRPluginCommandSpecifier(u"x"_s, u"\u00e9"_s) << KRPluginCommandSpecifier(u"x"_s, u"e\u0301"_s) << false;
    QTest::newRow("nil command equals nothing, not even nil")
        << KRPluginCommandSpecifier(u"x"_s, nil) << KRPluginCommandSpecifier(u"x"_s, nil) << false;
    QTest::newRow("nil command and empty command")
        << KRPluginCommandSpecifier(u"x"_s, nil) << KRPluginCommandSpecifier(u"x"_s, u""_s) << false;
    QTest::newRow("all nil") << KRPluginCommandSpecifier() << KRPluginCommandSpecifier() << false;
}

void tst_KRPluginCommandSpecifier::equality()
{
    QFETCH(KRPluginCommandSpecifier, first);
    QFETCH(KRPluginCommandSpecifier, second);
    QFETCH(bool, isEqual);
    QCOMPARE(first.isEqualToCommandSpecifier(second), isEqual);
    QCOMPARE(second.isEqualToCommandSpecifier(first), isEqual);
    QCOMPARE(first.isEqual(QVariant::fromValue(second)), isEqual);
    QCOMPARE(first == second, isEqual);
    QCOMPARE(first != second, !isEqual);
    // The very same object is no exception.
    QCOMPARE(first.isEqualToCommandSpecifier(first), first.commandIdentifier().has_value());
}

void tst_KRPluginCommandSpecifier::equalSpecifiersHaveEqualHashes()
{
    const KRPluginCommandSpecifier first(u"x"_s, u"run"_s);
    const KRPluginCommandSpecifier second(u"x"_s, u"run"_s);
    QCOMPARE(first.hash(), second.hash());
    QCOMPARE(KRPluginCommandSpecifier(nil, u"run"_s).hash(), KRPluginCommandSpecifier(nil, u"run"_s).hash());
}

void tst_KRPluginCommandSpecifier::hashIsThatOfTheText()
{
    QCOMPARE(KRPluginCommandSpecifier(u"x"_s, u"run"_s).hash(), ::qHash(u"x/run"_s));
    QCOMPARE(KRPluginCommandSpecifier(nil, u"run"_s).hash(), ::qHash(u"run"_s));
    QCOMPARE(KRPluginCommandSpecifier().hash(), std::size_t(0));
}

void tst_KRPluginCommandSpecifier::sameTextDoesNotMakeEqual()
{
    const KRPluginCommandSpecifier first(u"a/b"_s, u"c"_s);
    const KRPluginCommandSpecifier second(u"a"_s, u"b/c"_s);
    QCOMPARE(first.stringValue(), second.stringValue());
    QCOMPARE(first.hash(), second.hash());
    QVERIFY(!first.isEqualToCommandSpecifier(second));
}

void tst_KRPluginCommandSpecifier::servesAsKey()
{
    QHash<KRPluginCommandSpecifier, int> table;
    table.insert({u"a/b"_s, u"c"_s}, 1);
    table.insert({u"a"_s, u"b/c"_s}, 2);
    table.insert({u"a"_s, u"b/c"_s}, 3);
    QCOMPARE(table.size(), 2);
    QCOMPARE(table.value({u"a/b"_s, u"c"_s}), 1);
    QCOMPARE(table.value({u"a"_s, u"b/c"_s}), 3);
    QVERIFY(!table.contains({nil, u"c"_s}));
}

void tst_KRPluginCommandSpecifier::copiesAreEqualAndIndependent()
{
    QString command = u"run"_s;
    const KRPluginCommandSpecifier original(u"x"_s, command);
    const auto copy = original;
    command += u"ning"_s;
    QVERIFY(copy == original);
    QCOMPARE(copy.stringValue(), u"x/run"_s);
}

void tst_KRPluginCommandSpecifier::otherValuesAreNeverEqual()
{
    const KRPluginCommandSpecifier specifier(nil, u"run"_s);
    QVERIFY(!specifier.isEqual(u"run"_s));
    QVERIFY(!specifier.isEqual(QVariant()));
    QVERIFY(!specifier.isEqual(QVariant::fromValue(nullptr)));
    QVERIFY(!specifier.isEqual(QVariantMap{{u"commandIdentifier"_s, u"run"_s}}));
}

void tst_KRPluginCommandSpecifier::debugDescriptionNamesClassAndText()
{
    const KRPluginCommandSpecifier specifier(u"x"_s, u"run"_s);
    const auto address = QString::number(reinterpret_cast<quintptr>(&specifier), 16);
    QCOMPARE(specifier.debugDescription(), u"<KRPluginCommandSpecifier: 0x%1> - x/run"_s.arg(address));
    QVERIFY(KRPluginCommandSpecifier().debugDescription().endsWith(u"> - (null)"_s));
}

QTEST_GUILESS_MAIN(tst_KRPluginCommandSpecifier)
#include "tst_krplugincommandspecifier.moc"
