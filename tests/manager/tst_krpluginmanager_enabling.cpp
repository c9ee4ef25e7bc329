// What the user, the host and the list of incompatible versions decide about plug-ins.

#include "manager/KRPluginManager.h"
#include "support/BundleBuilder.h"
#include "support/TestEnvironment.h"

#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

const auto countKey = u"KRPluginManagerNumberOfIncompatiblePluginsDisabled"_s;

QStringList identifiersOf(const QList<std::shared_ptr<KRPluginBundle>> &bundles)
{
    QStringList identifiers;
    for (const auto &bundle : bundles)
        identifiers.append(bundle->identifier().value_or(u"nil"_s));
    return identifiers;
}

} // namespace

class tst_KRPluginManager_Enabling : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void disablingIsKept();
    void enablingIsKept();
    void reloadSeesWhatAnotherProgramHasChanged();
    void oneNotificationAfterTheReload();
    void allOffWhateverIsKept();
    void enablingOneWhileAllAreOff();
    void everyPluginOfAResetIsAReload();
    void pluginThatIsGoneMeanwhile();
    void withoutAStateStore();
    void noPluginAtAll();
    void insistenceOnAnIncompatiblePlugin();
    void incompatiblePluginsWithoutAList();
    void incompatiblePlugins();
    void countOfNewlyIncompatible();
    void countWithoutChangesStays();
    void countNeverExceedsWhatIsInstalled();
    void countIsTheHostsToLower();
    void countOfPluginsThatTheUserHadDisabled();
    void registeringDoesNotReload();
    void countIsReadAtCreation();
    void hostileCount_data();
    void hostileCount();

private:
    void plugin(const QString &name, const QByteArray &version = "1.0")
    {
        BundleBuilder(m_environment->path(u"Plugins"_s), name)
            .manifest("{\"identifier\": \"" + name.toUtf8() + "\", \"version\": \"" + version + "\"}");
    }
    std::unique_ptr<KRPluginManager> makeManager()
    {
        auto manager = std::make_unique<KRPluginManager>(
            QList<QUrl>{QUrl::fromLocalFile(m_environment->path(u"Plugins/"_s))}, nullptr, m_state);
        manager->reloadPlugins();
        return manager;
    }
    void observe(const KRPluginManager &manager)
    {
        for (const auto &name :
            {KRPluginManagerDidReloadPluginsNotification, KRPluginManagerPluginDidChangeEnabledStateNotification}) {
            m_observers.push_back(m_environment->notificationCenter().addObserver(
                name, &manager, [this](const Notification &notification) { m_posted.append(notification.name); }));
        }
    }

    std::unique_ptr<TestEnvironment> m_environment;
    std::shared_ptr<KRPluginManagingState> m_state;
    std::vector<NotificationObserver> m_observers;
    QStringList m_posted;
};

void tst_KRPluginManager_Enabling::init()
{
    m_environment = std::make_unique<TestEnvironment>();
    m_state = std::make_shared<KRPluginManagingState>(QUrl::fromLocalFile(m_environment->path(u"state.plist"_s)));
    m_posted.clear();
    for (const auto *const name : {"a", "b", "c"})
        plugin(QLatin1String(name));
}

void tst_KRPluginManager_Enabling::cleanup()
{
    m_observers.clear();
    m_state.reset();
    m_environment.reset();
}

void tst_KRPluginManager_Enabling::disablingIsKept()
{
    const auto manager = makeManager();
    manager->disablePlugin(manager->plugins().value(u"b"_s));
    QCOMPARE(identifiersOf(manager->enabledPlugins()), QStringList({u"a"_s, u"c"_s}));
    QCOMPARE(identifiersOf(manager->disabledPlugins()), QStringList{u"b"_s});
    QCOMPARE(m_state->metadata(), std::optional(QVariantMap{{u"b"_s, QVariantMap{{u"disabled"_s, true}}}}));
    QCOMPARE(identifiersOf(makeManager()->disabledPlugins()), QStringList{u"b"_s});
}

