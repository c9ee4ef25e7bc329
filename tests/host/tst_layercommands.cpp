#include "editing/LayerCommands.h"

#include "SampleDocument.h"
#include "document/DocumentFile.h"
#include "editing/DocumentUndoStack.h"
#include "editing/LayerFrames.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class tst_LayerCommands : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void insertsAboveTheSelection();
    void duplicates();
    void removes();
    void groupsAndUngroups();
    void restacks_data();
    void restacks();
    void movesGroupsWithTheirLayers();
    void nothingSelectedIsNothingDone();
    void framesAreScaledTogether();

private:
    QString outline(const QList<LayerPointer> &layers) const;
    QString outline() const { return outline(m_document->layers()); }
    void select(const QString &ids) const;

    std::shared_ptr<Document> m_document;
    std::unique_ptr<DocumentUndoStack> m_undo;
};

void tst_LayerCommands::init()
{
    m_undo.reset();
    m_document = documentFromJSON(sampleDocument).value();
    m_undo = std::make_unique<DocumentUndoStack>(m_document);
}

/// "box disc both(left right)"
QString tst_LayerCommands::outline(const QList<LayerPointer> &layers) const
{
    QStringList parts;
    for (const auto &layer : layers)
        parts.append(layer->layers().isEmpty() ? layer->id() : layer->id() + u'(' + outline(layer->layers()) + u')');
    return parts.join(u' ');
}

void tst_LayerCommands::select(const QString &ids) const
{
    QList<LayerPointer> layers;
    const auto parts = ids.split(u' ');
    for (const auto &id : parts)
        layers.append(m_document->layerWithID(id));
    m_document->setSelection(layers);
}

void tst_LayerCommands::insertsAboveTheSelection()
{
    select(u"left"_s);
    const auto layer = insertLayer(*m_document, u"oval"_s, {100, 100});
    QCOMPARE(outline(), u"box disc both(left %1 right)"_s.arg(layer->id()));
    QCOMPARE(frameOf(*layer).center(), QPointF(100, 100));
    QCOMPARE(m_document->selection(), QList<LayerPointer>{layer});
    QCOMPARE(m_undo->undoText(), u"Insert Oval"_s);
    m_undo->undo();
    QCOMPARE(outline(), u"box disc both(left right)"_s);
}

void tst_LayerCommands::duplicates()
{
    select(u"box both"_s);
    duplicateSelection(*m_document);
    QCOMPARE(m_document->layers().size(), 5);
    const auto selected = m_document->selection();
    QCOMPARE(selected.size(), 2);
    QCOMPARE(frameOf(*selected[0]), QRectF(10, 10, 100, 100));
    QCOMPARE(frameOf(*selected[1]->layers()[1]), QRectF(110, 210, 50, 50)); // once, though its group is moved too
    QCOMPARE(m_undo->count(), 1);
}

void tst_LayerCommands::removes()
{
    select(u"both left box"_s);
    removeSelection(*m_document);
    QCOMPARE(outline(), u"disc"_s);
    QCOMPARE(m_undo->count(), 1);
    m_undo->undo();
    QCOMPARE(outline(), u"box disc both(left right)"_s);
}

void tst_LayerCommands::groupsAndUngroups()
{
    select(u"disc box"_s);
    groupSelection(*m_document);
    const auto group = m_document->selection().value(0);
    QCOMPARE(outline(), group->id() + u"(box disc) both(left right)"_s);
    QCOMPARE(frameOf(*group), QRectF(0, 0, 300, 100));
    ungroupSelection(*m_document);
    QCOMPARE(outline(), u"box disc both(left right)"_s);
    QCOMPARE(m_document->selection().size(), 2);
    QCOMPARE(m_undo->count(), 2);
}

void tst_LayerCommands::restacks_data()
{
    QTest::addColumn<QString>("selected");
    QTest::addColumn<StackingStep>("step");
    QTest::addColumn<QString>("expected");

    QTest::newRow("forward") << u"box"_s << StackingStep::Forward << u"disc box both(left right)"_s;
    QTest::newRow("forward at the top") << u"both"_s << StackingStep::Forward << u"box disc both(left right)"_s;
    QTest::newRow("two do not jump over each other")
        << u"box disc"_s << StackingStep::Forward << u"both(left right) box disc"_s;
    QTest::newRow("two at the top stay in order")
        << u"disc both"_s << StackingStep::Forward << u"box disc both(left right)"_s;
    QTest::newRow("to the front, in order") << u"disc box"_s << StackingStep::ToFront << u"both(left right) box disc"_s;
    QTest::newRow("to the back, in order") << u"both disc"_s << StackingStep::ToBack << u"disc both(left right) box"_s;
    QTest::newRow("inside of a group") << u"right"_s << StackingStep::Backward << u"box disc both(right left)"_s;
}

void tst_LayerCommands::restacks()
{
    QFETCH(QString, selected);
    QFETCH(StackingStep, step);
    select(selected);
    restackSelection(*m_document, step);
    QTEST(outline(), "expected");
}

void tst_LayerCommands::movesGroupsWithTheirLayers()
{
    select(u"both right"_s);
    moveSelection(*m_document, {5, -5});
    QCOMPARE(frameOf(*m_document->layerWithID(u"both"_s)), QRectF(5, 195, 150, 50));
    QCOMPARE(frameOf(*m_document->layerWithID(u"right"_s)), QRectF(105, 195, 50, 50));
    QCOMPARE(m_undo->undoText(), u"Move"_s);
    m_undo->undo();
    QCOMPARE(frameOf(*m_document->layerWithID(u"right"_s)), QRectF(100, 200, 50, 50));
}

void tst_LayerCommands::nothingSelectedIsNothingDone()
{
    duplicateSelection(*m_document);
    removeSelection(*m_document);
    groupSelection(*m_document);
    ungroupSelection(*m_document);
    restackSelection(*m_document, StackingStep::ToBack);
    moveSelection(*m_document, {1, 1});
    QCOMPARE(outline(), u"box disc both(left right)"_s);
    QCOMPARE(m_undo->count(), 0);
}

void tst_LayerCommands::framesAreScaledTogether()
{
    const FrameSnapshot frames({m_document->layerWithID(u"both"_s)});
    frames.applyRect(QRectF(0, 200, 150, 50), QRectF(0, 200, 300, 25));
    QCOMPARE(frameOf(*m_document->layerWithID(u"right"_s)), QRectF(200, 200, 100, 25));
    // Whole numbers are written as such.
    QCOMPARE(m_document->layerWithID(u"right"_s)->frame().value(u"x"_s).typeId(), int(QMetaType::LongLong));
    frames.applyOffset({});
    QCOMPARE(frameOf(*m_document->layerWithID(u"right"_s)), QRectF(100, 200, 50, 50));
}

QTEST_MAIN(tst_LayerCommands)
#include "tst_layercommands.moc"
