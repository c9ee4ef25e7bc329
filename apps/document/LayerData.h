#pragma once

#include "document/Document.h"

#include "commands/DataSuppliers.h"

#include <functional>

// What plug-ins supply for layers.

/// The layers among these that data of the kind can be put into.
QList<LayerPointer> layersForData(const QList<LayerPointer> &layers, DataSupplier::Kind kind);

/// Puts each value into the layer of the same place, as one step of undo. Layers without a value, and those that were
/// removed while the plug-in was asked, are left out; `put` is called for the others.
void putDataIntoLayers(Document &document, const DataSupplier &supplier, const QList<LayerPointer> &layers,
    const DataSuppliers::Values &values,
    const std::function<void(const Layer &layer, const QString &value)> &put = nullptr);
