#include "Output.h"

#include "ControlCharacters.h"
#include "platform/JSONText.h"

#include <cstdio>
#include <tuple>
#include <unistd.h>

namespace {

void print(std::FILE *stream, const QByteArray &text)
{
    // The stream remembers that it has failed.
    std::ignore = std::fwrite(text.constData(), 1, std::size_t(text.size()), stream);
    std::ignore = std::fflush(stream);
}

} // namespace

Output::Output(Format format)
    : m_format(format)
    , m_hasColours(::isatty(STDOUT_FILENO) && qEnvironmentVariableIsEmpty("NO_COLOR"))
{ }

void Output::document(const OrderedVariantDictionary &document)
{
    if (isJSON())
        print(stdout, jsonFromVariant(QVariant::fromValue(document), JSONStyle::Indented));
}

void Output::documentLine(const OrderedVariantDictionary &document)
{
    if (isJSON())
        print(stdout, jsonFromVariant(QVariant::fromValue(document), JSONStyle::Compact) + '\n');
}

void Output::line(const QList<Piece> &pieces)
{
    if (isJSON())
        return;
    QString line;
    for (const auto &piece : pieces)
        line += coloured(withoutControlCharacters(piece.text, ControlCharacters::AllButLayout), piece.colour);
    print(stdout, line.toUtf8() + '\n');
}

void Output::error(const KRError &error)
{
    if (!isJSON())
        return printToStandardError(QStringLiteral("korvan-plugins: ") + error.localizedDescription);
    document({{QStringLiteral("error"), QVariant::fromValue(errorDocument(error))}});
}

QString Output::coloured(const QString &text, Colour colour) const
{
    if (!m_hasColours)
        return text;
    switch (colour) {
    case Colour::Dim:
        return QStringLiteral("\033[2m%1\033[0m").arg(text);
    case Colour::Bold:
        return QStringLiteral("\033[1m%1\033[0m").arg(text);
    case Colour::Red:
        return QStringLiteral("\033[31m%1\033[0m").arg(text);
    case Colour::Green:
        return QStringLiteral("\033[32m%1\033[0m").arg(text);
    case Colour::Yellow:
        return QStringLiteral("\033[33m%1\033[0m").arg(text);
    case Colour::Plain:
        break;
    }
    return text;
}

OrderedVariantDictionary errorDocument(const KRError &error)
{
    OrderedVariantDictionary document;
    if (!error.domain.isEmpty()) {
        document.insert({QStringLiteral("domain"), error.domain});
        document.insert({QStringLiteral("code"), error.code});
    }
    document.insert({QStringLiteral("message"), error.localizedDescription});
    return document;
}

bool isStandardOutputComplete()
{
    return std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
}

void printToStandardError(const QString &line)
{
    print(stderr, withoutControlCharacters(line, ControlCharacters::AllButLayout).toUtf8() + '\n');
}
