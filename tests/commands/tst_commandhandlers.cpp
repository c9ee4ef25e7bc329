#include "commands/CommandHandlers.h"
#include "commands/KRPluginCommand.h"

#include <QtTest>

using namespace Qt::StringLiterals;

using Dictionary = OrderedVariantDictionary;
Q_DECLARE_METATYPE(CommandEntry)

namespace {

QVariant actions(const Dictionary &dictionary)
{
    return QVariant::fromValue(dictionary);
}

/// "key=function" in the index's order.
QStringList listing(const HandlerIndex &index)
{
    QStringList lines;
    for (const auto &[key, function] : index)
        lines.append(key + u'=' + function);
    return lines;
}

CommandEntry entryWithHandlers(const Dictionary &handlers)
{
    CommandEntry entry;
    entry.handlers = HandlerTable::fromDictionary(handlers);
    return entry;
}

} // namespace

class tst_CommandHandlers : public QObject
{
    Q_OBJECT

private slots:
    void flattening_data();
    void flattening();
    void tableOfEntry_data();
    void tableOfEntry();
    void usualTableIsShared();
    void initializerFlattensWithoutDefaults();
};

void tst_CommandHandlers::flattening_data()
{
    QTest::addColumn<OrderedVariantDictionary>("handlers");
    QTest::addColumn<QStringList>("index");

    QTest::newRow("nothing") << Dictionary{} << QStringList{};
    QTest::newRow("no actions") << Dictionary{{u"run"_s, u"onRun"_s}, {u"extra"_s, u"onExtra"_s}}
                                << QStringList{u"run=onRun"_s, u"extra=onExtra"_s};
    QTest::newRow("keys keep their order") << Dictionary{{u"z"_s, u"1"_s}, {u"a"_s, u"2"_s}, {u"m"_s, u"3"_s}}
                                           << QStringList{u"z=1"_s, u"a=2"_s, u"m=3"_s};
    QTest::newRow("an action stands under three keys") << Dictionary{{u"actions"_s, actions({{u"X"_s, u"onX"_s}})}}
                                                       << QStringList{u"X=onX"_s, u"X.begin=onX"_s, u"X.finish=onX"_s};
    QTest::newRow("an action that names its phase stands alone")
        << Dictionary{{u"actions"_s, actions({{u"X.begin"_s, u"b"_s}, {u"Y.finish"_s, u"f"_s}})}}
        << QStringList{u"X.begin=b"_s, u"Y.finish=f"_s};
    QTest::newRow("all together") << Dictionary{{u"run"_s, u"onRun"_s},
        {u"actions"_s, actions({{u"SelectionChanged"_s, u"onSel"_s}, {u"Save.finish"_s, u"onSaved"_s}})}}
                                  << QStringList{u"run=onRun"_s, u"SelectionChanged=onSel"_s,
                                         u"SelectionChanged.begin=onSel"_s, u"SelectionChanged.finish=onSel"_s,
                                         u"Save.finish=onSaved"_s};
    QTest::newRow("an action overrides a handler of its key")
        << Dictionary{{u"X"_s, u"top"_s}, {u"X.begin"_s, u"top"_s}, {u"actions"_s, actions({{u"X"_s, u"action"_s}})}}
        << QStringList{u"X=action"_s, u"X.begin=action"_s, u"X.finish=action"_s};
    QTest::newRow("also one that comes later") << Dictionary{{u"actions"_s, actions({{u"X"_s, u"action"_s}})},
        {u"X"_s, u"top"_s}} << QStringList{u"X=action"_s, u"X.begin=action"_s, u"X.finish=action"_s};
    QTest::newRow("a later action overrides an earlier one")
        << Dictionary{{u"actions"_s, actions({{u"X"_s, u"all"_s}, {u"X.begin"_s, u"begin"_s}})}}
        << QStringList{u"X=all"_s, u"X.begin=begin"_s, u"X.finish=all"_s};
    QTest::newRow("the phase is an ending") << Dictionary{{u"actions"_s, actions({{u"begin"_s, u"b"_s}})}}
                                            << QStringList{u"begin=b"_s, u"begin.begin=b"_s, u"begin.finish=b"_s};
    QTest::newRow("the case of the phase counts")
        << Dictionary{{u"actions"_s, actions({{u"X.Begin"_s, u"b"_s}})}}
        << QStringList{u"X.Begin=b"_s, u"X.Begin.begin=b"_s, u"X.Begin.finish=b"_s};
    QTest::newRow("empty actions are removed") << Dictionary{{u"actions"_s, actions({})}} << QStringList{};
    QTest::newRow("actions of another type are removed")
        << Dictionary{{u"run"_s, u"onRun"_s}, {u"actions"_s, u"onAction"_s}} << QStringList{u"run=onRun"_s};
    QTest::newRow("actions as an unordered dictionary")
        << Dictionary{{u"actions"_s, QVariantMap{{u"X.begin"_s, u"b"_s}}}} << QStringList{u"X.begin=b"_s};
    QTest::newRow("no defaults") << Dictionary{{u"setUp"_s, u"mine"_s}} << QStringList{u"setUp=mine"_s};
}

