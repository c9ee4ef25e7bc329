// Pictures of unknown origin.

#include "platform/ImageDecoding.h"
#include "platform/KRImageData.h"
#include "platform/SVGBounds.h"

#include <QBuffer>
#include <QFile>
#include <QtEndian>
#include <QtTest>

#include <sys/resource.h>

using namespace Qt::StringLiterals;

class tst_ImageDecoding : public QObject
{
    Q_OBJECT

private slots:
    void formats_data();
    void formats();
    void vectorsAreSharp_data();
    void vectorsAreSharp();
    void noImage_data();
    void noImage();
    void brokenAtEveryByte_data();
    void brokenAtEveryByte();
    void largestOnes_data();
    void largestOnes();
    void boundsOfVectors_data();
    void boundsOfVectors();
};

namespace {

QByteArray encoded(const QSize &size, const char *format)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(QColor(200, 100, 50));
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::WriteOnly) || !image.save(&buffer, format, 100))
        qFatal("cannot encode as %s", format);
    return bytes;
}

quint32 checksum(const QByteArray &bytes)
{
    quint32 sum = 0xFFFFFFFF;
    for (const char byte : bytes) {
        sum ^= quint8(byte);
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum >> 1) ^ (0xEDB88320 & (0U - (sum & 1)));
    }
    return ~sum;
}

QByteArray pngChunk(const QByteArray &typeAndContent)
{
    QByteArray size(4, '\0'), sum(4, '\0');
    qToBigEndian(quint32(typeAndContent.size() - 4), size.data());
    qToBigEndian(checksum(typeAndContent), sum.data());
    return size + typeAndContent + sum;
}

/// A picture of black pixels, a bit each; one of more than 5,000 rows breaks off.
QByteArray blackPNG(quint32 width, quint32 height)
{
    QByteArray header("IHDR");
    header.resize(12);
    qToBigEndian(width, header.data() + 4);
    qToBigEndian(height, header.data() + 8);
    header += "\x01\x00\x00\x00\x00"_ba;
    const QByteArray rows(qsizetype((width + 7) / 8 + 1) * std::min(height, 5000U), '\0');
    return "\x89PNG\r\n\x1A\n"_ba + pngChunk(header) + pngChunk("IDAT" + qCompress(rows).mid(4)) + pngChunk("IEND");
}

QByteArray svg(const QByteArray &content, const QByteArray &attributes = "width=\"10\" height=\"20\"")
{
    return R"(<svg xmlns="http://www.w3.org/2000/svg" xmlns:xlink="http://www.w3.org/1999/xlink" )" + attributes + '>'
        + content + "</svg>";
}

const auto redSquare = R"(<rect width="10" height="20" fill="#f00"/>)"_ba;

} // namespace

void tst_ImageDecoding::formats_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("PNG") << encoded({3, 2}, "PNG");
    QTest::newRow("JPEG") << encoded({3, 2}, "JPEG");
}

void tst_ImageDecoding::formats()
{
    QFETCH(QByteArray, bytes);
    const auto image = KRImageData(bytes).image();
    QCOMPARE(image.size(), QSize(3, 2));
    QCOMPARE(image.devicePixelRatio(), 1.0);
    const auto colour = image.pixelColor(1, 1);
    QVERIFY(std::abs(colour.red() - 200) < 4 && std::abs(colour.green() - 100) < 4 && std::abs(colour.blue() - 50) < 4);
}

void tst_ImageDecoding::vectorsAreSharp_data()
{
    QTest::addColumn<QByteArray>("attributes");
    QTest::addColumn<QSize>("pixels");
    QTest::addColumn<double>("ratio");
    QTest::newRow("small") << "width=\"10\" height=\"20\""_ba << QSize(130, 260) << 13.0;
    QTest::newRow("large") << "width=\"512\" height=\"1024\" viewBox=\"0 0 10 20\""_ba << QSize(512, 1024) << 1.0;
    QTest::newRow("only a view box") << "viewBox=\"0 0 10 20\""_ba << QSize(130, 260) << 13.0;
}

void tst_ImageDecoding::vectorsAreSharp()
{
    QFETCH(QByteArray, attributes);
    QFETCH(double, ratio);
    const auto image = decodedImage(svg(redSquare, attributes));
    QTEST(image.size(), "pixels");
    QCOMPARE(image.devicePixelRatio(), ratio);
    QCOMPARE(image.pixelColor(image.width() / 2, image.height() / 2), QColor(Qt::red));
}

