#include "canvas/CanvasView.h"

#include "SampleDocument.h"
#include "document/DocumentFile.h"
#include "editing/DocumentUndoStack.h"
#include "editing/LayerFrames.h"

#include <QApplication>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

const QPointF inBox(50, 50);
const QPointF inDisc(250, 50);
const QPointF inLeft(25, 225);
const QPointF beside(-50, -50);

} // namespace

class tst_CanvasView : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void clicksSelect();
    void ovalsAreHitWhereTheyAreSeen();
    void doubleClicksGoIntoGroups();
    void rubberBandSelects_data();
    void rubberBandSelects();
    void drags();
    void dragsAlongOneAxisWithShift();
    void dragsWholeSelections();
    void shakyHandsDragNothing();
    void resizes_data();
    void resizes();
    void escapeTakesADragBack();
    void arrowKeysMove();
    void zoomKeepsThePlaceUnderTheMouse();
    void zoomIsBounded();
    void fits();
    void scrolls();
    void pans_data();
    void pans();
    void changesOfScriptsAreSeen();
    void paintsTheDocument();

private:
    LayerPointer layer(const QString &id) const { return m_document->layerWithID(id); }
    QRectF frame(const QString &id) const { return frameOf(*layer(id)); }
    QString selection() const;
    QPoint at(QPointF position) const { return m_view->mapFromScene(position); }
    void click(QPointF position, Qt::KeyboardModifiers modifiers = {}) const;
    void mouse(QEvent::Type type, QPoint position, Qt::KeyboardModifiers modifiers, Qt::MouseButton button) const;
    void drag(
        QPointF from, QPointF to, Qt::KeyboardModifiers modifiers = {}, Qt::MouseButton button = Qt::LeftButton) const;
    void wheel(QPoint position, int delta, Qt::KeyboardModifiers modifiers) const;

    std::shared_ptr<Document> m_document;
    std::unique_ptr<DocumentUndoStack> m_undo;
    std::unique_ptr<CanvasView> m_view;
};

void tst_CanvasView::init()
{
    m_document = documentFromJSON(sampleDocument).value();
    m_undo = std::make_unique<DocumentUndoStack>(m_document);
    m_view = std::make_unique<CanvasView>(m_document, *m_undo);
    m_view->resize(600, 500);
    m_view->show();
    m_view->setZoom(1);
    m_view->centerOn(150, 125);
    m_view->setFocus();
    QVERIFY(QTest::qWaitForWindowExposed(m_view.get()));
}

void tst_CanvasView::cleanup()
{
    m_view.reset();
    m_undo.reset();
}

QString tst_CanvasView::selection() const
{
    QStringList ids;
    const auto selected = m_document->selection();
    for (const auto &one : selected)
        ids.append(one->id());
    return ids.join(u' ');
}

void tst_CanvasView::click(QPointF position, Qt::KeyboardModifiers modifiers) const
{
    QTest::mouseClick(m_view->viewport(), Qt::LeftButton, modifiers, at(position));
}

/// With modifiers, which QTest::mouseMove() has not.
void tst_CanvasView::mouse(
    QEvent::Type type, QPoint position, Qt::KeyboardModifiers modifiers, Qt::MouseButton button) const
{
    const bool isMove = type == QEvent::MouseMove;
    QMouseEvent event(type, position, m_view->viewport()->mapToGlobal(position), isMove ? Qt::NoButton : button,
        type == QEvent::MouseButtonRelease ? Qt::NoButton : button, modifiers);
    QApplication::sendEvent(m_view->viewport(), &event);
}

void tst_CanvasView::drag(QPointF from, QPointF to, Qt::KeyboardModifiers modifiers, Qt::MouseButton button) const
{
    const auto start = at(from);
    const auto end = at(to);
    mouse(QEvent::MouseButtonPress, start, modifiers, button);
    mouse(QEvent::MouseMove, (start + end) / 2, modifiers, button);
    mouse(QEvent::MouseMove, end, modifiers, button);
    mouse(QEvent::MouseButtonRelease, end, modifiers, button);
}

void tst_CanvasView::wheel(QPoint position, int delta, Qt::KeyboardModifiers modifiers) const
{
    QWheelEvent event(position, m_view->viewport()->mapToGlobal(position), {}, {0, delta}, Qt::NoButton, modifiers,
        Qt::NoScrollPhase, false);
    QApplication::sendEvent(m_view->viewport(), &event);
}

