#include "HostFixture.h"

#include "document/DocumentFile.h"

#include <QLineEdit>
#include <QMimeData>
#include <QToolBar>

using namespace Qt::StringLiterals;

class tst_DocumentWindow : public QObject, private HostFixture
{
    Q_OBJECT

private slots:
    void init() { makeFolder(); }
    void cleanup() { removeFolder(); }

    void opensAndSaves();
    void asksBeforeChangesAreLost_data();
    void asksBeforeChangesAreLost();
    void asksNothingWithoutChanges();
    void aDocumentThatCannotBeSavedStaysOpen();
    void savesWhatIsBeingEntered();
    void aDocumentThatCannotBeReadIsSaid_data();
    void aDocumentThatCannotBeReadIsSaid();
    void anOpenDocumentIsNotOpenedTwice();
    void isNotSavedOverAnOpenDocument_data();
    void isNotSavedOverAnOpenDocument();
    void aNewDocumentGivesWay();
    void remembersRecentDocuments();
    void takesDroppedFiles();
    void everyToolHasAName();
    void menusWorkOnTheSelection();
    void theLastWindowEndsTheProgram();
    void quittingWaitsForAnOpenQuestion_data();
    void quittingWaitsForAnOpenQuestion();
    void quittingClosesWhatIsOpenThen();

private:
    void change() { layer(u"box"_s)->setName(u"Crate"_s); }
    QPoint dropPlace() const;
};

QPoint tst_DocumentWindow::dropPlace() const
{
    return window().canvas().mapTo(&window(), window().canvas().mapFromScene(150, 100));
}

void tst_DocumentWindow::opensAndSaves()
{
    auto &window = start();
    QCOMPARE(window.session().path(), path(u"sample.json"_s));
    QVERIFY(window.windowTitle().startsWith(u"sample"_s));
    change();
    QVERIFY(window.isWindowModified());
    menuAction(window, u"Save"_s)->trigger();
    QVERIFY(!window.isWindowModified());
    QCOMPARE(readDocument(path(u"sample.json"_s)).value()->layerWithID(u"box"_s)->name(), u"Crate"_s);
    window.session().undo().undo();
    QVERIFY(window.isWindowModified());
}

void tst_DocumentWindow::asksBeforeChangesAreLost_data()
{
    QTest::addColumn<QString>("answer");
    QTest::addColumn<bool>("isClosed");
    QTest::addColumn<bool>("isSaved");

    QTest::newRow("save") << u"Save"_s << true << true;
    QTest::newRow("lose them") << u"Discard"_s << true << false;
    QTest::newRow("stay") << u"Cancel"_s << false << false;
}

void tst_DocumentWindow::asksBeforeChangesAreLost()
{
    QFETCH(QString, answer);
    QFETCH(bool, isClosed);
    auto &window = start();
    change();
    const DialogAnswer dialog(answer);
    QCOMPARE(window.close(), isClosed);
    QVERIFY(dialog.wasShown());
    QVERIFY(dialog.text().contains(u"sample"_s));
    QCOMPARE(m_host->windows().size(), isClosed ? 0 : 1);
    QTEST(readFile(path(u"sample.json"_s)).contains("Crate"), "isSaved");
}

void tst_DocumentWindow::asksNothingWithoutChanges()
{
    auto &window = start();
    const DialogAnswer dialog(u"Cancel"_s);
    click(window, 50, 50); // a selection is no change
    QVERIFY(window.close());
    QVERIFY(!dialog.wasShown());
}

void tst_DocumentWindow::aDocumentThatCannotBeSavedStaysOpen()
{
    auto &window = start();
    change();
    const DialogAnswer dialog(u"OK"_s);
    QVERIFY(!window.files().saveTo(path(u"missing/folder/copy.json"_s)));
    QVERIFY(dialog.text().contains(u"Cannot write the document"_s));
    QVERIFY(window.isWindowModified());
    QCOMPARE(window.session().path(), path(u"sample.json"_s));
}

void tst_DocumentWindow::savesWhatIsBeingEntered()
{
    auto &window = start();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    click(window, 50, 50);
    QCoreApplication::processEvents();
    auto *const name = window.inspector().findChild<QLineEdit *>();
    name->setFocus();
    name->selectAll();
    QTest::keyClicks(name, u"Crate"_s);
    QTest::keyClick(name, Qt::Key_S, Qt::ControlModifier);
    QTRY_VERIFY(readFile(path(u"sample.json"_s)).contains("Crate"));
}

