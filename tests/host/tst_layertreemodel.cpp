#include "panels/LayerTreeModel.h"

#include "SampleDocument.h"
#include "document/DocumentFile.h"
#include "editing/DocumentUndoStack.h"
#include "panels/LayersPanel.h"

#include <QAbstractItemModelTester>
#include <QLineEdit>
#include <QMimeData>
#include <QtTest>

using namespace Qt::StringLiterals;

class tst_LayerTreeModel : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void showsTheTopmostFirst();
    void followsTheDocument();
    void followsUndo();
    void renames();
    void drops_data();
    void drops();
    void dropsNothingIntoItself();
    void dropsNothingOfAnotherDocument();
    void selectionGoesBothWays();
    void namesAreEditedInPlace();

private:
    QString rows(const QModelIndex &parent = {}) const;
    LayerPointer layer(const QString &id) const { return m_document->layerWithID(id); }

    std::shared_ptr<Document> m_document;
    std::unique_ptr<DocumentUndoStack> m_undo;
    std::unique_ptr<LayerTreeModel> m_model;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
};

void tst_LayerTreeModel::init()
{
    m_tester.reset();
    m_model.reset();
    m_undo.reset();
    m_document = documentFromJSON(sampleDocument).value();
    m_undo = std::make_unique<DocumentUndoStack>(m_document);
    m_model = std::make_unique<LayerTreeModel>(m_document);
    m_tester = std::make_unique<QAbstractItemModelTester>(m_model.get());
}

QString tst_LayerTreeModel::rows(const QModelIndex &parent) const
{
    QStringList texts;
    for (int row = 0; row < m_model->rowCount(parent); ++row) {
        const auto index = m_model->index(row, 0, parent);
        const auto inner = rows(index);
        texts.append(m_model->layerAt(index)->id() + (inner.isEmpty() ? QString() : u'(' + inner + u')'));
    }
    return texts.join(u' ');
}

void tst_LayerTreeModel::showsTheTopmostFirst()
{
    QCOMPARE(rows(), u"both(right left) disc box"_s);
    QCOMPARE(m_model->index(1, 0).data().toString(), u"Disc"_s);
    QVERIFY(!m_model->index(1, 0).data(Qt::DecorationRole).value<QIcon>().isNull());
    QCOMPARE(m_model->indexOf(layer(u"left"_s)).parent(), m_model->index(0, 0));
    layer(u"disc"_s)->setName(QString());
    QCOMPARE(m_model->index(1, 0).data().toString(), u"Oval"_s); // so that there is something to click
}

void tst_LayerTreeModel::followsTheDocument()
{
    const auto added = std::make_shared<Layer>(QVariantMap{{u"id"_s, u"new"_s}, {u"type"_s, u"oval"_s}});
    m_document->insertLayer(added, layer(u"both"_s), 1);
    QCOMPARE(rows(), u"both(right new left) disc box"_s);
    m_document->moveLayer(layer(u"box"_s), 2);
    QCOMPARE(rows(), u"box both(right new left) disc"_s);
    m_document->moveLayer(layer(u"box"_s), 0);
    QCOMPARE(rows(), u"both(right new left) disc box"_s);
    m_document->moveLayer(layer(u"disc"_s), layer(u"both"_s), 0);
    QCOMPARE(rows(), u"both(right new left disc) box"_s);
    m_document->moveLayer(layer(u"new"_s), nullptr, 0);
    QCOMPARE(rows(), u"both(right left disc) box new"_s);
    m_document->removeLayer(layer(u"both"_s));
    QCOMPARE(rows(), u"box new"_s);
    QSignalSpy changes(m_model.get(), &QAbstractItemModel::dataChanged);
    layer(u"box"_s)->setName(u"Crate"_s);
    QCOMPARE(changes.size(), 1);
    QCOMPARE(m_model->index(0, 0).data().toString(), u"Crate"_s);
}

void tst_LayerTreeModel::followsUndo()
{
    {
        const DocumentHistory::Group step(*m_document, u"Many"_s);
        m_document->moveLayer(layer(u"left"_s), nullptr, 0);
        m_document->removeLayer(layer(u"both"_s));
        m_document->duplicateLayer(layer(u"box"_s));
    }
    const auto changed = rows();
    m_undo->undo();
    QCOMPARE(rows(), u"both(right left) disc box"_s);
    m_undo->redo();
    QCOMPARE(rows(), changed);
}

void tst_LayerTreeModel::renames()
{
    const auto index = m_model->indexOf(layer(u"box"_s));
    QVERIFY(m_model->setData(index, u"Crate"_s));
    QCOMPARE(layer(u"box"_s)->name(), u"Crate"_s);
    QCOMPARE(m_undo->undoText(), u"Rename"_s);
    m_undo->undo();
    QCOMPARE(index.data().toString(), u"Box"_s);
}

