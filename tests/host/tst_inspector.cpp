#include "panels/Inspector.h"

#include "SampleDocument.h"
#include "document/DocumentFile.h"
#include "editing/DocumentUndoStack.h"
#include "editing/LayerFrames.h"
#include "panels/ColourButton.h"
#include "panels/JSONTree.h"
#include "panels/NumberField.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QtTest>

using namespace Qt::StringLiterals;

class tst_Inspector : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void showsTheSelection();
    void renames();
    void changesFrames();
    void framesOfGroupsTakeTheirLayersAlong();
    void changesStyles();
    void coloursCanBeRemoved();
    void changesAllThatAreSelected();
    void changesTexts();
    void whatIsBeingEnteredIsForTheLayerThatWasShown();
    void showsPluginData();
    void followsChangesByOthers();

private:
    LayerPointer layer(const QString &id) const { return m_document->layerWithID(id); }
    void select(const QStringList &ids);
    template <class Field>
    Field *field(const QString &name) const;
    void enter(NumberField &field, const QString &text) const;

    std::shared_ptr<Document> m_document;
    std::unique_ptr<DocumentUndoStack> m_undo;
    std::unique_ptr<Inspector> m_inspector;
};

void tst_Inspector::init()
{
    m_inspector.reset();
    m_undo.reset();
    m_document = documentFromJSON(sampleDocument).value();
    m_undo = std::make_unique<DocumentUndoStack>(m_document);
    m_inspector = std::make_unique<Inspector>(m_document);
    m_inspector->resize(280, 700);
    m_inspector->show();
    m_inspector->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_inspector.get()));
}

void tst_Inspector::select(const QStringList &ids)
{
    QList<LayerPointer> layers;
    for (const auto &id : ids)
        layers.append(layer(id));
    m_document->setSelection(layers);
    QCoreApplication::processEvents();
}

template <class Field>
Field *tst_Inspector::field(const QString &name) const
{
    const auto fields = m_inspector->findChildren<Field *>();
    for (auto *const one : fields) {
        if (one->accessibleName() == name)
            return one;
    }
    return nullptr;
}

void tst_Inspector::enter(NumberField &field, const QString &text) const
{
    field.setFocus();
    field.selectAll();
    QTest::keyClicks(&field, text);
    QTest::keyClick(&field, Qt::Key_Return);
}

void tst_Inspector::showsTheSelection()
{
    QVERIFY(!field<QLineEdit>(u"Name"_s)->isVisible());
    select({u"disc"_s});
    QVERIFY(field<QLineEdit>(u"Name"_s)->isVisible());
    QCOMPARE(field<QLineEdit>(u"Name"_s)->text(), u"Disc"_s);
    QCOMPARE(field<NumberField>(u"Horizontal position"_s)->text(), u"200"_s);
    QVERIFY(!field<NumberField>(u"Corner radius"_s)->isVisible()); // ovals have none
    QVERIFY(!field<QPlainTextEdit>(u"Text"_s)->isVisible());
    select({u"box"_s});
    QVERIFY(field<NumberField>(u"Corner radius"_s)->isVisible());
    select({});
    QVERIFY(!field<QLineEdit>(u"Name"_s)->isVisible());
    QCOMPARE(m_undo->count(), 0);
}

void tst_Inspector::renames()
{
    select({u"box"_s});
    auto *const name = field<QLineEdit>(u"Name"_s);
    name->setFocus();
    name->selectAll();
    QTest::keyClicks(name, u"Crate"_s);
    QTest::keyClick(name, Qt::Key_Return);
    QCOMPARE(layer(u"box"_s)->name(), u"Crate"_s);
    QCOMPARE(m_undo->count(), 1);
    QCOMPARE(m_undo->undoText(), u"Rename"_s);
}

void tst_Inspector::changesFrames()
{
    select({u"box"_s});
    enter(*field<NumberField>(u"Horizontal position"_s), u"12.5"_s);
    enter(*field<NumberField>(u"Height"_s), u"40"_s);
    QCOMPARE(frameOf(*layer(u"box"_s)), QRectF(12.5, 0, 100, 40));
    QCOMPARE(m_undo->count(), 2);
}

void tst_Inspector::framesOfGroupsTakeTheirLayersAlong()
{
    select({u"both"_s});
    enter(*field<NumberField>(u"Vertical position"_s), u"300"_s);
    QCOMPARE(frameOf(*layer(u"right"_s)), QRectF(100, 300, 50, 50));
    enter(*field<NumberField>(u"Width"_s), u"300"_s);
    QCOMPARE(frameOf(*layer(u"right"_s)), QRectF(200, 300, 100, 50));
}