void tst_DocumentWindow::aDocumentThatCannotBeReadIsSaid_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("message");

    QTest::newRow("no JSON") << QByteArray("{") << u"is no document"_s;
    QTest::newRow("no document") << QByteArray("[1]") << u"A document is a JSON object."_s;
    QTest::newRow("missing") << QByteArray() << u"Cannot read the document"_s;
}

void tst_DocumentWindow::aDocumentThatCannotBeReadIsSaid()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, message);
    start();
    if (!content.isEmpty())
        writeFile(path(u"other.json"_s), content);
    const DialogAnswer dialog(u"OK"_s);
    QVERIFY(!m_host->openDocument(path(u"other.json"_s)));
    QVERIFY2(dialog.text().contains(message), qPrintable(dialog.text()));
    QCOMPARE(m_host->windows().size(), 1);
}

void tst_DocumentWindow::anOpenDocumentIsNotOpenedTwice()
{
    auto &window = start();
    QVERIFY(QFile::link(path(u"sample.json"_s), path(u"link.json"_s)));
    for (const auto &name : {u"sample.json"_s, u"plugins/../sample.json"_s, u"link.json"_s})
        QCOMPARE(m_host->openDocument(path(name)), &window);
    QCOMPARE(m_host->windows().size(), 1);
}

void tst_DocumentWindow::isNotSavedOverAnOpenDocument_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<bool>("isThere");

    QTest::newRow("its file") << u"sample.json"_s << true;
    QTest::newRow("a link to its file") << u"link.json"_s << true;
    QTest::newRow("its file, which is gone") << u"sample.json"_s << false;
}

void tst_DocumentWindow::isNotSavedOverAnOpenDocument()
{
    QFETCH(QString, file);
    QFETCH(bool, isThere);
    auto &first = start();
    QVERIFY(QFile::link(path(u"sample.json"_s), path(u"link.json"_s)));
    if (!isThere)
        QFile::remove(path(u"sample.json"_s));
    auto &second = *m_host->newDocument();
    const DialogAnswer dialog(u"OK"_s);
    QVERIFY(!second.files().saveTo(path(file)));
    QCOMPARE(dialog.text(),
        u"The document was not saved.\n“%1” is open in another window. "
        "Close that window first, or choose another name."_s.arg(file));
    QCOMPARE(second.session().path(), QString());
    QCOMPARE(readFile(path(u"sample.json"_s)), isThere ? sampleDocument : QByteArray());
    QVERIFY(first.files().save()); // its own file it may overwrite
    QVERIFY(second.files().saveTo(path(u"other.json"_s)));
}

void tst_DocumentWindow::aNewDocumentGivesWay()
{
    m_options.files.clear();
    auto &untouched = start();
    QVERIFY(untouched.session().isPristine());
    m_host->openDocument(path(u"sample.json"_s));
    QCOMPARE(m_host->windows().size(), 1);
    m_host->newDocument();
    QCOMPARE(m_host->windows().size(), 2);
}

void tst_DocumentWindow::remembersRecentDocuments()
{
    auto &window = start();
    QVERIFY(window.files().saveTo(path(u"copy.json"_s)));
    QCOMPARE(window.services().recentFiles.paths(), (QStringList{path(u"copy.json"_s), path(u"sample.json"_s)}));
    QFile::remove(path(u"copy.json"_s));
    QCOMPARE(window.services().recentFiles.paths(), QStringList{path(u"sample.json"_s)});
    auto *const menu = menuAction(window, u"Open Recent"_s)->menu();
    emit menu->aboutToShow();
    QCOMPARE(menu->actions().first()->text(), u"sample.json"_s);
    window.services().recentFiles.clear();
    QCOMPARE(window.services().recentFiles.paths(), QStringList());
}

