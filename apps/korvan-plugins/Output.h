#pragma once

#include "platform/KRError.h"
#include "platform/OrderedDictionary.h"

#include <QList>
#include <QString>

/// What the program prints: one JSON document, or text for people.
class Output
{
public:
    enum class Format { Text, JSON };

    explicit Output(Format format);

    bool isJSON() const { return m_format == Format::JSON; }
    /// The one document; only as JSON.
    void document(const OrderedVariantDictionary &document);
    /// One of many documents, on a line of its own; only as JSON.
    void documentLine(const OrderedVariantDictionary &document);
    enum class Colour { Plain, Dim, Bold, Red, Green, Yellow };
    struct Piece
    {
        QString text;
        Colour colour = Colour::Plain;
    };

    /// A line for people; only as text. Coloured on a terminal, unless the user wants no colours. Texts of plug-ins
    /// have no power over the terminal: all their control characters but tabs and line ends are shown as escapes.
    void line(const QList<Piece> &pieces);
    void line(const QString &text = {}, Colour colour = Colour::Plain) { line({{text, colour}}); }
    /// The failure of the operation, in either form.
    void error(const KRError &error);
    void error(const QString &message) { error({{}, 0, message}); }

private:
    QString coloured(const QString &text, Colour colour) const;

    Format m_format;
    bool m_hasColours;
};

/// A failure as it stands in a document: domain and code where there are, and the message.
OrderedVariantDictionary errorDocument(const KRError &error);

/// Whether everything up to now was written; a full disk, for one, leaves a part.
bool isStandardOutputComplete();

/// A line on standard error, with control characters as in the lines for people.
void printToStandardError(const QString &line);
