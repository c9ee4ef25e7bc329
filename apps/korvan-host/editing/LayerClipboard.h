#pragma once

#include "document/Document.h"

class QMimeData;

// Layers on the clipboard, as JSON of their own type: of this program only.

/// The selected layers, in the document's order; null when there are none. The caller owns it.
QMimeData *copyOfSelection(const Document &document);
bool holdsLayers(const QMimeData *data);
/// Puts the layers above what is selected, and selects them: one step of undo. They keep their places, unless the
/// originals are still there; copies lie beside those. Nothing for data that are no layers.
void pasteLayers(Document &document, const QMimeData *data);
