#pragma once

#include <QByteArrayView>

/// Attributes of one element, namespace declarations among them.
inline constexpr int mostXMLAttributes = 32;

/// Whether QXmlStreamReader parses the bytes in time that is in proportion to their number, as long as elements are not
/// nested deeply: that reader compares all attributes of an element, and all declarations of a document type, with each
/// other, before anybody can stop it. Out of bounds are elements with more than `mostXMLAttributes` attributes,
/// document types with declarations of their own, and zero bytes (UTF-16 and UTF-32 among them: recode those before).
/// True for bytes that are no XML; the reader finds that out soon. Linear, without recursion; reentrant.
bool isXMLWithinBounds(QByteArrayView bytes);
