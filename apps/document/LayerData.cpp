#include "document/LayerData.h"

#include <QUrl>

#include <algorithm>

namespace {

void putInto(Layer &layer, DataSupplier::Kind kind, const QString &value)
{
    if (kind == DataSupplier::Kind::Text)
        layer.setText(value);
    else
        layer.setImage(value.startsWith(u'/') ? QUrl::fromLocalFile(value).toString(QUrl::FullyEncoded) : value);
}

} // namespace

QList<LayerPointer> layersForData(const QList<LayerPointer> &layers, DataSupplier::Kind kind)
{
    const auto type = kind == DataSupplier::Kind::Text ? QStringLiteral("text") : QStringLiteral("image");
    QList<LayerPointer> fitting;
    std::copy_if(layers.begin(), layers.end(), std::back_inserter(fitting),
        [&type](const LayerPointer &layer) { return layer->type() == type; });
    return fitting;
}

void putDataIntoLayers(Document &document, const DataSupplier &supplier, const QList<LayerPointer> &layers,
    const DataSuppliers::Values &values, const std::function<void(const Layer &layer, const QString &value)> &put)
{
    const DocumentHistory::Group step(document, supplier.name);
    for (qsizetype i = 0; i < std::min(layers.size(), values.size()); ++i) {
        const auto &layer = layers.at(i);
        const auto &value = values.at(i);
        if (!value || layer->document().get() != &document)
            continue;
        putInto(*layer, supplier.kind, *value);
        if (put)
            put(*layer, *value);
    }
}