void tst_CanvasView::clicksSelect()
{
    click(inBox);
    QCOMPARE(selection(), u"box"_s);
    click(inDisc, Qt::ShiftModifier);
    QCOMPARE(selection(), u"box disc"_s);
    click(inBox, Qt::ShiftModifier);
    QCOMPARE(selection(), u"disc"_s);
    click(inLeft);
    QCOMPARE(selection(), u"both"_s); // the group, not what is in it
    click(inLeft, Qt::ControlModifier);
    QCOMPARE(selection(), u"left"_s);
    click(beside);
    QCOMPARE(selection(), QString());
    QCOMPARE(m_undo->count(), 0);
}

void tst_CanvasView::ovalsAreHitWhereTheyAreSeen()
{
    click({205, 5});
    QCOMPARE(selection(), QString());
    click({250, 5});
    QCOMPARE(selection(), u"disc"_s);
}

void tst_CanvasView::doubleClicksGoIntoGroups()
{
    QTest::mouseDClick(m_view->viewport(), Qt::LeftButton, {}, at(inLeft));
    QCOMPARE(selection(), u"left"_s);
    click({125, 225});
    QCOMPARE(selection(), u"right"_s);
    QTest::keyClick(m_view.get(), Qt::Key_Escape);
    QCOMPARE(selection(), u"both"_s);
    click(inLeft);
    QCOMPARE(selection(), u"both"_s);
}

void tst_CanvasView::rubberBandSelects_data()
{
    QTest::addColumn<QPointF>("from");
    QTest::addColumn<QPointF>("to");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<QString>("expected");

    const Qt::KeyboardModifiers none;
    QTest::newRow("what it touches") << QPointF(-20, -20) << QPointF(20, 20) << none << u"box"_s;
    QTest::newRow("backwards") << QPointF(20, 120) << QPointF(-20, -20) << none << u"box"_s;
    QTest::newRow("a group by one of its layers") << QPointF(-20, 180) << QPointF(10, 210) << none << u"both"_s;
    QTest::newRow("nothing") << QPointF(-20, -20) << QPointF(-5, -5) << none << QString();
    QTest::newRow("in addition") << QPointF(-20, -20) << QPointF(20, 20) << Qt::KeyboardModifiers(Qt::ShiftModifier)
                                 << u"disc box"_s;
}

void tst_CanvasView::rubberBandSelects()
{
    QFETCH(QPointF, from);
    QFETCH(QPointF, to);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    m_document->setSelection({layer(u"disc"_s)});
    drag(from, to, modifiers);
    QTEST(selection(), "expected");
    QVERIFY(!m_view->interaction().selectionRectangle());
}

void tst_CanvasView::drags()
{
    drag(inBox, {80, 40});
    QCOMPARE(frame(u"box"_s), QRectF(30, -10, 100, 100));
    QCOMPARE(selection(), u"box"_s);
    QCOMPARE(m_undo->count(), 1);
    QCOMPARE(m_undo->undoText(), u"Move"_s);
    drag(inLeft, {35, 225});
    QCOMPARE(frame(u"both"_s), QRectF(10, 200, 150, 50));
    QCOMPARE(frame(u"right"_s), QRectF(110, 200, 50, 50));
    QCOMPARE(m_undo->count(), 2);
    m_undo->undo();
    m_undo->undo();
    QCOMPARE(frame(u"box"_s), QRectF(0, 0, 100, 100));
    QCOMPARE(frame(u"right"_s), QRectF(100, 200, 50, 50));
}

void tst_CanvasView::dragsAlongOneAxisWithShift()
{
    m_document->setSelection({layer(u"box"_s)});
    drag(inBox, {90, 60}, Qt::ShiftModifier);
    QCOMPARE(frame(u"box"_s), QRectF(40, 0, 100, 100));
}

void tst_CanvasView::dragsWholeSelections()
{
    click(inBox);
    click(inDisc, Qt::ShiftModifier);
    drag(inBox, {50, 70});
    QCOMPARE(frame(u"box"_s), QRectF(0, 20, 100, 100));
    QCOMPARE(frame(u"disc"_s), QRectF(200, 20, 100, 100));
    QCOMPARE(m_undo->count(), 1);
    click(inDisc);
    QCOMPARE(selection(), u"disc"_s);
}

