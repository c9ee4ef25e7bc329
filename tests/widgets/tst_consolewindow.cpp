#include "widgets/console/ConsoleWindow.h"

#include "PluginsFixture.h"
#include "UrlRecorder.h"
#include "widgets/console/ConsoleLog.h"

#include <QClipboard>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTableView>
#include <QToolButton>
#include <QtTest>

using namespace Qt::StringLiterals;

class tst_ConsoleWindow : public QObject, private PluginsFixture
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void entriesAsTheyCome();
    void staysAtTheEnd();
    void staysWhereTheUserReads();
    void filterByPlugin();
    void filterByLevel();
    void searching();
    void selectionOutlivesFilters();
    void selectedEntryInFull();
    void copying();
    void clearing();
    void placeIsForTheHost();
    void placeOpensScripts();
    void placeOpensNoPrograms();
    void placeByKeyboard();
    void openedAfterTheEntries();
    void everythingHasANameAndAPlaceInTheTabOrder();

private:
    void log(const QString &text, const QString &level = u"log"_s);
    void logError(const QString &file, int line);
    void show();
    QTableView *table() const { return m_window->findChild<QTableView *>(u"ConsoleTable"_s); }
    QString shown(int row, int column) const { return table()->model()->index(row, column).data().toString(); }
    void clickPlace(int row);

    std::shared_ptr<ConsoleLog> m_log;
    std::unique_ptr<ConsoleWindow> m_window;
};

void tst_ConsoleWindow::init()
{
    setUp();
    m_log = std::make_shared<ConsoleLog>();
    m_window = std::make_unique<ConsoleWindow>(m_log, m_manager.get());
    install({u"com.example.a"_s, u"Tidy"_s});
}

void tst_ConsoleWindow::cleanup()
{
    m_window.reset();
    m_log.reset();
    tearDown();
}

/// As the command of the plug-in logs.
void tst_ConsoleWindow::log(const QString &text, const QString &level)
{
    const auto command = m_manager->commandWithSpecifier({u"com.example.a"_s, u"run"_s});
    m_log->log({{u"command"_s, QVariant::fromValue(WeakScriptObjectPointer(command))}, {u"stringValue"_s, text},
                   {u"level"_s, level}},
        u"run"_s);
    m_environment->queue.advance(LogModel::frame);
}

void tst_ConsoleWindow::logError(const QString &file, int line)
{
    log(u"TypeError: x\n    at onRun (%1:%2:1)"_s.arg(file).arg(line), u"error"_s);
}