void tst_CommandHandlers::flattening()
{
    QFETCH(OrderedVariantDictionary, handlers);
    QFETCH(QStringList, index);
    const auto original = handlers;
    QCOMPARE(listing(KRPluginCommand::flattenedHandlerIndexWithHandlers(handlers)), index);
    QVERIFY(handlers == original);
}

void tst_CommandHandlers::tableOfEntry_data()
{
    QTest::addColumn<CommandEntry>("entry");
    QTest::addColumn<QStringList>("index");

    QTest::newRow("neither handlers nor handler")
        << CommandEntry() << QStringList{u"run=onRun"_s, u"setUp=onSetUp"_s, u"tearDown=onTearDown"_s};

    CommandEntry withHandler;
    withHandler.handler = u"doIt"_s;
    QTest::newRow("handler") << withHandler << QStringList{u"run=doIt"_s, u"setUp=onSetUp"_s, u"tearDown=onTearDown"_s};
    CommandEntry withEmptyHandler;
    withEmptyHandler.handler = u""_s;
    QTest::newRow("empty handler is not nil")
        << withEmptyHandler << QStringList{u"run="_s, u"setUp=onSetUp"_s, u"tearDown=onTearDown"_s};

    auto both = entryWithHandlers({{u"setUp"_s, u"prepare"_s}});
    both.handler = u"doIt"_s;
    QTest::newRow("handlers win outright over handler")
        << both << QStringList{u"setUp=prepare"_s, u"tearDown=onTearDown"_s};
    QTest::newRow("empty handlers have no run")
        << entryWithHandlers({}) << QStringList{u"setUp=onSetUp"_s, u"tearDown=onTearDown"_s};
    QTest::newRow("own setUp and tearDown stay where they are")
        << entryWithHandlers({{u"tearDown"_s, u"a"_s}, {u"run"_s, u"b"_s}, {u"setUp"_s, u"c"_s}})
        << QStringList{u"tearDown=a"_s, u"run=b"_s, u"setUp=c"_s};
    QTest::newRow("onRun is an ordinary key") << entryWithHandlers(
        {{u"onRun"_s, u"f"_s}}) << QStringList{u"onRun=f"_s, u"setUp=onSetUp"_s, u"tearDown=onTearDown"_s};
    QTest::newRow("defaults come before actions")
        << entryWithHandlers({{u"actions"_s, actions({{u"X.begin"_s, u"b"_s}})}})
        << QStringList{u"setUp=onSetUp"_s, u"tearDown=onTearDown"_s, u"X.begin=b"_s};
    QTest::newRow("an action overrides a default")
        << entryWithHandlers({{u"actions"_s, actions({{u"setUp"_s, u"b"_s}})}})
        << QStringList{u"setUp=b"_s, u"tearDown=onTearDown"_s, u"setUp.begin=b"_s, u"setUp.finish=b"_s};
    QTest::newRow("function names that are no texts")
        << entryWithHandlers({{u"run"_s, 5}, {u"a"_s, true}, {u"b"_s, QVariant::fromValue(nullptr)}})
        << QStringList{u"run=5"_s, u"a=true"_s, u"b=(null)"_s, u"setUp=onSetUp"_s, u"tearDown=onTearDown"_s};
}

void tst_CommandHandlers::tableOfEntry()
{
    QFETCH(CommandEntry, entry);
    QTEST(listing(*handlersOfEntry(entry)), "index");
}

void tst_CommandHandlers::usualTableIsShared()
{
    CommandEntry other;
    other.handler = u"doIt"_s;
    QCOMPARE(handlersOfEntry(CommandEntry()), handlersOfEntry(CommandEntry()));
    QVERIFY(handlersOfEntry(CommandEntry()) != handlersOfEntry(other));
}

void tst_CommandHandlers::initializerFlattensWithoutDefaults()
{
    const KRPluginCommand command(nullptr, u"a"_s, u"A"_s,
        Dictionary{{u"run"_s, u"onRun"_s}, {u"actions"_s, actions({{u"X"_s, u"onX"_s}})}}, std::nullopt,
        KRPluginCommand::Scope::Document);
    QCOMPARE(
        listing(command.handlers()), (QStringList{u"run=onRun"_s, u"X=onX"_s, u"X.begin=onX"_s, u"X.finish=onX"_s}));

    const KRPluginCommand runOnly(nullptr, u"a"_s, u"A"_s, u"doIt"_s, KRPluginCommand::Scope::Document);
    QCOMPARE(listing(runOnly.handlers()), QStringList{u"run=doIt"_s});
}

QTEST_GUILESS_MAIN(tst_CommandHandlers)
#include "tst_commandhandlers.moc"
