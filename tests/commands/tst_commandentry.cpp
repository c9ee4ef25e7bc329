#include "commands/CommandEntry.h"
#include "support/NilableText.h"

#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

/// A value of each type that is no text.
const QList<std::pair<const char *, QVariant>> otherTypes{
    {"number", 5},
    {"boolean", true},
    {"null", QVariant::fromValue(nullptr)},
    {"array", QVariantList{u"text"_s}},
    {"object", QVariantMap{{u"text"_s, u"text"_s}}},
    {"undefined", QVariant()},
};

Text textUnderKey(const CommandEntry &entry, const QString &key)
{
    const QMap<QString, Text> texts{
        {u"script"_s, entry.script},
        {u"name"_s, entry.name},
        {u"identifier"_s, entry.identifier},
        {u"handler"_s, entry.handler},
        {u"shortcut"_s, entry.shortcut},
        {u"scope"_s, entry.scope},
    };
    return texts.value(key);
}

const QStringList textKeys{u"script"_s, u"name"_s, u"identifier"_s, u"handler"_s, u"shortcut"_s, u"scope"_s};

} // namespace

class tst_CommandEntry : public QObject
{
    Q_OBJECT

private slots:
    void onlyDictionariesAreEntries_data();
    void onlyDictionariesAreEntries();
    void textsAreReadByType_data();
    void textsAreReadByType();
    void handlersAreReadByType_data();
    void handlersAreReadByType();
    void handlersKeepTheirOrder();
};

void tst_CommandEntry::onlyDictionariesAreEntries_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("text") << QVariant(u"script"_s);
    for (const auto &[type, value] : otherTypes) {
        if (value.typeId() != QMetaType::QVariantMap)
            QTest::newRow(type) << value;
    }
}

void tst_CommandEntry::onlyDictionariesAreEntries()
{
    QFETCH(QVariant, value);
    QVERIFY(!CommandEntry::fromVariant(value));
    QVERIFY(CommandEntry::fromVariant(QVariantMap{{u"script"_s, value}}));
    QVERIFY(CommandEntry::fromVariant(QVariant::fromValue(OrderedVariantDictionary{})));
}

void tst_CommandEntry::textsAreReadByType_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<Text>("text");
    QTest::newRow("text") << QVariant(u"some text"_s) << Text(u"some text"_s);
    QTest::newRow("empty text is not nil") << QVariant(u""_s) << Text(u""_s);
    for (const auto &[type, value] : otherTypes)
        QTest::newRow(type) << value << nil;
}

void tst_CommandEntry::textsAreReadByType()
{
    QFETCH(QVariant, value);
    for (const auto &key : textKeys) {
        const auto entry = CommandEntry::fromVariant(QVariantMap{{key, value}});
        for (const auto &other : textKeys) {
            if (other != key)
                QCOMPARE(textUnderKey(*entry, other), nil);
        }
        QTEST(textUnderKey(*entry, key), "text");
        QVERIFY(!entry->handlers);
    }
}

void tst_CommandEntry::handlersAreReadByType_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<bool>("isTable");
    QTest::newRow("text") << QVariant(u"onRun"_s) << false;
    for (const auto &[type, value] : otherTypes)
        QTest::newRow(type) << value << (value.typeId() == QMetaType::QVariantMap);
    QTest::newRow("empty object") << QVariant(QVariantMap()) << true;
}

void tst_CommandEntry::handlersAreReadByType()
{
    QFETCH(QVariant, value);
    QTEST(CommandEntry::fromVariant(QVariantMap{{u"handlers"_s, value}})->handlers.has_value(), "isTable");
}

void tst_CommandEntry::handlersKeepTheirOrder()
{
    const OrderedVariantDictionary actions{{u"Z"_s, u"onZ"_s}, {u"A"_s, u"onA"_s}};
    const OrderedVariantDictionary handlers{
        {u"z"_s, u"1"_s}, {u"actions"_s, QVariant::fromValue(actions)}, {u"a"_s, u"2"_s}};
    const auto entry = CommandEntry::fromVariant(
        QVariant::fromValue(OrderedVariantDictionary{{u"handlers"_s, QVariant::fromValue(handlers)}}));
    QCOMPARE(entry->handlers->handlers, (HandlerTable::Handlers{{u"z"_s, u"1"_s}, {u"a"_s, u"2"_s}}));
    QCOMPARE(entry->handlers->actions, (HandlerTable::Handlers{{u"Z"_s, u"onZ"_s}, {u"A"_s, u"onA"_s}}));
}

QTEST_GUILESS_MAIN(tst_CommandEntry)
#include "tst_commandentry.moc"
