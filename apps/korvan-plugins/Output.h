#pragma once

#include "platform/KRError.h"
#include "platform/OrderedDictionary.h"

#include <QString>

/// What the program prints: one JSON document, or text for people.
class Output
{
public:
    enum class Format { Text, JSON };

    explicit Output(Format format);

    bool isJSON() const { return m_format == Format::JSON; }
    /// Whether escape sequences for colours make sense: on a terminal, unless the user does not want any.
    bool hasColours() const { return m_hasColours; }

    /// The one document; only as JSON.
    void document(const OrderedVariantDictionary &document);
    /// One of many documents, on a line of its own; only as JSON.
    void documentLine(const OrderedVariantDictionary &document);
    /// A line for people; only as text.
    void line(const QString &text = {});
    /// The failure of the operation, in either form.
    void error(const KRError &error);
    void error(const QString &message) { error({{}, 0, message}); }

    enum class Colour { Plain, Dim, Bold, Red, Green, Yellow };
    QString coloured(const QString &text, Colour colour) const;

private:
    Format m_format;
    bool m_hasColours;
};

/// Whether everything up to now was written; a full disk, for one, leaves a part.
bool isStandardOutputComplete();

/// A line on standard error.
void printToStandardError(const QString &line);