void tst_LayerTreeModel::drops_data()
{
    QTest::addColumn<QStringList>("dragged");
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("group");
    QTest::addColumn<QString>("expected");

    // Rows as they are before: both disc box.
    QTest::newRow("to the top") << QStringList{u"box"_s} << 0 << QString() << u"box both(right left) disc"_s;
    QTest::newRow("between two") << QStringList{u"box"_s} << 1 << QString() << u"both(right left) box disc"_s;
    QTest::newRow("to the bottom") << QStringList{u"both"_s} << 3 << QString() << u"disc box both(right left)"_s;
    QTest::newRow("where it is") << QStringList{u"disc"_s} << 1 << QString() << u"both(right left) disc box"_s;
    QTest::newRow("right below itself") << QStringList{u"disc"_s} << 2 << QString() << u"both(right left) disc box"_s;
    QTest::newRow("on a group") << QStringList{u"box"_s} << -1 << u"both"_s << u"both(box right left) disc"_s;
    QTest::newRow("into a group") << QStringList{u"box"_s} << 1 << u"both"_s << u"both(right box left) disc"_s;
    QTest::newRow("out of a group") << QStringList{u"left"_s} << 3 << QString() << u"both(right) disc box left"_s;
    QTest::newRow("several stay in order")
        << QStringList{u"disc"_s, u"box"_s} << 0 << QString() << u"disc box both(right left)"_s;
    QTest::newRow("a layer goes along with its group")
        << QStringList{u"both"_s, u"left"_s} << 3 << QString() << u"disc box both(right left)"_s;
}

void tst_LayerTreeModel::drops()
{
    QFETCH(QStringList, dragged);
    QFETCH(int, row);
    QFETCH(QString, group);
    QModelIndexList indexes;
    for (const auto &id : std::as_const(dragged))
        indexes.append(m_model->indexOf(layer(id)));
    const std::unique_ptr<QMimeData> data(m_model->mimeData(indexes));
    const auto parent = group.isEmpty() ? QModelIndex() : m_model->indexOf(layer(group));
    QVERIFY(m_model->canDropMimeData(data.get(), Qt::MoveAction, row, 0, parent));
    QVERIFY(!m_model->dropMimeData(data.get(), Qt::MoveAction, row, 0, parent));
    QTEST(rows(), "expected");
    QVERIFY(m_undo->count() <= 1);
    if (m_undo->count() == 1)
        m_undo->undo();
    QCOMPARE(rows(), u"both(right left) disc box"_s);
}

void tst_LayerTreeModel::dropsNothingIntoItself()
{
    const auto both = m_model->indexOf(layer(u"both"_s));
    const std::unique_ptr<QMimeData> data(m_model->mimeData({both}));
    QVERIFY(!m_model->canDropMimeData(data.get(), Qt::MoveAction, 0, 0, both));
    m_model->dropMimeData(data.get(), Qt::MoveAction, 0, 0, both);
    QCOMPARE(rows(), u"both(right left) disc box"_s);
}

void tst_LayerTreeModel::dropsNothingOfAnotherDocument()
{
    const auto other = documentFromJSON(R"({"layers": [{"id": "elsewhere", "type": "oval"}]})").value();
    const LayerTreeModel otherModel(other);
    const std::unique_ptr<QMimeData> data(otherModel.mimeData({otherModel.index(0, 0)}));
    QVERIFY(!m_model->canDropMimeData(data.get(), Qt::MoveAction, 0, 0, {}));
}

void tst_LayerTreeModel::selectionGoesBothWays()
{
    LayersPanel panel(m_document);
    panel.resize(240, 300);
    panel.show();
    m_document->setSelection({layer(u"left"_s)});
    QTRY_COMPARE(panel.selectionModel()->selectedRows().size(), 1);
    QCOMPARE(panel.layerModel().layerAt(panel.selectionModel()->selectedRows().first()), layer(u"left"_s));
    QVERIFY(panel.isExpanded(panel.layerModel().indexOf(layer(u"both"_s)))); // so that it is seen

    const auto row = [&](const QString &id) {
        return panel.visualRect(panel.layerModel().indexOf(layer(id))).center();
    };
    QTest::mouseClick(panel.viewport(), Qt::LeftButton, {}, row(u"box"_s));
    QCOMPARE(m_document->selection(), QList<LayerPointer>{layer(u"box"_s)});
    QTest::mouseClick(panel.viewport(), Qt::LeftButton, Qt::ControlModifier, row(u"disc"_s));
    QCOMPARE(m_document->selection().size(), 2);
}

void tst_LayerTreeModel::namesAreEditedInPlace()
{
    LayersPanel panel(m_document);
    panel.resize(240, 300);
    panel.show();
    const auto index = panel.layerModel().indexOf(layer(u"box"_s));
    const auto place = panel.visualRect(index).center();
    QTest::mouseClick(panel.viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(panel.viewport(), Qt::LeftButton, {}, place);
    auto *const editor = panel.findChild<QLineEdit *>();
    QVERIFY(editor);
    QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(editor, u"Crate"_s);
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_COMPARE(layer(u"box"_s)->name(), u"Crate"_s);
    QCOMPARE(m_undo->count(), 1);
}

QTEST_MAIN(tst_LayerTreeModel)
#include "tst_layertreemodel.moc"
