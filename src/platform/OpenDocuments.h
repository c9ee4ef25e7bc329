#pragma once

#include "platform/Export.h"
#include "platform/script/ScriptObject.h"

#include <QList>

/// The documents that the application has open, for scripts to ask for. Main thread only.
///
/// Scripts work on them, and on their layers, through the operations of their ScriptClass: a document has name,
/// setName, userInfo, layers, allLayers, layerWithID, selection, setSelection and insertLayer(values, group, index); a
/// layer has id, type, name, setName, frame, setFrame, style, setStyle, text, setText, userInfo, layers, parent,
/// document, duplicate, remove and moveTo(group, index), where a null group is the document's top level. A document may
/// also tell its layerTypes and the styleKeys of a type, and a layer may have image and setImage; what is not told is
/// not checked.
class KORVAN_EXPORT OpenDocuments
{
public:
    virtual ~OpenDocuments();

    virtual QList<ScriptObjectPointer> documents() const = 0;
    /// The one that the user works in; null when there is none.
    virtual ScriptObjectPointer activeDocument() const = 0;
};
