#include "widgets/console/RunningCommandsPanel.h"

#include "PluginsFixture.h"

#include <QLabel>
#include <QPushButton>
#include <QtTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class tst_RunningCommandsPanel : public QObject, private PluginsFixture
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void nothingRuns();
    void commandsWithTheirAges();
    void stopping();
    void commandThatEndsByItself();
    void hostileNames();
    void noTimerWhileHidden();
    void managerGoesFirst();

private:
    void run(const QString &identifier, const QByteArray &script = "function onRun() { setTimeout(() => {}, 36e5) }");
    QStringList texts(const QString &objectName) const;
    QString title() const { return m_panel->findChild<QLabel *>(u"RunningCommandsTitle"_s)->text(); }

    std::unique_ptr<RunningCommandsPanel> m_panel;
};

void tst_RunningCommandsPanel::init()
{
    setUp();
    m_panel = std::make_unique<RunningCommandsPanel>(*m_manager);
    m_panel->show();
}

void tst_RunningCommandsPanel::cleanup()
{
    m_panel.reset();
    tearDown();
}

void tst_RunningCommandsPanel::run(const QString &identifier, const QByteArray &script)
{
    install({identifier, u"Plug-in "_s + identifier, u"1.0"_s, {}, script});
    m_manager->runHandlerWithKey(u"run"_s, u"run"_s, identifier, {});
    m_environment->queue.advance(0ms);
}

QStringList tst_RunningCommandsPanel::texts(const QString &objectName) const
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QStringList texts;
    for (auto *const label : m_panel->findChildren<QLabel *>(objectName))
        texts.append(label->text());
    return texts;
}

void tst_RunningCommandsPanel::nothingRuns()
{
    QCOMPARE(title(), u"No commands are running"_s);
    QCOMPARE(texts(u"RunningCommandName"_s), QStringList());
}

void tst_RunningCommandsPanel::commandsWithTheirAges()
{
    run(u"a"_s);
    m_environment->queue.advance(65s);
    run(u"b"_s);
    QCOMPARE(title(), u"Running commands: 2"_s);
    QCOMPARE(texts(u"RunningCommandName"_s), QStringList({u"Run It  ·  Plug-in a"_s, u"Run It  ·  Plug-in b"_s}));
    QCOMPARE(texts(u"RunningCommandAge"_s), QStringList({u"1:05"_s, u"0:00"_s}));
    m_environment->queue.advance(3s);
    QCOMPARE(texts(u"RunningCommandAge"_s), QStringList({u"1:08"_s, u"0:03"_s}));
    m_environment->queue.advance(1h);
    QCOMPARE(texts(u"RunningCommandAge"_s).value(0), QString()); // their hour is over
}

void tst_RunningCommandsPanel::stopping()
{
    run(u"a"_s, "function onTearDown() { print('over') } function onRun() { setTimeout(() => {}, 36e5) }");
    run(u"b"_s);
    auto *const stop = m_panel->findChild<QPushButton *>(u"StopButton"_s);
    QCOMPARE(stop->accessibleName(), u"Stop “Run It”"_s);
    stop->setFocus();
    QTest::keyClick(stop, Qt::Key_Space);
    m_environment->queue.advance(0ms);
    QCOMPARE(texts(u"RunningCommandName"_s), QStringList{u"Run It  ·  Plug-in b"_s});
    QVERIFY(!m_manager->isCommandRunning({u"a"_s, u"run"_s}));
    QVERIFY(m_manager->isCommandRunning({u"b"_s, u"run"_s}));
    QTest::mouseClick(m_panel->findChild<QPushButton *>(u"StopButton"_s), Qt::LeftButton);
    m_environment->queue.advance(0ms);
    QCOMPARE(title(), u"No commands are running"_s);
}

void tst_RunningCommandsPanel::commandThatEndsByItself()
{
    run(u"a"_s, "function onRun() { setTimeout(() => {}, 1500) }");
    QCOMPARE(title(), u"Running commands: 1"_s);
    m_environment->queue.advance(2s);
    QCOMPARE(title(), u"No commands are running"_s);
}

void tst_RunningCommandsPanel::hostileNames()
{
    install({u"a"_s, u"<img src=x>"_s + QString(1000, u'x'), u"1.0"_s, {},
        "function onRun() { setTimeout(() => {}, 36e5) }"});
    m_manager->runHandlerWithKey(u"run"_s, u"run"_s, u"a"_s, {});
    m_environment->queue.advance(0ms);
    auto *const label = m_panel->findChild<QLabel *>(u"RunningCommandName"_s);
    QCOMPARE(label->textFormat(), Qt::PlainText);
    QVERIFY(label->text().size() < 150);
}

void tst_RunningCommandsPanel::noTimerWhileHidden()
{
    const auto before = m_environment->queue.scheduledCount();
    m_panel->hide();
    run(u"a"_s);
    const auto polls = m_environment->queue.scheduledCount();
    m_panel->show();
    QCOMPARE(m_environment->queue.scheduledCount(), polls + 1);
    QCOMPARE(before, std::size_t(0));
}

void tst_RunningCommandsPanel::managerGoesFirst()
{
    run(u"a"_s);
    m_manager.reset();
    m_environment->queue.advance(2s);
    QCOMPARE(title(), u"No commands are running"_s);
}

QTEST_MAIN(tst_RunningCommandsPanel)
#include "tst_runningcommandspanel.moc"