void tst_DocumentWindow::takesDroppedFiles()
{
    plugin(u"dropped"_s, R"({"name": "Dropped", "script": "script.js"})", "function onRun() { print('dropped'); }");
    const auto bundle = path(u"plugins/dropped.korvanplugin"_s);
    const auto elsewhere = path(u"downloads/dropped.korvanplugin"_s);
    QDir().mkpath(path(u"downloads"_s));
    QVERIFY(QDir().rename(bundle, elsewhere));
    m_options.folders.reset(); // the application's own folder
    auto &window = start();

    QImage(4, 4, QImage::Format_RGB32).save(path(u"picture.png"_s));
    drop(window, {path(u"picture.png"_s), elsewhere}, dropPlace());
    const auto picture = window.document()->selection().value(0);
    QCOMPARE(picture->type(), u"image"_s);
    QCOMPARE(picture->name(), u"picture"_s);
    QVERIFY(QFile::exists(elsewhere + u"/Contents/Korvan/manifest.json"_s)); // it was copied
    QTRY_VERIFY(menuAction(window, u"Dropped"_s));
    QCOMPARE(QDir(path(u"support/PluginStaging"_s)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList());

    writeFile(path(u"second.json"_s), R"({"name": "Second"})");
    drop(window, {path(u"second.json"_s)}, dropPlace());
    QCOMPARE(m_host->windows().size(), 2);
}

void tst_DocumentWindow::everyToolHasAName()
{
    auto &window = start();
    const auto actions = window.findChild<QToolBar *>()->actions();
    QVERIFY(actions.size() > 10);
    for (const auto *const action : actions) {
        QVERIFY(action->isSeparator() || !action->text().isEmpty());
        QVERIFY(action->isSeparator() || !action->icon().pixmap(20).isNull());
    }
    for (const QWidget *const widget : {static_cast<QWidget *>(&window.canvas()),
             static_cast<QWidget *>(&window.layersPanel()), static_cast<QWidget *>(&window.inspector())})
        QVERIFY(!widget->accessibleName().isEmpty());
}

void tst_DocumentWindow::menusWorkOnTheSelection()
{
    auto &window = start();
    QVERIFY(!menuAction(window, u"Duplicate"_s)->isEnabled());
    click(window, 50, 50);
    QTRY_VERIFY(menuAction(window, u"Duplicate"_s)->isEnabled());
    QVERIFY(!menuAction(window, u"Ungroup"_s)->isEnabled());
    menuAction(window, u"Duplicate"_s)->trigger();
    QCOMPARE(window.document()->layers().size(), 4);
    menuAction(window, u"Group"_s)->trigger();
    QTRY_VERIFY(menuAction(window, u"Ungroup"_s)->isEnabled());
    menuAction(window, u"Delete"_s)->trigger();
    QCOMPARE(window.document()->layers().size(), 3);
    menuAction(window, u"Rectangle"_s)->trigger();
    QCOMPARE(window.document()->layers().size(), 4);
    QCOMPARE(window.session().undo().count(), 4);
}

void tst_DocumentWindow::theLastWindowEndsTheProgram()
{
    start();
    change();
    {
        const DialogAnswer dialog(u"Cancel"_s);
        m_host->quit();
        QCOMPARE(m_host->windows().size(), 1);
    }
    const DialogAnswer dialog(u"Discard"_s);
    QTimer::singleShot(0, m_host.get(), &HostApplication::quit);
    QCOMPARE(QApplication::exec(), 0);
    QCOMPARE(m_host->windows().size(), 0);
}

void tst_DocumentWindow::quittingWaitsForAnOpenQuestion_data()
{
    QTest::addColumn<bool>("hasOtherWindow");
    QTest::addColumn<bool>("isBySystem");

    QTest::newRow("from another window") << true << false;
    QTest::newRow("the only window") << false << false;
    QTest::newRow("the system ends the program") << true << true;
}

void tst_DocumentWindow::quittingWaitsForAnOpenQuestion()
{
    QFETCH(bool, hasOtherWindow);
    QFETCH(bool, isBySystem);
    auto &window = start();
    change();
    if (hasOtherWindow)
        m_host->newDocument();
    const auto windows = m_host->windows();
    QTimer::singleShot(0, &window, [&] {
        auto *const question = QApplication::activeModalWidget();
        QVERIFY(question);
        QEvent quit(QEvent::Quit);
        if (isBySystem)
            QVERIFY(QCoreApplication::sendEvent(qApp, &quit) && !quit.isAccepted());
        else
            m_host->quit();
        QCOMPARE(m_host->windows(), windows);
        QVERIFY(question->isVisible());
        QTRY_COMPARE(QApplication::activeModalWidget(), question);
        qobject_cast<QMessageBox *>(question)->button(QMessageBox::Cancel)->click();
    });
    QVERIFY(!window.close());
    QCOMPARE(m_host->windows(), windows);
    QVERIFY(window.isWindowModified());
}

void tst_DocumentWindow::quittingClosesWhatIsOpenThen()
{
    start();
    change();
    m_host->newDocument();
    QTimer::singleShot(0, m_host.get(), &HostApplication::quit);
    QTimer::singleShot(0, m_host.get(), [&] { // while the first window asks
        auto *const question = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        QVERIFY(question);
        m_host->windows().last()->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        question->button(QMessageBox::Discard)->click();
    });
    QCOMPARE(QApplication::exec(), 0);
    QCOMPARE(m_host->windows().size(), 0);
}

QTEST_MAIN(tst_DocumentWindow)
#include "tst_documentwindow.moc"
