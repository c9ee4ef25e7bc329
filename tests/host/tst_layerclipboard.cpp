// Cut, copy and paste with the keyboard.

#include "PluginWindowsFixture.h"

#include "editing/LayerClipboard.h"
#include "editing/LayerFrames.h"

#include <QClipboard>
#include <QLineEdit>
#include <QMimeData>

using namespace Qt::StringLiterals;

class tst_LayerClipboard : public QObject, private PluginWindowsFixture
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { removeFolder(); }

    void aCopyLiesBesideTheOriginal();
    void cutLayersComeBackToTheirPlace();
    void groupsTakeTheirLayersAlong();
    void intoAnotherDocument();
    void aboveWhatIsSelected();
    void whatIsNoLayer_data();
    void whatIsNoLayer();
    void textFieldsKeepTheirOwn();

private:
    static void press(DocumentWindow &window, Qt::Key key)
    {
        QCoreApplication::processEvents(); // in which the menus learn of the selection
        QTest::keyClick(&window, key, Qt::ControlModifier);
    }
    static QString outline(const QList<LayerPointer> &layers);
    static QString outline(DocumentWindow &window) { return outline(window.document()->layers()); }
};

void tst_LayerClipboard::init()
{
    makeFolder();
    QGuiApplication::clipboard()->clear();
}

/// "Box Disc Both(Left Right)"
QString tst_LayerClipboard::outline(const QList<LayerPointer> &layers)
{
    QStringList parts;
    for (const auto &layer : layers)
        parts.append(
            layer->layers().isEmpty() ? layer->name() : layer->name() + u'(' + outline(layer->layers()) + u')');
    return parts.join(u' ');
}

void tst_LayerClipboard::aCopyLiesBesideTheOriginal()
{
    auto &window = startActive();
    HostFixture::click(window, 50, 50);
    press(window, Qt::Key_C);
    press(window, Qt::Key_V);
    QCOMPARE(outline(window), u"Box Box Disc Both(Left Right)"_s);
    const auto copy = window.document()->selection().value(0);
    QCOMPARE(copy, window.document()->layers().at(1));
    QVERIFY(copy->id() != u"box"_s);
    QCOMPARE(frameOf(*copy), QRectF(10, 10, 100, 100));
    QCOMPARE(window.session().undo().count(), 1);
    QCOMPARE(window.session().undo().undoText(), u"Paste"_s);
    press(window, Qt::Key_Z);
    QCOMPARE(outline(window), u"Box Disc Both(Left Right)"_s);
}

void tst_LayerClipboard::cutLayersComeBackToTheirPlace()
{
    auto &window = startActive();
    HostFixture::click(window, 50, 50);
    press(window, Qt::Key_X);
    QCOMPARE(outline(window), u"Disc Both(Left Right)"_s);
    press(window, Qt::Key_V);
    QCOMPARE(outline(window), u"Disc Both(Left Right) Box"_s);
    QCOMPARE(frameOf(*layer(u"box"_s)), QRectF(0, 0, 100, 100));
}

void tst_LayerClipboard::groupsTakeTheirLayersAlong()
{
    auto &window = startActive();
    window.document()->setSelection({layer(u"right"_s), layer(u"both"_s)});
    press(window, Qt::Key_C);
    press(window, Qt::Key_V);
    QCOMPARE(outline(window), u"Box Disc Both(Left Right) Both(Left Right)"_s);
    const auto copies = window.document()->layers().last()->layers();
    QCOMPARE(frameOf(*copies.first()), QRectF(10, 210, 50, 50));
    QSet<QString> ids;
    const auto all = window.document()->allLayers();
    for (const auto &one : all)
        ids.insert(one->id());
    QCOMPARE(ids.size(), 8);
}

void tst_LayerClipboard::intoAnotherDocument()
{
    auto &first = startActive();
    HostFixture::click(first, 250, 50);
    press(first, Qt::Key_C);
    auto &second = *m_host->newDocument();
    second.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&second));
    press(second, Qt::Key_V);
    QCOMPARE(outline(second), u"Disc"_s);
    QCOMPARE(frameOf(*second.document()->layers().first()), QRectF(200, 0, 100, 100));
    QCOMPARE(outline(first), u"Box Disc Both(Left Right)"_s);
}

void tst_LayerClipboard::aboveWhatIsSelected()
{
    auto &window = startActive();
    HostFixture::click(window, 50, 50);
    press(window, Qt::Key_C);
    window.document()->setSelection({layer(u"left"_s)});
    press(window, Qt::Key_V);
    QCOMPARE(outline(window), u"Box Disc Both(Left Box Right)"_s);
}

void tst_LayerClipboard::whatIsNoLayer_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QByteArray>("data");

    QTest::newRow("text") << u"text/plain"_s << QByteArray("box");
    QTest::newRow("garbage") << u"application/x-korvan-layers+json"_s << QByteArray("{");
    QTest::newRow("no layers") << u"application/x-korvan-layers+json"_s << QByteArray(R"({"layers": []})");
    QTest::newRow("layers that are none") << u"application/x-korvan-layers+json"_s << QByteArray(R"({"layers": [5]})");
}

void tst_LayerClipboard::whatIsNoLayer()
{
    QFETCH(QString, type);
    QFETCH(QByteArray, data);
    auto &window = startActive();
    auto *const content = new QMimeData;
    content->setData(type, data);
    QGuiApplication::clipboard()->setMimeData(content);
    press(window, Qt::Key_V);
    QCOMPARE(outline(window), u"Box Disc Both(Left Right)"_s);
    QCOMPARE(window.session().undo().count(), 0);
}

void tst_LayerClipboard::textFieldsKeepTheirOwn()
{
    auto &window = startActive();
    HostFixture::click(window, 50, 50);
    auto &name = *window.inspector().findChild<QLineEdit *>();
    name.setFocus();
    name.selectAll();
    QTest::keyClick(&name, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), name.text());
    QVERIFY(!holdsLayers(QGuiApplication::clipboard()->mimeData()));
}

QTEST_MAIN(tst_LayerClipboard)
#include "tst_layerclipboard.moc"
