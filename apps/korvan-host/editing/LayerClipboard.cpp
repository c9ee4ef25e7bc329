#include "editing/LayerClipboard.h"

#include "document/DocumentFile.h"
#include "editing/LayerCommands.h"
#include "editing/LayerFrames.h"
#include "editing/LayerTexts.h"

#include <QMimeData>

#include <algorithm>

namespace {

const auto layersType = QStringLiteral("application/x-korvan-layers+json");

bool isThere(const Document &document, const QList<LayerPointer> &layers)
{
    return std::any_of(layers.begin(), layers.end(),
        [&document](const LayerPointer &layer) { return document.layerWithID(layer->id()) != nullptr; });
}

} // namespace

QMimeData *copyOfSelection(const Document &document)
{
    const auto selected = orderedOutermostOf(document, document.selection());
    if (selected.isEmpty())
        return nullptr;
    auto *const data = new QMimeData;
    data->setData(layersType, jsonFromLayers(selected));
    return data;
}

bool holdsLayers(const QMimeData *data)
{
    return data && data->hasFormat(layersType);
}

void pasteLayers(Document &document, const QMimeData *data)
{
    if (!holdsLayers(data))
        return;
    const auto source = documentFromJSON(data->data(layersType));
    if (!source || source.value()->layers().isEmpty())
        return;
    constexpr QPointF besideTheOriginals(10, 10);
    const auto layers = source.value()->layers();
    const auto offset = isThere(document, layers) ? besideTheOriginals : QPointF();
    const DocumentHistory::Group step(document, LayerTexts::tr("Paste"));
    for (const auto &layer : layers)
        source.value()->removeLayer(layer);
    insertAboveSelection(document, layers);
    FrameSnapshot(layers).applyOffset(offset);
    document.setSelection(layers);
}