void tst_KRPluginManager_Enabling::enablingIsKept()
{
    const auto manager = makeManager();
    manager->disablePlugin(manager->plugins().value(u"b"_s));
    manager->enablePlugin(manager->plugins().value(u"b"_s));
    QCOMPARE(identifiersOf(manager->enabledPlugins()), QStringList({u"a"_s, u"b"_s, u"c"_s}));
    QCOMPARE(m_state->metadata(), std::optional(QVariantMap()));
}

void tst_KRPluginManager_Enabling::reloadSeesWhatAnotherProgramHasChanged()
{
    plugin(u"a"_s);
    const auto manager = makeManager();
    QVERIFY(manager->plugins()[u"a"_s]->isEnabled());
    KRPluginManagingState(m_state->metadataURL()).setEnabled(false, u"a"_s, u"1.0"_s);
    manager->reloadPlugins();
    QVERIFY(!manager->plugins()[u"a"_s]->isEnabled());
}

void tst_KRPluginManager_Enabling::oneNotificationAfterTheReload()
{
    const auto manager = makeManager();
    observe(*manager);
    manager->disablePlugin(manager->plugins().value(u"b"_s));
    const QStringList once{
        u"KRPluginManagerDidReloadPluginsNotification"_s, u"KRPluginManagerPluginDidChangeEnabledStateNotification"_s};
    QCOMPARE(m_posted, once);
    manager->enablePlugin(manager->plugins().value(u"b"_s));
    QCOMPARE(m_posted, once + once);
}

void tst_KRPluginManager_Enabling::allOffWhateverIsKept()
{
    const auto manager = makeManager();
    manager->disablePlugin(manager->plugins().value(u"b"_s));
    manager->setDisableAllPlugins(true);
    manager->reloadPlugins();
    QCOMPARE(identifiersOf(manager->disabledPlugins()), QStringList({u"a"_s, u"b"_s, u"c"_s}));
    QVERIFY(!manager->shouldEnablePluginIdentifier(u"unknown"_s, u"1.0"_s));
    manager->setDisableAllPlugins(false);
    manager->reloadPlugins();
    QCOMPARE(identifiersOf(manager->disabledPlugins()), QStringList{u"b"_s});
}

void tst_KRPluginManager_Enabling::enablingOneWhileAllAreOff()
{
    const auto manager = makeManager();
    manager->setDisableAllPlugins(true);
    manager->reloadPlugins();
    observe(*manager);

    manager->enablePlugin(manager->plugins().value(u"b"_s));

    QVERIFY(!manager->disableAllPlugins());
    QCOMPARE(identifiersOf(manager->enabledPlugins()), QStringList{u"b"_s});
    const QVariantMap disabled{{u"disabled"_s, true}};
    QCOMPARE(m_state->metadata(), std::optional(QVariantMap{{u"a"_s, disabled}, {u"c"_s, disabled}}));
    QCOMPARE(m_posted.count(u"KRPluginManagerPluginDidChangeEnabledStateNotification"_s), 4);
}

void tst_KRPluginManager_Enabling::everyPluginOfAResetIsAReload()
{
    const auto manager = makeManager();
    observe(*manager);
    manager->resetAllPluginMetadataToBeDisabled();
    QCOMPARE(identifiersOf(manager->disabledPlugins()), QStringList({u"a"_s, u"b"_s, u"c"_s}));
    QCOMPARE(m_posted.count(u"KRPluginManagerDidReloadPluginsNotification"_s), 3);
    QCOMPARE(m_posted.count(u"KRPluginManagerPluginDidChangeEnabledStateNotification"_s), 3);
}

void tst_KRPluginManager_Enabling::pluginThatIsGoneMeanwhile()
{
    const auto manager = makeManager();
    const auto removed = manager->plugins().value(u"b"_s);
    QVERIFY(QDir(removed->url().toLocalFile()).removeRecursively());
    manager->resetAllPluginMetadataToBeDisabled();
    QCOMPARE(identifiersOf(manager->disabledPlugins()), QStringList({u"a"_s, u"c"_s}));
    QCOMPARE(m_state->metadata()->keys(), QStringList({u"a"_s, u"c"_s}));
}

