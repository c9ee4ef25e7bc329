#pragma once

#include <QByteArrayView>

/// Whether a property list is safe to be parsed by recursion and to be kept whole: its values are nested a few dozen
/// levels deep at most and, in the binary form whose values may be used many times over, amount to a size that fits
/// their file. Texts with zero characters, at which the parser gives up the whole program, are out of bounds too. It
/// answers this without recursion. True for bytes that are no property list at all: those fail later.
bool isPropertyListWithinBounds(QByteArrayView bytes);
