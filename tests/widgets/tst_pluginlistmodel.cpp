#include "widgets/plugins/PluginListModel.h"

#include "PluginsFixture.h"
#include "widgets/plugins/PluginListDelegate.h"
#include "widgets/plugins/PluginUpdatesController.h"

#include <QAbstractItemModelTester>
#include <QListView>
#include <QtTest>

using namespace Qt::StringLiterals;
using Badge = PluginListModel::Badge;

class tst_PluginListModel : public QObject, private PluginsFixture
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void orderOfNames();
    void texts();
    void hostileTexts();
    void iconOfEveryPlugin();
    void switching();
    void reloadKeepsRows();
    void pluginThatComesAndGoes();
    void pluginWithAnotherName();
    void badgesOfUpdates();
    void badgeOfAnIncompatibleOne();
    void badgeOfARunningOne();
    void whatASearchLooksThrough();
    void clickOnTheSwitch();
    void spaceSwitches();
    void managerGoesFirst();

private:
    QStringList names() const;
    QModelIndex row(const QString &identifier) const { return m_model->indexOf(identifier); }
    bool isOn(const QString &identifier) const
    {
        return row(identifier).data(Qt::CheckStateRole).value<Qt::CheckState>() == Qt::Checked;
    }

    std::unique_ptr<PluginUpdatesController> m_updates;
    std::unique_ptr<PluginListModel> m_model;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
};

void tst_PluginListModel::init()
{
    QLocale::setDefault(QLocale(QLocale::English)); // whatever language this machine speaks
    setUp();
    m_updates = std::make_unique<PluginUpdatesController>(*m_manager);
    m_model = std::make_unique<PluginListModel>(*m_manager, m_updates.get());
    m_tester = std::make_unique<QAbstractItemModelTester>(
        m_model.get(), QAbstractItemModelTester::FailureReportingMode::Fatal);
}

void tst_PluginListModel::cleanup()
{
    m_tester.reset();
    m_model.reset();
    m_updates.reset();
    tearDown();
}

QStringList tst_PluginListModel::names() const
{
    QStringList names;
    for (int i = 0; i < m_model->rowCount(); ++i)
        names.append(m_model->index(i).data().toString());
    return names;
}

void tst_PluginListModel::orderOfNames()
{
    install({u"1"_s, u"zebra"_s});
    install({u"2"_s, u"Apple 10"_s});
    install({u"3"_s, u"apple 9"_s});
    QCOMPARE(names(), QStringList({u"apple 9"_s, u"Apple 10"_s, u"zebra"_s}));
}

void tst_PluginListModel::texts()
{
    install({u"a"_s, u"Tidy"_s, u"1.2"_s, {}, "", R"("author": "Ada", )"});
    QCOMPARE(row(u"a"_s).data(PluginListModel::VersionRole).toString(), u"1.2"_s);
    QCOMPARE(row(u"a"_s).data(PluginListModel::AuthorRole).toString(), u"Ada"_s);
    QCOMPARE(row(u"a"_s).data(Qt::AccessibleTextRole).toString(), u"Tidy, Version 1.2, Ada, enabled"_s);
    m_manager->disablePlugin(m_manager->plugins().value(u"a"_s));
    QCOMPARE(row(u"a"_s).data(Qt::AccessibleTextRole).toString(), u"Tidy, Version 1.2, Ada, disabled"_s);
}

