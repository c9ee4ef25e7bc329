#pragma once

#include "document/Document.h"

#include <QPointF>

// What the menus do with layers. Each is one step of undo, named in the user's words, and does nothing where there is
// nothing to do.

enum class StackingStep { Forward, Backward, ToFront, ToBack };

/// The user's word for a type of layer.
QString typeTitle(const QString &type);

/// A new layer of that type around the point, above what is selected, and selected itself. `keys` stand over the usual
/// ones.
LayerPointer insertLayer(Document &document, const QString &type, QPointF centre, const QVariantMap &keys = {});
/// Puts layers that are in no document above what is selected, the first one lowest.
void insertAboveSelection(Document &document, const QList<LayerPointer> &layers);
void duplicateSelection(Document &document);
void removeSelection(Document &document);
/// Puts the selected layers into a new group, in the place of the topmost of them.
void groupSelection(Document &document);
/// Takes the layers out of the selected groups, and the groups away.
void ungroupSelection(Document &document);
void restackSelection(Document &document, StackingStep step);
void selectAll(Document &document);
void moveSelection(Document &document, QPointF offset);
