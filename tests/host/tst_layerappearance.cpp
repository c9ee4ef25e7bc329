#include "canvas/LayerAppearance.h"

#include "document/Layer.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class tst_LayerAppearance : public QObject
{
    Q_OBJECT

private slots:
    void colours_data();
    void colours();
    void defaults();
    void senselessValuesCountAsAbsent();
};

void tst_LayerAppearance::colours_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QColor>("colour");
    QTest::addColumn<QString>("written");

    QTest::newRow("six digits") << u"#ff8000"_s << QColor(255, 128, 0) << u"#FF8000"_s;
    QTest::newRow("three digits") << u"#F80"_s << QColor(255, 136, 0) << u"#FF8800"_s;
    QTest::newRow("the opacity is behind") << u"#FF800080"_s << QColor(255, 128, 0, 128) << u"#FF800080"_s;
    QTest::newRow("a name") << u"white"_s << QColor(Qt::white) << u"#FFFFFF"_s;
    QTest::newRow("no colour") << u"paisley"_s << QColor() << QString();
    QTest::newRow("too many digits") << u"#FF8000FFFF"_s << QColor() << QString();
    QTest::newRow("empty") << QString() << QColor() << QString();
}

void tst_LayerAppearance::colours()
{
    QFETCH(QString, text);
    QFETCH(QColor, colour);
    QFETCH(QString, written);
    const auto read = colourFromText(text);
    QCOMPARE(read.isValid(), colour.isValid());
    if (!read.isValid())
        return;
    QCOMPARE(read.rgba(), colour.rgba());
    QCOMPARE(textFromColour(read), written);
}

void tst_LayerAppearance::defaults()
{
    const auto shape = appearanceOf(Layer({{u"type"_s, u"rectangle"_s}}));
    QVERIFY(shape.fill.isValid()); // else nobody would find it
    QCOMPARE(shape.borderWidth, 0.0);
    QCOMPARE(shape.opacity, 1.0);
    const auto bordered =
        appearanceOf(Layer({{u"type"_s, u"oval"_s}, {u"style"_s, QVariantMap{{u"border"_s, u"#000"_s}}}}));
    QVERIFY(!bordered.fill.isValid());
    QCOMPARE(bordered.borderWidth, 1.0);
    QCOMPARE(appearanceOf(Layer({{u"type"_s, u"group"_s}})).shape, LayerAppearance::Shape::None);
    QCOMPARE(appearanceOf(Layer({{u"type"_s, u"star"_s}})).shape, LayerAppearance::Shape::Rectangle);
}

void tst_LayerAppearance::senselessValuesCountAsAbsent()
{
    const QVariantMap style{{u"opacity"_s, 7}, {u"cornerRadius"_s, -3}, {u"fontSize"_s, u"large"_s},
        {u"fontWeight"_s, -5}, {u"textAlign"_s, 3}, {u"fill"_s, QVariantList()}};
    const auto look = appearanceOf(Layer({{u"type"_s, u"text"_s}, {u"text"_s, u"Hello"_s}, {u"style"_s, style}}));
    QCOMPARE(look.opacity, 1.0);
    QCOMPARE(look.cornerRadius, 0.0);
    QCOMPARE(look.font.pixelSize(), 14);
    QCOMPARE(int(look.font.weight()), 1);
    QCOMPARE(look.alignment, Qt::AlignLeft);
    QVERIFY(look.fill.isValid());
}

QTEST_MAIN(tst_LayerAppearance)
#include "tst_layerappearance.moc"
