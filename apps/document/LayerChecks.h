#pragma once

#include "document/Layer.h"

#include <QVariantMap>

// What scripts may make of layers. Each throws a ScriptException that says what is possible instead.

/// Numbers that there are, of a frame's keys, and sizes that are not below 0.
void checkFrame(const QVariantMap &frame);
/// No number that is none, which no document could be saved with.
void checkStyle(const QVariantMap &style);
/// A type that there is, a name that is a text, and a frame and a style as above.
void checkNewLayer(const QVariantMap &values);
/// A group in which so many levels of layers find room; null is the top level.
void checkParent(const LayerPointer &parent, int levels = 1);
/// The layer and what is in it, for checkParent().
int levelsOf(const Layer &layer);