void tst_ImageDecoding::noImage_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("nothing") << ""_ba;
    QTest::newRow("text") << "no picture"_ba;
    QTest::newRow("only the beginning") << "\x89PNG\r\n\x1A\n"_ba;
    QTest::newRow("SVG that breaks off") << svg(redSquare).chopped(10);
    QTest::newRow("SVG of a negative size") << svg(redSquare, "width=\"-10\" height=\"20\"");
    QTest::newRow("SVG of 20,000 by 20,000") << svg(redSquare, "width=\"20000\" height=\"20000\"");
    QTest::newRow("SVG beyond numbers") << svg(redSquare, "width=\"1e30\" height=\"1e30\"");
    QTest::newRow("SVG with a text where there are no fonts") << svg("<text x=\"1\" y=\"9\">a</text>");
    QTest::newRow("SVG with a file inside") << svg("<image xlink:href=\"/dev/zero\" width=\"9\" height=\"9\"/>");
}

void tst_ImageDecoding::noImage()
{
    QFETCH(QByteArray, bytes);
    QVERIFY(decodedImage(bytes).isNull());
    QVERIFY(KRImageData(bytes).image().isNull());
}

void tst_ImageDecoding::brokenAtEveryByte_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("PNG") << encoded({9, 9}, "PNG");
    QTest::newRow("JPEG") << encoded({9, 9}, "JPEG");
    QTest::newRow("SVG") << svg(redSquare);
}

void tst_ImageDecoding::brokenAtEveryByte()
{
    QFETCH(QByteArray, bytes);
    for (qsizetype position = 0; position < bytes.size(); ++position) {
        (void)decodedImage(bytes.first(position));
        auto changed = bytes;
        changed[position] = char(changed[position] ^ 0xFF);
        const auto image = decodedImage(changed);
        QVERIFY(qint64(image.width()) * image.height() <= mostImagePixels);
    }
}

void tst_ImageDecoding::largestOnes_data()
{
    QTest::addColumn<quint32>("width");
    QTest::addColumn<quint32>("height");
    QTest::addColumn<bool>("isImage");
    QTest::newRow("as large as allowed") << 4096U << 4096U << true;
    QTest::newRow("a row more") << 4096U << 4097U << false;
    QTest::newRow("20,000 by 20,000") << 20'000U << 20'000U << false;
    QTest::newRow("a long line") << 20'000'000U << 1U << false;
}

void tst_ImageDecoding::largestOnes()
{
    QFETCH(quint32, width);
    QFETCH(quint32, height);
    const auto bytes = blackPNG(width, height);
    struct rusage before, after;
    ::getrusage(RUSAGE_SELF, &before);
    const auto image = decodedImage(bytes);
    ::getrusage(RUSAGE_SELF, &after);
    QTEST(!image.isNull(), "isImage");
    const auto kilobytes = after.ru_maxrss - before.ru_maxrss;
    QVERIFY2(kilobytes < 200'000, qPrintable(QString::number(kilobytes)));
}

void tst_ImageDecoding::boundsOfVectors_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("isWithin");
    const auto use = R"(<use xlink:href="#a"/>)"_ba;
    QTest::newRow("shapes") << svg(redSquare.repeated(100)) << true;
    QTest::newRow("some references") << svg(use.repeated(16)) << true;
    QTest::newRow("references of references") << svg(use.repeated(17)) << false;
    QTest::newRow("many elements") << svg("<g/>"_ba.repeated(19'999)) << true;
    QTest::newRow("too many elements") << svg("<g/>"_ba.repeated(20'000)) << false;
    QTest::newRow("deep") << svg("<g>"_ba.repeated(63) + "</g>"_ba.repeated(63)) << true;
    QTest::newRow("too deep") << svg("<g>"_ba.repeated(64) + "</g>"_ba.repeated(64)) << false;
    QTest::newRow("too long") << svg(QByteArray(1024 * 1024, ' ')) << false;
    QTest::newRow("a picture inside") << svg("<image/>") << false;
    QTest::newRow("with a prefix") << QByteArray("<s:svg xmlns:s=\"http://www.w3.org/2000/svg\"><s:image/></s:svg>")
                                   << false;
    QTest::newRow("entities") << "<!DOCTYPE svg [<!ENTITY a \"b\">]>" + svg("&a;") << false;
    QTest::newRow("usual document type")
        << "<!DOCTYPE svg PUBLIC \"-//W3C//DTD SVG 1.1//EN\" \"http://www.w3.org/Graphics/SVG/1.1/DTD/svg11.dtd\">"
            + svg(redSquare)
        << true;
    QTest::newRow("no XML") << "text"_ba << false;
}

void tst_ImageDecoding::boundsOfVectors()
{
    QFETCH(QByteArray, bytes);
    QTEST(isSVGWithinBounds(bytes, SVGTexts::Allowed), "isWithin");
    QTEST(isSVGWithinBounds(bytes, SVGTexts::Refused), "isWithin");
    QVERIFY(isSVGWithinBounds(svg("<text/>"), SVGTexts::Allowed));
    QVERIFY(!isSVGWithinBounds(svg("<text/>"), SVGTexts::Refused));
}

QTEST_GUILESS_MAIN(tst_ImageDecoding)
#include "tst_imagedecoding.moc"