void tst_ConsoleWindow::show()
{
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void tst_ConsoleWindow::clickPlace(int row)
{
    const auto rect = table()->visualRect(table()->model()->index(row, LogModel::PlaceColumn));
    QTest::mouseClick(table()->viewport(), Qt::LeftButton, {}, rect.center());
}

void tst_ConsoleWindow::entriesAsTheyCome()
{
    show();
    log(u"one"_s);
    log(u"two"_s, u"error"_s);
    QCOMPARE(table()->model()->rowCount(), 2);
    QCOMPARE(shown(1, LogModel::PluginColumn), u"Tidy"_s);
    QCOMPARE(shown(1, LogModel::MessageColumn), u"two"_s);
}

void tst_ConsoleWindow::staysAtTheEnd()
{
    show();
    for (int i = 0; i < 100; ++i)
        log(QString::number(i));
    const auto *const bar = table()->verticalScrollBar();
    QVERIFY(bar->maximum() > 0);
    QCOMPARE(bar->value(), bar->maximum());
}

void tst_ConsoleWindow::staysWhereTheUserReads()
{
    m_log = std::make_shared<ConsoleLog>(200);
    m_window = std::make_unique<ConsoleWindow>(m_log);
    show();
    for (int i = 0; i < 200; ++i)
        log(QString::number(i));
    auto *const bar = table()->verticalScrollBar();
    bar->setValue(bar->maximum() / 2);
    const auto firstShown = [this] { return table()->indexAt({1, 1}).siblingAtColumn(LogModel::MessageColumn).data(); };
    const auto before = firstShown();
    for (int i = 0; i < 20; ++i)
        log(u"later"_s); // for each of them an old one goes
    QCOMPARE(firstShown(), before);
    bar->setValue(bar->maximum());
    log(u"last"_s);
    QCOMPARE(bar->value(), bar->maximum());
}

void tst_ConsoleWindow::filterByPlugin()
{
    log(u"of the plug-in"_s);
    m_log->log({{u"stringValue"_s, u"of the framework"_s}}, u"__plugin-loader"_s);
    m_environment->queue.advance(LogModel::frame);
    auto *const plugins = m_window->findChild<QComboBox *>(u"PluginFilter"_s);
    QCOMPARE(plugins->count(), 3);
    QCOMPARE(plugins->itemText(1), u"Application"_s);
    QCOMPARE(plugins->itemText(2), u"Tidy"_s);
    QTest::keyClick(plugins, Qt::Key_End);
    QCOMPARE(table()->model()->rowCount(), 1);
    QCOMPARE(shown(0, LogModel::MessageColumn), u"of the plug-in"_s);
    m_window->showPlugin(QString());
    QCOMPARE(table()->model()->rowCount(), 2);
    m_window->showPlugin(u"com.example.a"_s);
    QCOMPARE(plugins->currentText(), u"Tidy"_s);
}

void tst_ConsoleWindow::filterByLevel()
{
    log(u"message"_s);
    log(u"careful"_s, u"warn"_s);
    log(u"wrong"_s, u"error"_s);
    auto *const levels = m_window->findChild<QComboBox *>(u"LevelFilter"_s);
    QTest::keyClick(levels, Qt::Key_Down);
    QCOMPARE(table()->model()->rowCount(), 2);
    QTest::keyClick(levels, Qt::Key_Down);
    QCOMPARE(table()->model()->rowCount(), 1);
    QCOMPARE(shown(0, LogModel::MessageColumn), u"wrong"_s);
}

void tst_ConsoleWindow::searching()
{
    show();
    log(u"apple"_s);
    log(u"pear"_s);
    QTest::keyClick(m_window.get(), Qt::Key_F, Qt::ControlModifier);
    auto *const search = m_window->findChild<QLineEdit *>(u"ConsoleSearch"_s);
    QVERIFY(search->hasFocus());
    QTest::keyClicks(search, u"PEA"_s);
    QCOMPARE(table()->model()->rowCount(), 1);
    QCOMPARE(shown(0, LogModel::MessageColumn), u"pear"_s);
}

void tst_ConsoleWindow::selectionOutlivesFilters()
{
    show();
    for (const auto &text : {u"apple"_s, u"pear"_s, u"peach"_s})
        log(text);
    const auto *const detail = m_window->findChild<QPlainTextEdit *>(u"EntryDetail"_s);
    auto *const search = m_window->findChild<QLineEdit *>(u"ConsoleSearch"_s);
    table()->selectRow(2);
    search->setText(u"pea"_s);
    QCOMPARE(table()->currentIndex().row(), 1);
    QVERIFY(table()->selectionModel()->isRowSelected(1));
    QCOMPARE(detail->toPlainText(), u"peach"_s);
    search->setText(u"pear"_s); // which hides it
    QVERIFY(!table()->currentIndex().isValid());
    QVERIFY(!table()->selectionModel()->hasSelection());
    QVERIFY(!detail->isVisible());
    search->clear();
    QCOMPARE(table()->model()->rowCount(), 3);
    QCOMPARE(table()->verticalHeader()->count(), 3);
}

void tst_ConsoleWindow::selectedEntryInFull()
{
    show();
    auto *const detail = m_window->findChild<QPlainTextEdit *>(u"EntryDetail"_s);
    QVERIFY(!detail->isVisible());
    log(u"first\n<b>second</b>"_s);
    table()->selectRow(0);
    QVERIFY(detail->isVisible());
    QCOMPARE(detail->toPlainText(), u"first\n<b>second</b>"_s);
}

void tst_ConsoleWindow::copying()
{
    show();
    log(u"one\nmore"_s);
    log(u"two"_s);
    log(u"three"_s);
    table()->setFocus();
    QTest::keyClick(table(), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), u"one\nmore\ntwo\nthree"_s);
    table()->selectRow(1);
    QTest::keyClick(table(), Qt::Key_Up, Qt::ShiftModifier);
    QTest::keyClick(table(), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), u"one\nmore\ntwo"_s);
}

