// The picture for dialogs, beside one that is computed from the shapes alone.

#include "bundles/AlertIcon.h"
#include "bundles/KRPluginBundle.h"
#include "support/TestEnvironment.h"

#include <QtTest>

#include <cmath>
#include <vector>

using namespace Qt::StringLiterals;

class tst_AlertIcon : public QObject
{
    Q_OBJECT

private slots:
    void asComputed_data();
    void asComputed();
    void fillsTheThumbnail_data();
    void fillsTheThumbnail();
    void translucentPictureIsDrawnTwice();
    void ratios_data();
    void ratios();
    void ofABundle();
};

namespace {

/// How much of each pixel of a square picture is covered.
struct Field
{
    int side;
    std::vector<double> values = std::vector<double>(std::size_t(side * side));

    double &at(int x, int y) { return values[std::size_t(y * side + x)]; }
    double at(int x, int y) const
    {
        const bool isInside = x >= 0 && y >= 0 && x < side && y < side;
        return isInside ? values[std::size_t(y * side + x)] : 0;
    }
};

/// The thumbnail: 56 points from (4, 0) with corners of 7 points, counted point by point.
Field thumbnailField(int scale)
{
    constexpr int points = 32;
    const double left = 4 * scale, right = 60 * scale, bottom = 56 * scale, radius = 7 * scale;
    Field field{64 * scale};
    for (int y = 0; y < 56 * scale; ++y) {
        for (int x = 4 * scale; x < 60 * scale; ++x) {
            int inside = 0;
            for (int point = 0; point < points * points; ++point) {
                const double across = x + (point % points + 0.5) / points;
                const double down = y + (double(point / points) + 0.5) / points;
                const double fromCornerAcross = std::max({0.0, left + radius - across, across - right + radius});
                const double fromCornerDown = std::max({0.0, radius - down, down - bottom + radius});
                inside += fromCornerAcross * fromCornerAcross + fromCornerDown * fromCornerDown <= radius * radius;
            }
            field.at(x, y) = double(inside) / (points * points);
        }
    }
    return field;
}

/// The field blurred and moved down, pixel by pixel: what each pixel's square around adds to the middle of this one,
/// the square's share of the Gaussian counted point by point.
Field shadowField(const Field &field, double deviation, int down)
{
    constexpr int points = 16;
    const int reach = int(std::ceil(4 * deviation));
    Field kernel{2 * reach + 1};
    for (int index = 0; index < kernel.side * kernel.side; ++index) {
        for (int point = 0; point < points * points; ++point) {
            const double across = index % kernel.side - reach - 0.5 + (point % points + 0.5) / points;
            const double along = index / kernel.side - reach - 0.5 + (double(point / points) + 0.5) / points;
            kernel.values[std::size_t(index)] +=
                std::exp(-(across * across + along * along) / (2 * deviation * deviation));
        }
    }
    const double all = points * points * 2 * std::acos(-1.0) * deviation * deviation;
    Field shadow{field.side};
    for (int y = 0; y < field.side; ++y) {
        for (int x = 0; x < field.side; ++x) {
            double sum = 0;
            for (int row = -reach; row <= reach; ++row) {
                for (int column = -reach; column <= reach; ++column)
                    sum += field.at(x + column, y - down + row) * kernel.at(column + reach, row + reach);
            }
            shadow.at(x, y) = sum / all;
        }
    }
    return shadow;
}

/// Alpha and the portion of the picture's own colour in it, for a point of the picture and both of its shadows.
std::pair<double, double> drawnTwice(double picture, double wideShadow, double narrowShadow)
{
    double alpha = 0, colour = 0;
    for (const double shadow : {0.08 * wideShadow, 0.15 * narrowShadow}) {
        alpha = shadow + alpha * (1 - shadow);
        colour = colour * (1 - shadow);
        alpha = picture + alpha * (1 - picture);
        colour = picture + colour * (1 - picture);
    }
    return {255 * alpha, 255 * colour};
}

QImage filled(const QSize &size, const QColor &colour)
{
    QImage image(size, QImage::Format_ARGB32);
    image.fill(colour);
    return image;
}

} // namespace

void tst_AlertIcon::asComputed_data()
{
    QTest::addColumn<int>("scale");
    QTest::addColumn<QSize>("source");
    QTest::newRow("1x") << 1 << QSize(56, 56);
    QTest::newRow("1x from a large picture") << 1 << QSize(512, 512);
    QTest::newRow("2x") << 2 << QSize(112, 112);
    QTest::newRow("2x from a tiny picture") << 2 << QSize(1, 1);
    QTest::newRow("3x") << 3 << QSize(100, 100);
}

