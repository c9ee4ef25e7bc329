// How an entry of a manifest becomes a command.

#include "commands/KRPluginCommand.h"
#include "platform/FileURL.h"
#include "support/BundleBuilder.h"
#include "support/NilableText.h"
#include "support/TestEnvironment.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class tst_KRPluginCommand_Entry : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void scriptAloneGivesAllDefaults();
    void nameAndIdentifier_data();
    void nameAndIdentifier();
    void scope_data();
    void scope();
    void shortcut_data();
    void shortcut();
    void handlersWithoutRun();
    void noCommandAndNoMessage_data();
    void noCommandAndNoMessage();
    void unreadableScriptIsReported();
    void commandsOfOneFileShareItsScript();
    void scriptsOfOtherFoldersAreOthers();
    void unreadableScriptIsTriedAgain();

private:
    std::shared_ptr<KRPluginCommand> command(const QVariant &entry)
    {
        return KRPluginCommand::commandWithJSON(entry, m_scripts, scriptsURL());
    }
    QString path(const QString &name) const { return m_environment->path(u"Scripts/"_s + name); }
    QUrl scriptsURL() const { return fileURLFromPath(m_environment->path(u"Scripts"_s), FileKind::Folder); }
    QString cacheKey(const QString &name) const { return path(name).toLower(); }

    std::unique_ptr<TestEnvironment> m_environment;
    ScriptCache m_scripts;
};

void tst_KRPluginCommand_Entry::init()
{
    m_environment = std::make_unique<TestEnvironment>();
    m_scripts.clear();
    writeFile(path(u"a.js"_s), "function onRun() {}");
}

void tst_KRPluginCommand_Entry::cleanup()
{
    m_environment.reset();
}

void tst_KRPluginCommand_Entry::scriptAloneGivesAllDefaults()
{
    writeFile(path(u"Tools/Export.js"_s), "0");
    const auto made = command(QVariantMap{{u"script"_s, u"Tools/Export.js"_s}});
    QCOMPARE(made->name(), Text(u"Export"_s));
    QCOMPARE(made->identifier(), Text(u"export"_s));
    QVERIFY(made->handlers()
        == (HandlerIndex{{u"run"_s, u"onRun"_s}, {u"setUp"_s, u"onSetUp"_s}, {u"tearDown"_s, u"onTearDown"_s}}));
    QCOMPARE(made->scope(), KRPluginCommand::Scope::Document);
    QCOMPARE(made->shortcut(), nil);
    QCOMPARE(made->script()->URL(), fileURLFromPath(path(u"Tools/Export.js"_s), FileKind::File));
    QCOMPARE(made->script()->script(), Text(u"0"_s));
    QCOMPARE(made->pluginBundle(), nullptr);
    QVERIFY(!made->disableCocoaScriptPreprocessor());
    QVERIFY(made->hasNeverRun());
    QCOMPARE(m_environment->systemLogLines, QStringList());
}

void tst_KRPluginCommand_Entry::nameAndIdentifier_data()
{
    QTest::addColumn<QVariantMap>("entry");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("identifier");

    QTest::newRow("neither") << QVariantMap{} << u"a"_s << u"a"_s;
    QTest::newRow("name") << QVariantMap{{u"name"_s, u"Sort ÄÖ"_s}} << u"Sort ÄÖ"_s << u"sort äö"_s;
    QTest::newRow("identifier keeps its case") << QVariantMap{{u"identifier"_s, u"Sort"_s}} << u"a"_s << u"Sort"_s;
    QTest::newRow("both") << QVariantMap{{u"name"_s, u"N"_s}, {u"identifier"_s, u"I"_s}} << u"N"_s << u"I"_s;
    QTest::newRow("empty name is a name") << QVariantMap{{u"name"_s, u""_s}} << u""_s << u""_s;
    QTest::newRow("empty identifier is an identifier")
        << QVariantMap{{u"name"_s, u"N"_s}, {u"identifier"_s, u""_s}} << u"N"_s << u""_s;
    QTest::newRow("name of another type") << QVariantMap{{u"name"_s, 5}} << u"a"_s << u"a"_s;
    QTest::newRow("identifier of another type")
        << QVariantMap{{u"name"_s, u"N"_s}, {u"identifier"_s, true}} << u"N"_s << u"n"_s;
}

void tst_KRPluginCommand_Entry::nameAndIdentifier()
{
    QFETCH(QVariantMap, entry);
    QFETCH(QString, name);
    QFETCH(QString, identifier);
    entry.insert(u"script"_s, u"a.js"_s);
    const auto made = command(entry);
    QCOMPARE(made->name(), Text(name));
    QCOMPARE(made->identifier(), Text(identifier));
}

void tst_KRPluginCommand_Entry::scope_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("scope");

    QTest::newRow("application") << QVariant(u"application"_s) << 1;
    QTest::newRow("document") << QVariant(u"document"_s) << 0;
    QTest::newRow("another case") << QVariant(u"Application"_s) << 0;
    QTest::newRow("blank behind") << QVariant(u"application "_s) << 0;
    QTest::newRow("anything else") << QVariant(u"window"_s) << 0;
    QTest::newRow("empty") << QVariant(u""_s) << 0;
    QTest::newRow("number") << QVariant(1) << 0;
}

void tst_KRPluginCommand_Entry::scope()
{
    QFETCH(QVariant, value);
    const auto made = command(QVariantMap{{u"script"_s, u"a.js"_s}, {u"scope"_s, value}});
    QTEST(int(made->scope()), "scope");
}

