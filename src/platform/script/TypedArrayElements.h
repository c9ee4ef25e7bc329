#pragma once

#include <JavaScriptCore/JavaScript.h>
#include <QVariant>

/// What a typed array or an ArrayBuffer of a script holds: bytes as QByteArray, other numbers as a list of qlonglong or
/// double. Not for arrays of BigInt.
QVariant elementsOfTypedArray(JSContextRef context, JSObjectRef array, JSTypedArrayType type, JSValueRef *exception);