void tst_KRPluginManager_Enabling::withoutAStateStore()
{
    m_state.reset();
    const auto manager = makeManager();
    observe(*manager);
    manager->disablePlugin(manager->plugins().value(u"b"_s));
    QCOMPARE(identifiersOf(manager->enabledPlugins()), QStringList({u"a"_s, u"b"_s, u"c"_s}));
    QCOMPARE(m_posted.size(), 2);
    QVERIFY(!manager->isPluginWithIdentifier(u"a"_s, u"1.0"_s));
    manager->registerIncompatiblePlugins();
    QCOMPARE(manager->numberOfIncompatiblePluginsDisabled(), 0);
}

void tst_KRPluginManager_Enabling::noPluginAtAll()
{
    const auto manager = makeManager();
    observe(*manager);
    manager->disablePlugin(nullptr);
    manager->enablePlugin(nullptr);
    QVERIFY(!manager->isIncompatiblePlugin(nullptr));
    QCOMPARE(m_posted.size(), 4);
    QVERIFY(!m_state->metadata());
}

void tst_KRPluginManager_Enabling::insistenceOnAnIncompatiblePlugin()
{
    m_state->setIncompatiblePluginVersions(IncompatibleVersions{{u"a"_s, u"1.5"_s}});
    const auto manager = makeManager();
    QCOMPARE(identifiersOf(manager->disabledPlugins()), QStringList{u"a"_s});

    manager->enablePlugin(manager->plugins().value(u"a"_s));
    manager->reloadPlugins();
    QCOMPARE(manager->disabledPlugins().size(), 0);
    QCOMPARE(manager->incompatiblePlugins(), QStringList{u"a"_s});

    plugin(u"a"_s, "1.6"); // it leaves the list
    manager->reloadPlugins();
    QCOMPARE(manager->disabledPlugins().size(), 0);
    QVERIFY(!m_state->metadataValueForKey(u"IncompatibleDisableOverridden"_s, u"a"_s).isValid());
    m_state->setIncompatiblePluginVersions(IncompatibleVersions{{u"a"_s, u"1.6"_s}});
    manager->reloadPlugins();
    QCOMPARE(identifiersOf(manager->disabledPlugins()), QStringList{u"a"_s});
}

void tst_KRPluginManager_Enabling::incompatiblePluginsWithoutAList()
{
    QCOMPARE(makeManager()->incompatiblePlugins(), QStringList());
}

void tst_KRPluginManager_Enabling::incompatiblePlugins()
{
    m_state->setIncompatiblePluginVersions(
        IncompatibleVersions{{u"a"_s, u"1.0"_s}, {u"b"_s, u"0.9"_s}, {u"c"_s, u"2"_s}, {u"missing"_s, u"9"_s}});
    const auto manager = makeManager();
    QCOMPARE(manager->incompatiblePlugins(), QStringList({u"a"_s, u"c"_s}));
    QVERIFY(manager->isIncompatiblePlugin(manager->plugins().value(u"a"_s)));
    QVERIFY(!manager->isIncompatiblePlugin(manager->plugins().value(u"b"_s)));
}

void tst_KRPluginManager_Enabling::countOfNewlyIncompatible()
{
    const auto manager = makeManager();
    m_state->setIncompatiblePluginVersions(IncompatibleVersions{{u"a"_s, u"1.0"_s}});
    manager->registerIncompatiblePlugins();
    QCOMPARE(manager->numberOfIncompatiblePluginsDisabled(), 1);
    QCOMPARE(m_environment->userDefaults().integerForKey(countKey), 1);
    m_state->setIncompatiblePluginVersions(IncompatibleVersions{{u"a"_s, u"1.0"_s}, {u"b"_s, u"1.0"_s}});
    manager->registerIncompatiblePlugins();
    QCOMPARE(manager->numberOfIncompatiblePluginsDisabled(), 2);
}