void tst_CanvasView::shakyHandsDragNothing()
{
    drag(inBox, inBox + QPointF(1, 1));
    QCOMPARE(frame(u"box"_s), QRectF(0, 0, 100, 100));
    QCOMPARE(m_undo->count(), 0);
}

void tst_CanvasView::resizes_data()
{
    QTest::addColumn<QPointF>("handle");
    QTest::addColumn<QPointF>("to");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<QRectF>("expected");

    const Qt::KeyboardModifiers none;
    QTest::newRow("a corner") << QPointF(100, 100) << QPointF(150, 120) << none << QRectF(0, 0, 150, 120);
    QTest::newRow("a side") << QPointF(0, 50) << QPointF(-20, 80) << none << QRectF(-20, 0, 120, 100);
    QTest::newRow("shift keeps the proportions")
        << QPointF(100, 100) << QPointF(150, 120) << Qt::KeyboardModifiers(Qt::ShiftModifier) << QRectF(0, 0, 150, 150);
}

void tst_CanvasView::resizes()
{
    QFETCH(QPointF, handle);
    QFETCH(QPointF, to);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    click(inBox);
    QCoreApplication::processEvents(); // the handles are there with the next turn
    drag(handle, to, modifiers);
    QTEST(frame(u"box"_s), "expected");
    QCOMPARE(m_undo->count(), 1);
    QCOMPARE(m_undo->undoText(), u"Resize"_s);
    m_undo->undo();
    QCOMPARE(frame(u"box"_s), QRectF(0, 0, 100, 100));
}

void tst_CanvasView::escapeTakesADragBack()
{
    mouse(QEvent::MouseButtonPress, at(inBox), {}, Qt::LeftButton);
    mouse(QEvent::MouseMove, at({90, 90}), {}, Qt::LeftButton);
    QCOMPARE(frame(u"box"_s), QRectF(40, 40, 100, 100));
    QTest::keyClick(m_view.get(), Qt::Key_Escape);
    QCOMPARE(frame(u"box"_s), QRectF(0, 0, 100, 100));
    QCOMPARE(m_undo->count(), 0);
    QVERIFY(m_undo->isClean());
    mouse(QEvent::MouseMove, at({150, 150}), {}, Qt::LeftButton);
    mouse(QEvent::MouseButtonRelease, at({150, 150}), {}, Qt::LeftButton);
    QCOMPARE(frame(u"box"_s), QRectF(0, 0, 100, 100));
}

void tst_CanvasView::arrowKeysMove()
{
    click(inBox);
    QTest::keyClick(m_view.get(), Qt::Key_Right);
    QCOMPARE(frame(u"box"_s).topLeft(), QPointF(1, 0));
    QTest::keyClick(m_view.get(), Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(frame(u"box"_s).topLeft(), QPointF(1, 10));
    QCOMPARE(m_undo->count(), 2);
    // A key that is held is one step.
    for (int press = 0; press < 5; ++press) {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_Left, {}, QString(), press > 0);
        QApplication::sendEvent(m_view.get(), &event);
    }
    QTest::keyRelease(m_view.get(), Qt::Key_Left);
    QCOMPARE(frame(u"box"_s).topLeft(), QPointF(-4, 10));
    QCOMPARE(m_undo->count(), 3);
}

void tst_CanvasView::zoomKeepsThePlaceUnderTheMouse()
{
    const auto place = at({10, 20});
    wheel(place, 240, Qt::ControlModifier);
    QVERIFY(m_view->zoom() > 1.3);
    QVERIFY(QLineF(m_view->mapToScene(place), QPointF(10, 20)).length() < 1.5);
    wheel(place, -240, Qt::ControlModifier);
    QVERIFY(qFuzzyCompare(m_view->zoom(), 1.0));
}

void tst_CanvasView::zoomIsBounded()
{
    m_view->setZoom(1e9);
    QCOMPARE(m_view->zoom(), CanvasView::largestZoom);
    m_view->setZoom(0);
    QCOMPARE(m_view->zoom(), CanvasView::smallestZoom);
}