void tst_Inspector::changesStyles()
{
    select({u"box"_s});
    enter(*field<NumberField>(u"Opacity"_s), u"50"_s);
    enter(*field<NumberField>(u"Corner radius"_s), u"8"_s);
    emit field<ColourButton>(u"Fill"_s)->colourChosen(QColor(255, 0, 0));
    QCOMPARE(layer(u"box"_s)->style(),
        (QVariantMap{{u"opacity"_s, 0.5}, {u"cornerRadius"_s, 8}, {u"fill"_s, u"#FF0000"_s}}));
    QCOMPARE(m_undo->count(), 3);
}

void tst_Inspector::coloursCanBeRemoved()
{
    layer(u"box"_s)->setStyle({{u"fill"_s, u"#FF0000"_s}});
    select({u"box"_s});
    auto *const button = field<ColourButton>(u"Fill"_s);
    QCOMPARE(button->colour(), QColor(Qt::red));
    button->setFocus();
    QTest::keyClick(button, Qt::Key_Delete);
    QVERIFY(!layer(u"box"_s)->style().contains(u"fill"_s));
}

void tst_Inspector::changesAllThatAreSelected()
{
    select({u"box"_s, u"disc"_s});
    QVERIFY(!field<QLineEdit>(u"Name"_s)->isEnabled());
    enter(*field<NumberField>(u"Corner radius"_s), u"8"_s);
    QVERIFY(layer(u"box"_s)->style().contains(u"cornerRadius"_s));
    QVERIFY(!layer(u"disc"_s)->style().contains(u"cornerRadius"_s)); // it has no use for that
    enter(*field<NumberField>(u"Vertical position"_s), u"5"_s);
    QCOMPARE(frameOf(*layer(u"disc"_s)).y(), 5.0);
    QCOMPARE(m_undo->count(), 2);
}

void tst_Inspector::changesTexts()
{
    const auto text = std::make_shared<Layer>(QVariantMap{{u"id"_s, u"text"_s}, {u"type"_s, u"text"_s}});
    m_document->addLayer(text, nullptr);
    select({u"text"_s});
    m_inspector->editText();
    auto *const editor = field<QPlainTextEdit>(u"Text"_s);
    QTRY_VERIFY(editor->hasFocus());
    QTest::keyClicks(editor, u"Hello"_s);
    editor->clearFocus();
    QCOMPARE(text->text(), u"Hello"_s);
    QCOMPARE(m_undo->undoText(), u"Text"_s);
}

void tst_Inspector::whatIsBeingEnteredIsForTheLayerThatWasShown()
{
    select({u"box"_s});
    auto *const name = field<QLineEdit>(u"Name"_s);
    name->setFocus();
    name->selectAll();
    QTest::keyClicks(name, u"Crate"_s);
    select({u"disc"_s});
    QCOMPARE(layer(u"box"_s)->name(), u"Crate"_s);
    QCOMPARE(layer(u"disc"_s)->name(), u"Disc"_s);
    QCOMPARE(name->text(), u"Disc"_s);
}

void tst_Inspector::showsPluginData()
{
    layer(u"box"_s)->setUserInfo(
        QVariantMap{{u"com.example.a"_s, QVariantMap{{u"list"_s, QVariantList{1, true, u"x"_s}}}}});
    select({u"box"_s});
    auto *const tree = m_inspector->findChild<JSONTree *>();
    QVERIFY(tree->isVisible());
    auto *const plugin = tree->topLevelItem(0);
    QCOMPARE(plugin->text(0), u"com.example.a"_s);
    QCOMPARE(plugin->child(0)->text(0), u"list"_s);
    QCOMPARE(plugin->child(0)->child(2)->text(1), u"\"x\""_s);
    QVERIFY(!(plugin->child(0)->child(2)->flags() & Qt::ItemIsEditable)
        || tree->editTriggers() == QAbstractItemView::NoEditTriggers);
    select({u"disc"_s});
    QVERIFY(!tree->isVisible());
}

void tst_Inspector::followsChangesByOthers()
{
    select({u"box"_s});
    layer(u"box"_s)->setFrame({{u"x"_s, 77}});
    QTRY_COMPARE(field<NumberField>(u"Horizontal position"_s)->value(), 77.0);
    QCOMPARE(m_undo->count(), 1);
}

QTEST_MAIN(tst_Inspector)
#include "tst_inspector.moc"