void tst_AlertIcon::asComputed()
{
    QFETCH(int, scale);
    QFETCH(QSize, source);
    const auto icon = alertIconOf(filled(source, QColor(255, 0, 0)), scale);
    QCOMPARE(icon.size(), QSize(64, 64) * scale);
    QCOMPARE(icon.devicePixelRatio(), qreal(scale));
    const auto picture = thumbnailField(scale);
    const auto wide = shadowField(picture, 2.0 * scale, 4 * scale);
    const auto narrow = shadowField(picture, 0.5 * scale, 1 * scale);
    double highest = 0;
    for (int y = 0; y < icon.height(); ++y) {
        for (int x = 0; x < icon.width(); ++x) {
            const auto [alpha, colour] = drawnTwice(picture.at(x, y), wide.at(x, y), narrow.at(x, y));
            const auto pixel = reinterpret_cast<const QRgb *>(icon.constScanLine(y))[x]; // premultiplied
            highest = std::max({highest, std::abs(qAlpha(pixel) - alpha), std::abs(qRed(pixel) - colour)});
            QVERIFY2(std::abs(qAlpha(pixel) - alpha) <= 2 && std::abs(qRed(pixel) - colour) <= 2,
                qPrintable(u"%1, %2: %3 %4 instead of %5 %6"_s.arg(x)
                               .arg(y)
                               .arg(qAlpha(pixel))
                               .arg(qRed(pixel))
                               .arg(alpha)
                               .arg(colour)));
            QVERIFY(qGreen(pixel) == 0 && qBlue(pixel) == 0);
        }
    }
    qInfo("furthest from what is computed: %.2f of 255", highest);
}

void tst_AlertIcon::fillsTheThumbnail_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QRect>("kept");
    QTest::newRow("wide") << QSize(200, 100) << QRect(50, 0, 100, 100);
    QTest::newRow("high") << QSize(100, 200) << QRect(0, 50, 100, 100);
    QTest::newRow("square") << QSize(100, 100) << QRect(0, 0, 100, 100);
    QTest::newRow("a line") << QSize(1000, 1) << QRect(499, 0, 2, 1);
}

void tst_AlertIcon::fillsTheThumbnail()
{
    QFETCH(QSize, size);
    QFETCH(QRect, kept);
    auto source = filled(size, Qt::red);
    for (int y = 0; y < kept.height(); ++y) {
        for (int x = 0; x < kept.width(); ++x)
            source.setPixelColor(kept.topLeft() + QPoint(x, y), Qt::blue);
    }
    const auto icon = alertIconOf(source, 1);
    for (const auto &point : {QPoint(5, 28), QPoint(58, 28), QPoint(32, 1), QPoint(32, 54), QPoint(32, 28)})
        QCOMPARE(icon.pixelColor(point), QColor(Qt::blue));
}

void tst_AlertIcon::translucentPictureIsDrawnTwice()
{
    const auto icon = alertIconOf(filled({56, 56}, QColor(0, 255, 0, 128)), 1);
    // In the middle the shadows are as dark as the picture is dense.
    const double picture = 128 / 255.0;
    const auto [alpha, colour] = drawnTwice(picture, picture, picture);
    const auto pixel = reinterpret_cast<const QRgb *>(icon.constScanLine(28))[32];
    QVERIFY2(std::abs(qAlpha(pixel) - alpha) <= 2, qPrintable(QString::number(qAlpha(pixel))));
    QVERIFY2(std::abs(qGreen(pixel) - colour) <= 2, qPrintable(QString::number(qGreen(pixel))));
}

void tst_AlertIcon::ratios_data()
{
    QTest::addColumn<double>("ratio");
    QTest::addColumn<double>("used");
    QTest::newRow("fraction") << 1.5 << 1.5;
    QTest::newRow("largest") << 8.0 << 8.0;
    QTest::newRow("too large") << 1e9 << 8.0;
    QTest::newRow("too small") << 0.1 << 1.0;
    QTest::newRow("none") << 0.0 << 1.0;
    QTest::newRow("negative") << -2.0 << 1.0;
    QTest::newRow("no number") << std::nan("") << 1.0;
}

void tst_AlertIcon::ratios()
{
    QFETCH(double, ratio);
    QFETCH(double, used);
    for (const auto &source : {filled({10, 10}, Qt::red), QImage()}) {
        const auto icon = alertIconOf(source, ratio);
        QCOMPARE(icon.devicePixelRatio(), used);
        QCOMPARE(icon.size(), QSize(int(64 * used), int(64 * used)));
        QCOMPARE(icon.pixelColor(icon.rect().center()).alpha(), source.isNull() ? 0 : 255);
    }
}

void tst_AlertIcon::ofABundle()
{
    TestEnvironment environment;
    const auto with = KRPluginBundle::initWithName(u"A"_s, u"a"_s, {}, filled({7, 7}, Qt::blue));
    const auto without = KRPluginBundle::initWithName(u"B"_s, u"b"_s, {}, {});
    QCOMPARE(with->icon(), filled({7, 7}, Qt::blue));
    QVERIFY(without->icon().isNull());
    QCOMPARE(with->alertIcon(2), alertIconOf(filled({7, 7}, Qt::blue), 2));

    // A host without the picture: a dialog's place for it stays empty.
    const auto empty = without->alertIcon();
    QCOMPARE(empty.size(), QSize(64, 64));
    for (int y = 0; y < 64; ++y) {
        for (int x = 0; x < 64; ++x)
            QCOMPARE(empty.pixelColor(x, y).alpha(), 0);
    }

    environment.images.insert(u"img-plugin-thumbnail-alert-112"_s, filled({112, 112}, Qt::green));
    QCOMPARE(without->alertIcon().size(), QSize(64, 64));
    QCOMPARE(without->alertIcon(), alertIconOf(filled({112, 112}, Qt::green), 1));
    QCOMPARE(with->alertIcon(), alertIconOf(filled({7, 7}, Qt::blue), 1));
}

QTEST_APPLESS_MAIN(tst_AlertIcon)
#include "tst_alerticon.moc"