void tst_ConsoleWindow::clearing()
{
    show();
    log(u"one"_s);
    table()->selectRow(0);
    QTest::keyClick(m_window.get(), Qt::Key_L, Qt::ControlModifier);
    QCOMPARE(table()->model()->rowCount(), 0);
    QVERIFY(!m_window->findChild<QPlainTextEdit *>(u"EntryDetail"_s)->isVisible());
}

void tst_ConsoleWindow::placeIsForTheHost()
{
    UrlRecorder opened({u"file"_s});
    QSignalSpy places(m_window.get(), &ConsoleWindow::locationActivated);
    show();
    logError(u"Contents/Korvan/script.js"_s, 7);
    QCOMPARE(shown(0, LogModel::PlaceColumn), u"script.js:7"_s);
    clickPlace(0);
    QCOMPARE(places.size(), 1);
    QCOMPARE(places.first().first().toUrl().fileName(), u"script.js"_s);
    QCOMPARE(places.first().last().toInt(), 7);
    QCOMPARE(opened.urls, QList<QUrl>());
}

void tst_ConsoleWindow::placeOpensScripts()
{
    UrlRecorder opened({u"file"_s});
    show();
    log(u"no place"_s);
    logError(u"Contents/Korvan/script.js"_s, 7);
    clickPlace(0);
    QCOMPARE(opened.urls, QList<QUrl>());
    clickPlace(1);
    QCOMPARE(opened.urls.size(), 1);
    QCOMPARE(opened.urls.first().fileName(), u"script.js"_s);
}

void tst_ConsoleWindow::placeOpensNoPrograms()
{
    UrlRecorder opened({u"file"_s});
    writeFile(pluginsFolder() + u"/com.example.a.korvanplugin/Contents/Korvan/run.desktop"_s, "x");
    show();
    logError(u"Contents/Korvan/run.desktop"_s, 1);
    QCOMPARE(shown(0, LogModel::PlaceColumn), u"run.desktop:1"_s);
    clickPlace(0);
    QCOMPARE(opened.urls, QList<QUrl>());
}

void tst_ConsoleWindow::placeByKeyboard()
{
    QSignalSpy places(m_window.get(), &ConsoleWindow::locationActivated);
    show();
    logError(u"Contents/Korvan/script.js"_s, 3);
    table()->setFocus();
    table()->selectRow(0);
    QTest::keyClick(table(), Qt::Key_Return);
    QCOMPARE(places.size(), 1);
}

void tst_ConsoleWindow::openedAfterTheEntries()
{
    log(u"early"_s);
    ConsoleWindow later(m_log);
    QCOMPARE(later.findChild<QTableView *>(u"ConsoleTable"_s)->model()->rowCount(), 1);
    QCOMPARE(later.findChild<QComboBox *>(u"PluginFilter"_s)->count(), 2);
}

void tst_ConsoleWindow::everythingHasANameAndAPlaceInTheTabOrder()
{
    show();
    log(u"one"_s);
    table()->selectRow(0);
    QSet<QWidget *> reached;
    m_window->findChild<QComboBox *>(u"PluginFilter"_s)->setFocus();
    for (int i = 0; i < 20; ++i) {
        reached.insert(QApplication::focusWidget());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    for (const auto &name :
        {u"PluginFilter"_s, u"LevelFilter"_s, u"ConsoleSearch"_s, u"ConsoleTable"_s, u"EntryDetail"_s}) {
        auto *const widget = m_window->findChild<QWidget *>(name);
        QVERIFY2(reached.contains(widget), qPrintable(name));
        QVERIFY2(!widget->accessibleName().isEmpty(), qPrintable(name));
    }
    int buttons = 0;
    for (auto *const widget : reached)
        buttons += qobject_cast<QToolButton *>(widget) && !widget->accessibleName().isEmpty() ? 1 : 0;
    QCOMPARE(buttons, 2);
}

QTEST_MAIN(tst_ConsoleWindow)
#include "moc_UrlRecorder.cpp"
#include "tst_consolewindow.moc"