void tst_KRPluginCommand_Entry::shortcut_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<Text>("shortcut");
    QTest::addColumn<QString>("key");
    QTest::addColumn<unsigned>("modifiers");

    QTest::newRow("text") << QVariant(u"cmd shift K"_s) << Text(u"cmd shift K"_s) << u"k"_s << 0x120000U;
    QTest::newRow("empty is not nil") << QVariant(u""_s) << Text(u""_s) << u""_s << 0U;
    QTest::newRow("absent") << QVariant() << nil << u""_s << 0U;
    QTest::newRow("another type") << QVariant(7) << nil << u""_s << 0U;
}

void tst_KRPluginCommand_Entry::shortcut()
{
    QFETCH(QVariant, value);
    const auto made = command(QVariantMap{{u"script"_s, u"a.js"_s}, {u"shortcut"_s, value}});
    QTEST(made->shortcut(), "shortcut");
    QTEST(made->shortcutKey(), "key");
    QTEST(made->shortcutModifiers(), "modifiers");
}

void tst_KRPluginCommand_Entry::handlersWithoutRun()
{
    const auto made = command(QVariantMap{
        {u"script"_s, u"a.js"_s},
        {u"handlers"_s, QVariantMap{{u"setUp"_s, u"prepare"_s}}},
        {u"handler"_s, u"onRun"_s},
    });
    QVERIFY(made->handlers() == (HandlerIndex{{u"setUp"_s, u"prepare"_s}, {u"tearDown"_s, u"onTearDown"_s}}));
    QVERIFY(!made->hasRunHandler());
    QVERIFY(!made->canAppearInMenuBar());
}

void tst_KRPluginCommand_Entry::noCommandAndNoMessage_data()
{
    QTest::addColumn<QVariant>("entry");

    QTest::newRow("no dictionary") << QVariant(u"a.js"_s);
    QTest::newRow("array") << QVariant(QVariantList{u"a.js"_s});
    QTest::newRow("nil") << QVariant();
    QTest::newRow("empty dictionary") << QVariant(QVariantMap());
    QTest::newRow("no script") << QVariant(QVariantMap{{u"name"_s, u"N"_s}});
    QTest::newRow("script of another type") << QVariant(QVariantMap{{u"script"_s, 5}});
    QTest::newRow("script null") << QVariant(QVariantMap{{u"script"_s, QVariant::fromValue(nullptr)}});
}

void tst_KRPluginCommand_Entry::noCommandAndNoMessage()
{
    QFETCH(QVariant, entry);
    RecordingLogTarget target;
    m_environment->target = &target;
    QCOMPARE(command(entry), nullptr);
    QCOMPARE(m_environment->systemLogLines, QStringList());
    QVERIFY(target.entries.isEmpty());
    QVERIFY(m_scripts.empty());
}

void tst_KRPluginCommand_Entry::unreadableScriptIsReported()
{
    RecordingLogTarget target;
    m_environment->target = &target;
    QCOMPARE(command(QVariantMap{{u"script"_s, u"no such %1.js"_s}}), nullptr);
    const auto url = fileURLFromPath(path(u"no such %1.js"_s), FileKind::File);
    QCOMPARE(m_environment->systemLogLines,
        QStringList{u"Failed to load script at URL %1, error: No such file or directory"_s.arg(absoluteString(url))});
    QVERIFY(target.entries.isEmpty()); // this one goes to the system log, whoever listens
    QVERIFY(m_scripts.empty());
}

void tst_KRPluginCommand_Entry::commandsOfOneFileShareItsScript()
{
    const auto first = command(QVariantMap{{u"script"_s, u"a.js"_s}});
    const auto second = command(QVariantMap{{u"script"_s, u"a.js"_s}, {u"name"_s, u"Second"_s}});
    QCOMPARE(second->script(), first->script());
    // Also where the file system would tell the names apart.
    writeFile(path(u"A.js"_s), "another");
    const auto upper = command(QVariantMap{{u"script"_s, u"A.js"_s}});
    QCOMPARE(upper->script(), first->script());
    QCOMPARE(upper->name(), Text(u"A"_s));

    QCOMPARE(m_scripts.size(), std::size_t(1));
    QCOMPARE(m_scripts.at(cacheKey(u"a.js"_s)), first->script());
}

void tst_KRPluginCommand_Entry::scriptsOfOtherFoldersAreOthers()
{
    writeFile(m_environment->path(u"Others/a.js"_s), "other");
    const auto first = command(QVariantMap{{u"script"_s, u"a.js"_s}});
    const auto others = fileURLFromPath(m_environment->path(u"Others"_s), FileKind::Folder);
    const auto second = KRPluginCommand::commandWithJSON(QVariantMap{{u"script"_s, u"a.js"_s}}, m_scripts, others);
    QCOMPARE(first->script()->script(), Text(u"function onRun() {}"_s));
    QCOMPARE(second->script()->script(), Text(u"other"_s));
}

void tst_KRPluginCommand_Entry::unreadableScriptIsTriedAgain()
{
    const QVariantMap entry{{u"script"_s, u"late.js"_s}};
    QCOMPARE(command(entry), nullptr);
    QCOMPARE(command(entry), nullptr);
    QCOMPARE(m_environment->systemLogLines.size(), 2);
    writeFile(path(u"late.js"_s), "0");
    QVERIFY(command(entry));
    QCOMPARE(m_environment->systemLogLines.size(), 2);
}

QTEST_GUILESS_MAIN(tst_KRPluginCommand_Entry)
#include "tst_krplugincommand_entry.moc"