void tst_PluginListModel::hostileTexts()
{
    install({u"a"_s, uR"(<b>x</b>\ny\u202e)"_s, u"1.0"_s, {}, "",
        R"("author": "\u0000\t<img src='http://example.com/'>", )"});
    QCOMPARE(row(u"a"_s).data().toString(), u"<b>x</b> y"_s);
    QCOMPARE(row(u"a"_s).data(PluginListModel::AuthorRole).toString(), u"<img src='http://example.com/'>"_s);
    install({u"b"_s, QString(100'000, u'x')});
    QVERIFY(row(u"b"_s).data().toString().size() < 400);
}

void tst_PluginListModel::iconOfEveryPlugin()
{
    install({u"a"_s, u"Tidy"_s});
    QVERIFY(!row(u"a"_s).data(Qt::DecorationRole).value<QIcon>().isNull());
}

void tst_PluginListModel::switching()
{
    install({u"a"_s, u"a"_s});
    QVERIFY(isOn(u"a"_s));
    QVERIFY(m_model->setData(row(u"a"_s), Qt::Unchecked, Qt::CheckStateRole));
    QVERIFY(!isOn(u"a"_s));
    QVERIFY(!m_manager->plugins().value(u"a"_s)->isEnabled());
    QVERIFY(m_model->setData(row(u"a"_s), Qt::Checked, Qt::CheckStateRole));
    QVERIFY(m_manager->plugins().value(u"a"_s)->isEnabled());
    QVERIFY(!m_model->setData(row(u"a"_s), u"other"_s, Qt::DisplayRole));
}

void tst_PluginListModel::reloadKeepsRows()
{
    install({u"a"_s, u"a"_s});
    install({u"b"_s, u"b"_s});
    const QPersistentModelIndex second(row(u"b"_s));
    QSignalSpy resets(m_model.get(), &QAbstractItemModel::modelReset);
    m_manager->reloadPlugins();
    QVERIFY(second.isValid());
    QCOMPARE(second.data(PluginListModel::IdentifierRole).toString(), u"b"_s);
    QCOMPARE(resets.size(), 0);
    QCOMPARE(m_model->plugin(second), m_manager->plugins().value(u"b"_s));
}

void tst_PluginListModel::pluginThatComesAndGoes()
{
    install({u"a"_s, u"a"_s});
    install({u"c"_s, u"c"_s});
    const QPersistentModelIndex last(row(u"c"_s));
    install({u"b"_s, u"b"_s});
    QCOMPARE(names(), QStringList({u"a"_s, u"b"_s, u"c"_s}));
    QCOMPARE(last.row(), 2);
    QVERIFY(QDir(pluginsFolder() + u"/a.korvanplugin"_s).removeRecursively());
    m_manager->reloadPlugins();
    QCOMPARE(names(), QStringList({u"b"_s, u"c"_s}));
    QCOMPARE(last.row(), 1);
}

void tst_PluginListModel::pluginWithAnotherName()
{
    for (const auto &name : {u"a"_s, u"b"_s, u"c"_s})
        install({name, name});
    install({u"a"_s, u"z"_s});
    QCOMPARE(names(), QStringList({u"b"_s, u"c"_s, u"z"_s}));
    install({u"a"_s, u"a"_s});
    QCOMPARE(names(), QStringList({u"a"_s, u"b"_s, u"c"_s}));
}

void tst_PluginListModel::badgesOfUpdates()
{
    installWithUpdate(u"a"_s);
    QCOMPARE(m_model->badges(row(u"a"_s)), QList<Badge>());
    QSignalSpy changes(m_model.get(), &QAbstractItemModel::dataChanged);
    m_updates->check();
    waitUntil([this] { return !m_updates->isChecking(); });
    QCOMPARE(m_model->badges(row(u"a"_s)), QList<Badge>{Badge::UpdateAvailable});
    QVERIFY(changes.size() > 0);
    m_server->setAnswer("/a.zip", Answer::response(200, "broken"));
    m_updates->update(u"a"_s);
    QCOMPARE(m_model->badges(row(u"a"_s)), QList<Badge>{Badge::Updating});
    QCOMPARE(row(u"a"_s).data(PluginListModel::ProgressRole).toDouble(), -1.0);
    waitUntil([this] { return !m_updates->state(u"a"_s).isUnderWay(); });
    QCOMPARE(m_model->badges(row(u"a"_s)), QList<Badge>{Badge::UpdateFailed});
    QVERIFY(!row(u"a"_s).data(PluginListModel::ProgressRole).isValid());
}

void tst_PluginListModel::badgeOfAnIncompatibleOne()
{
    m_state->setIncompatiblePluginVersions(IncompatibleVersions{{u"a"_s, u"1.0"_s}});
    install({u"a"_s, u"a"_s});
    QCOMPARE(m_model->badges(row(u"a"_s)), QList<Badge>{Badge::Incompatible});
    QVERIFY(!isOn(u"a"_s));
}

void tst_PluginListModel::badgeOfARunningOne()
{
    install({u"a"_s, u"a"_s, u"1.0"_s, {}, "function onRun() { setTimeout(() => {}, 1000000) }"});
    m_manager->runHandlerWithKey(u"run"_s, u"run"_s, u"a"_s, {});
    m_environment->queue.runQueued();
    QCOMPARE(m_model->badges(row(u"a"_s)), QList<Badge>{Badge::Running});
    QVERIFY(m_manager->stopCommand({u"a"_s, u"run"_s}));
    QCOMPARE(m_model->badges(row(u"a"_s)), QList<Badge>());
}

void tst_PluginListModel::whatASearchLooksThrough()
{
    install({u"com.example.a"_s, u"Tidy"_s, u"1.0"_s, {}, "", R"("author": "Ada", "description": "Sorts layers", )"});
    const auto text = row(u"com.example.a"_s).data(PluginListModel::SearchRole).toString();
    for (const auto &part : {u"com.example.a"_s, u"Tidy"_s, u"Ada"_s, u"Sorts layers"_s})
        QVERIFY2(text.contains(part), qPrintable(text));
}

void tst_PluginListModel::clickOnTheSwitch()
{
    install({u"a"_s, u"a"_s});
    QListView view;
    view.setModel(m_model.get());
    auto *const delegate = new PluginListDelegate(&view);
    view.setItemDelegate(delegate);
    view.resize(400, 300);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    QStyleOptionViewItem option;
    option.rect = view.visualRect(row(u"a"_s));
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, option.rect.center());
    QVERIFY(isOn(u"a"_s)); // beside the switch
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, PluginListDelegate::switchRect(option).center());
    QVERIFY(!isOn(u"a"_s));
    option.direction = Qt::RightToLeft;
    view.setLayoutDirection(Qt::RightToLeft);
    QVERIFY(PluginListDelegate::switchRect(option).center().x() < option.rect.center().x());
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, PluginListDelegate::switchRect(option).center());
    QVERIFY(isOn(u"a"_s));
}

void tst_PluginListModel::spaceSwitches()
{
    install({u"a"_s, u"a"_s});
    QListView view;
    view.setModel(m_model.get());
    view.setItemDelegate(new PluginListDelegate(&view));
    view.show();
    view.setFocus();
    view.setCurrentIndex(row(u"a"_s));
    QTest::keyClick(&view, Qt::Key_Space);
    QVERIFY(!isOn(u"a"_s));
    QTest::keyClick(&view, Qt::Key_Space);
    QVERIFY(isOn(u"a"_s));
    QCOMPARE(view.currentIndex(), row(u"a"_s));
}

void tst_PluginListModel::managerGoesFirst()
{
    install({u"a"_s, u"a"_s});
    m_updates.reset();
    m_manager.reset();
    QCOMPARE(names(), QStringList{u"a"_s});
    QCOMPARE(m_model->badges(row(u"a"_s)), QList<Badge>());
    QVERIFY(!m_model->setData(row(u"a"_s), Qt::Unchecked, Qt::CheckStateRole));
}

QTEST_MAIN(tst_PluginListModel)
#include "tst_pluginlistmodel.moc"
