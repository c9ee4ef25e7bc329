#include "TestLog.h"

#include <QRegularExpression>
#include <QVariantList>

namespace {

const auto uncaught = QStringLiteral("Uncaught script exception: ");
const auto callMark = QStringLiteral("\n    at ");

/// Empty for an entry that has only a text.
QVariantMap partsOf(const QVariantMap &entry)
{
    const auto payload = entry.value(QStringLiteral("payload")).toList();
    const auto error = payload.value(0).toMap();
    return error.contains(QStringLiteral("stack")) && error.contains(QStringLiteral("line")) ? error : QVariantMap();
}

UncaughtError errorFromText(const QString &text)
{
    auto parts = text.split(callMark);
    const auto message = parts.takeFirst();
    return {message, {}, 0, 0, parts};
}

} // namespace

QString textOfEntry(const QVariantMap &entry)
{
    return entry.value(QStringLiteral("stringValue")).toString();
}

bool isUncaughtError(const QVariantMap &entry)
{
    if (entry.value(QStringLiteral("level")).toString() != u"error")
        return false;
    const auto text = textOfEntry(entry);
    return !partsOf(entry).isEmpty() || text.startsWith(uncaught) || text.startsWith(u"Error in command ");
}

QString textOfUncaughtError(const QVariantMap &entry)
{
    const auto text = textOfEntry(entry);
    return text.startsWith(uncaught) ? text.mid(uncaught.size()) : text;
}

UncaughtError uncaughtError(const QVariantMap &entry)
{
    const auto parts = partsOf(entry);
    if (parts.isEmpty())
        return errorFromText(textOfUncaughtError(entry));
    return {parts.value(QStringLiteral("message")).toString(), parts.value(QStringLiteral("file")).toString(),
        parts.value(QStringLiteral("line")).toInt(), parts.value(QStringLiteral("column")).toInt(),
        parts.value(QStringLiteral("stack")).toString().split(u'\n', Qt::SkipEmptyParts)};
}

CallPlace placeOfCall(const QString &call)
{
    static const QRegularExpression notation(QStringLiteral("^(?:.* \\()?(.*?):(\\d+):(\\d+)\\)?$"));
    const auto match = notation.match(call);
    return {match.captured(1), match.captured(2).toInt(), match.captured(3).toInt()};
}
