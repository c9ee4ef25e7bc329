// What a frame costs while a document of 5,000 layers is panned: the canvas beside the same shapes drawn with a bare
// painter, which knows what is seen before it is asked. A frame has 16.7 milliseconds at 60 frames a second.

#include "canvas/CanvasView.h"
#include "canvas/LayerPainter.h"
#include "document/DocumentFile.h"
#include "editing/DocumentUndoStack.h"
#include "support/Interleaved.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPainter>
#include <QRandomGenerator>
#include <QScrollBar>

#include <algorithm>

namespace {

constexpr QSize windowSize(1280, 800);
constexpr double spread = 6000; // of the layers, in points a side

QVariantMap randomLayer(QRandomGenerator &random, int number)
{
    static const QStringList types{QStringLiteral("rectangle"), QStringLiteral("oval"), QStringLiteral("rectangle"),
        QStringLiteral("text"), QStringLiteral("image")};
    const auto type = types[number % types.size()];
    const auto side = [&random] { return random.bounded(20, 240); };
    const auto colour = QStringLiteral("#%1").arg(random.bounded(0x1000000), 6, 16, QLatin1Char('0'));
    QVariantMap style{{QStringLiteral("fill"), colour}};
    if (number % 3 == 0)
        style.insert(QStringLiteral("border"), QStringLiteral("#202020"));
    if (number % 4 == 0)
        style.insert(QStringLiteral("cornerRadius"), 8);
    if (number % 7 == 0)
        style.insert(QStringLiteral("opacity"), 0.7);
    QVariantMap layer{{QStringLiteral("type"), type}, {QStringLiteral("style"), style},
        {QStringLiteral("frame"),
            QVariantMap{{QStringLiteral("x"), random.bounded(spread)}, {QStringLiteral("y"), random.bounded(spread)},
                {QStringLiteral("width"), side()}, {QStringLiteral("height"), side()}}}};
    if (type == u"text")
        layer.insert(QStringLiteral("text"), QStringLiteral("The quick brown fox jumps over the lazy dog"));
    return layer;
}

struct Canvas
{
    explicit Canvas(int layers)
        : document(std::make_shared<Document>())
    {
        QRandomGenerator random(1);
        for (int number = 0; number < layers; ++number)
            document->addLayer(std::make_shared<Layer>(randomLayer(random, number)), nullptr);
        document->history().clear();
        undo = std::make_unique<DocumentUndoStack>(document);
        view = std::make_unique<CanvasView>(document, *undo);
        view->resize(windowSize);
        view->show();
        QApplication::processEvents();
        const auto all = document->allLayers();
        for (const auto &layer : all) {
            painters.push_back(std::make_unique<LayerPainter>());
            painters.back()->setAppearance(appearanceOf(*layer));
        }
    }

    /// What a painter would do that is told where to draw, with the looks read beforehand.
    void drawBare(QPainter &painter, const QTransform &transform, const QRectF &exposed) const
    {
        painter.fillRect(painter.viewport(), Qt::lightGray);
        painter.setRenderHint(QPainter::Antialiasing);
        for (const auto &layer : painters) {
            const auto &frame = layer->appearance().frame;
            if (!frame.intersects(exposed))
                continue;
            painter.setTransform(QTransform::fromTranslate(frame.x(), frame.y()) * transform);
            layer->paint(painter, transform.m11(), layer->appearance().opacity);
        }
    }

    std::shared_ptr<Document> document;
    std::unique_ptr<DocumentUndoStack> undo;
    std::unique_ptr<CanvasView> view;
    std::vector<std::unique_ptr<LayerPainter>> painters;
};

/// The canvas scrolls by some pixels and shows the frame; the floor draws all that is seen into a picture.
void measurePan(benchmark::State &state, double zoom, QPoint step)
{
    Canvas canvas(int(state.range(0)));
    auto &view = *canvas.view;
    view.setZoom(zoom);
    view.centerOn(spread / 2, spread / 2);
    QApplication::processEvents();
    QImage picture(view.viewport()->size(), QImage::Format_ARGB32_Premultiplied);
    int frame = 0;
    qint64 slowest = 0;
    measureInterleaved(
        state,
        [&] {
            QPainter painter(&picture);
            const auto seen = view.mapToScene(view.viewport()->rect()).boundingRect();
            canvas.drawBare(painter, view.viewportTransform(), seen);
        },
        [&] {
            QElapsedTimer timer;
            timer.start();
            const int direction = ++frame / 40 % 2 == 0 ? 1 : -1; // to and fro
            view.horizontalScrollBar()->setValue(view.horizontalScrollBar()->value() + direction * step.x());
            view.verticalScrollBar()->setValue(view.verticalScrollBar()->value() + direction * step.y());
            QApplication::processEvents(); // paints the window
            slowest = std::max(slowest, timer.nsecsElapsed());
        });
    state.counters["slowest_us"] = double(slowest) / 1000;
}

void panAtActualSize(benchmark::State &state)
{
    measurePan(state, 1, {12, 7});
}

void panWithEverythingSeen(benchmark::State &state)
{
    measurePan(state, 0.125, {12, 7});
}

/// The whole window anew, as after a zoom.
void drawEverything(benchmark::State &state)
{
    Canvas canvas(int(state.range(0)));
    auto &view = *canvas.view;
    view.setZoom(0.125);
    view.centerOn(spread / 2, spread / 2);
    QApplication::processEvents();
    QImage picture(view.viewport()->size(), QImage::Format_ARGB32_Premultiplied);
    measureInterleaved(
        state,
        [&] {
            QPainter painter(&picture);
            canvas.drawBare(painter, view.viewportTransform(), QRectF(-spread, -spread, 3 * spread, 3 * spread));
        },
        [&] {
            view.viewport()->update();
            QApplication::processEvents();
        });
}

} // namespace

BENCHMARK(panAtActualSize)->Arg(5000)->Iterations(201)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(panWithEverythingSeen)->Arg(5000)->Iterations(201)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(drawEverything)->Arg(5000)->Iterations(51)->UseManualTime()->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
