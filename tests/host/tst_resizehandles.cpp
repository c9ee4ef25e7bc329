#include "canvas/ResizeHandles.h"

#include <QtTest>

class tst_ResizeHandles : public QObject
{
    Q_OBJECT

private slots:
    void resizes_data();
    void resizes();
    void handlesLieOnTheEdge();
};

void tst_ResizeHandles::resizes_data()
{
    QTest::addColumn<ResizeHandle>("handle");
    QTest::addColumn<QPointF>("offset");
    QTest::addColumn<Proportions>("proportions");
    QTest::addColumn<QRectF>("expected");

    const auto row = [](const char *tag, ResizeHandle handle, QPointF offset, Proportions proportions,
                         QRectF expected) { QTest::newRow(tag) << handle << offset << proportions << expected; };
    using enum ResizeHandle;
    row("the opposite corner stays", BottomRight, {10, 20}, Proportions::Free, {0, 0, 110, 70});
    row("also at the top left", TopLeft, {10, 20}, Proportions::Free, {10, 20, 90, 30});
    row("a side changes one length", Right, {10, 20}, Proportions::Free, {0, 0, 110, 50});
    row("the top moves", Top, {10, -20}, Proportions::Free, {0, -20, 100, 70});
    row("no side gets smaller than a point", Left, {500, 0}, Proportions::Free, {99, 0, 1, 50});
    row("with proportions the longer way counts", BottomRight, {100, 0}, Proportions::Kept, {0, 0, 200, 100});
    row("with proportions at the top left", TopLeft, {-100, 0}, Proportions::Kept, {-100, -50, 200, 100});
    row("with proportions a side takes the other along, around the middle", Right, {100, 0}, Proportions::Kept,
        {0, -25, 200, 100});
}

void tst_ResizeHandles::resizes()
{
    QFETCH(ResizeHandle, handle);
    QFETCH(QPointF, offset);
    QFETCH(Proportions, proportions);
    QTEST(resized(QRectF(0, 0, 100, 50), handle, offset, proportions), "expected");
}

void tst_ResizeHandles::handlesLieOnTheEdge()
{
    const QRectF rectangle(10, 20, 100, 50);
    QCOMPARE(positionOf(ResizeHandle::TopLeft, rectangle), rectangle.topLeft());
    QCOMPARE(positionOf(ResizeHandle::BottomRight, rectangle), rectangle.bottomRight());
    QCOMPARE(positionOf(ResizeHandle::Left, rectangle), QPointF(10, 45));
}

QTEST_GUILESS_MAIN(tst_ResizeHandles)
#include "tst_resizehandles.moc"