void tst_KRPluginManager_Enabling::countWithoutChangesStays()
{
    m_state->setIncompatiblePluginVersions(IncompatibleVersions{{u"a"_s, u"1.0"_s}});
    const auto manager = makeManager();
    manager->registerIncompatiblePlugins();
    manager->registerIncompatiblePlugins();
    QCOMPARE(manager->numberOfIncompatiblePluginsDisabled(), 1);
}

void tst_KRPluginManager_Enabling::countNeverExceedsWhatIsInstalled()
{
    m_state->setIncompatiblePluginVersions(IncompatibleVersions{{u"a"_s, u"1.0"_s}});
    const auto manager = makeManager();
    manager->setNumberOfIncompatiblePluginsDisabled(5);
    manager->registerIncompatiblePlugins();
    QCOMPARE(manager->numberOfIncompatiblePluginsDisabled(), 1);
    m_state->setIncompatiblePluginVersions(std::nullopt);
    manager->registerIncompatiblePlugins();
    QCOMPARE(manager->numberOfIncompatiblePluginsDisabled(), 0);
}

void tst_KRPluginManager_Enabling::countIsTheHostsToLower()
{
    m_state->setIncompatiblePluginVersions(IncompatibleVersions{{u"a"_s, u"1.0"_s}});
    const auto manager = makeManager();
    manager->registerIncompatiblePlugins();
    manager->setNumberOfIncompatiblePluginsDisabled(0);
    QCOMPARE(m_environment->userDefaults().integerForKey(countKey), 0);
    manager->registerIncompatiblePlugins();
    QCOMPARE(manager->numberOfIncompatiblePluginsDisabled(), 0);
}

void tst_KRPluginManager_Enabling::countOfPluginsThatTheUserHadDisabled()
{
    const auto manager = makeManager();
    manager->disablePlugin(manager->plugins().value(u"a"_s));
    m_state->setIncompatiblePluginVersions(IncompatibleVersions{{u"a"_s, u"1.0"_s}});
    manager->registerIncompatiblePlugins();
    QCOMPARE(manager->numberOfIncompatiblePluginsDisabled(), 0);
}

void tst_KRPluginManager_Enabling::registeringDoesNotReload()
{
    const auto manager = makeManager();
    observe(*manager);
    m_state->setIncompatiblePluginVersions(IncompatibleVersions{{u"a"_s, u"1.0"_s}});
    manager->registerIncompatiblePlugins();
    QCOMPARE(m_posted, QStringList());
    QVERIFY(manager->plugins().value(u"a"_s)->isEnabled());
    manager->reloadPlugins();
    QVERIFY(!manager->plugins().value(u"a"_s)->isEnabled());
}

void tst_KRPluginManager_Enabling::countIsReadAtCreation()
{
    m_environment->userDefaults().setValue(countKey, 7);
    QCOMPARE(makeManager()->numberOfIncompatiblePluginsDisabled(), 7);
}

void tst_KRPluginManager_Enabling::hostileCount_data()
{
    QTest::addColumn<qint64>("count");

    QTest::newRow("negative") << qint64(-1);
    QTest::newRow("smallest") << std::numeric_limits<qint64>::min();
    QTest::newRow("largest") << std::numeric_limits<qint64>::max();
}

void tst_KRPluginManager_Enabling::hostileCount()
{
    QFETCH(qint64, count);
    const auto manager = makeManager();
    manager->setNumberOfIncompatiblePluginsDisabled(count);
    m_state->setIncompatiblePluginVersions(IncompatibleVersions{{u"a"_s, u"1.0"_s}, {u"b"_s, u"1.0"_s}});
    manager->registerIncompatiblePlugins();
    QVERIFY(manager->numberOfIncompatiblePluginsDisabled() >= 0);
    QVERIFY(manager->numberOfIncompatiblePluginsDisabled() <= 2);
}

QTEST_GUILESS_MAIN(tst_KRPluginManager_Enabling)
#include "tst_krpluginmanager_enabling.moc"