void tst_CanvasView::fits()
{
    m_view->setZoom(20);
    m_view->zoomToFit();
    const auto seen = m_view->mapToScene(m_view->viewport()->rect()).boundingRect();
    QVERIFY(seen.contains(QRectF(0, 0, 300, 250)));
    QVERIFY(seen.width() < 700);
    m_document->setSelection({layer(u"left"_s)});
    QCoreApplication::processEvents();
    m_view->zoomToSelection();
    QVERIFY(QLineF(m_view->centreOfView(), QPointF(25, 225)).length() < 2);
}

void tst_CanvasView::scrolls()
{
    const auto before = m_view->mapToScene(0, 0);
    wheel({300, 250}, -120, {});
    QCOMPARE(m_view->mapToScene(0, 0).x(), before.x());
    QVERIFY(m_view->mapToScene(0, 0).y() > before.y());
    const auto scrolled = m_view->mapToScene(0, 0);
    wheel({300, 250}, -120, Qt::ShiftModifier);
    QVERIFY(m_view->mapToScene(0, 0).x() > scrolled.x());
    QCOMPARE(m_view->mapToScene(0, 0).y(), scrolled.y());
    QCOMPARE(m_view->zoom(), 1.0);
}

void tst_CanvasView::pans_data()
{
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::addColumn<bool>("withSpace");

    QTest::newRow("the middle button") << Qt::MiddleButton << false;
    QTest::newRow("the left one, with Space") << Qt::LeftButton << true;
}

void tst_CanvasView::pans()
{
    QFETCH(Qt::MouseButton, button);
    QFETCH(bool, withSpace);
    const auto before = m_view->mapToScene(0, 0);
    if (withSpace)
        QTest::keyPress(m_view.get(), Qt::Key_Space);
    drag(inBox, {90, 30}, {}, button);
    if (withSpace)
        QTest::keyRelease(m_view.get(), Qt::Key_Space);
    QCOMPARE(m_view->mapToScene(0, 0) - before, QPointF(-40, 20));
    QCOMPARE(frame(u"box"_s), QRectF(0, 0, 100, 100));
    QCOMPARE(selection(), QString());
}

void tst_CanvasView::changesOfScriptsAreSeen()
{
    auto added = std::make_shared<Layer>(QVariantMap{{u"type"_s, u"rectangle"_s},
        {u"frame"_s, QVariantMap{{u"x"_s, 0}, {u"y"_s, 0}, {u"width"_s, 20}, {u"height"_s, 20}}},
        {u"style"_s, QVariantMap{{u"fill"_s, u"#FF0000"_s}}}});
    m_document->addLayer(added, nullptr);
    const auto colour = [this] { return m_view->grab().toImage().pixelColor(at({10, 10})); };
    QTRY_COMPARE(colour(), QColor(Qt::red));
    added->setStyle({{u"fill"_s, u"#0000FF"_s}});
    QTRY_COMPARE(colour(), QColor(Qt::blue));
    m_document->moveLayer(added, 0); // below the box
    QTRY_VERIFY(colour() != QColor(Qt::blue));
    m_document->removeLayer(layer(u"box"_s));
    QTRY_COMPARE(colour(), QColor(Qt::blue));
    m_document->moveLayer(added, layer(u"both"_s), 0);
    layer(u"both"_s)->setStyle({{u"opacity"_s, 0}}); // with everything in it
    QTRY_VERIFY(colour() != QColor(Qt::blue));
}

void tst_CanvasView::paintsTheDocument()
{
    layer(u"box"_s)->setStyle({{u"fill"_s, u"#FF0000"_s}, {u"border"_s, u"#00FF00"_s}, {u"borderWidth"_s, 10}});
    layer(u"disc"_s)->setStyle({{u"fill"_s, u"#0000FF"_s}});
    m_view->canvasScene().flush();
    const auto picture = m_view->grab().toImage();
    const auto colour = [&](double x, double y) { return picture.pixelColor(at({x, y})); };
    QCOMPARE(colour(50, 50), QColor(Qt::red));
    QCOMPARE(colour(5, 50), QColor(Qt::green)); // a border is inside
    QCOMPARE(colour(250, 50), QColor(Qt::blue));
    QCOMPARE(colour(205, 5), colour(-50, -50)); // beside the oval
}

QTEST_MAIN(tst_CanvasView)
#include "tst_canvasview.moc"
