#include "platform/script/ScriptLocations.h"

#include "platform/FileURL.h"

#include <QRegularExpression>

#include <optional>

void ScriptLocations::setOffset(const QString &sourceURL, const SourceOffset &offset)
{
    m_offsets.insert(sourceURL, offset);
}

QString ScriptLocations::fileName(const QString &sourceURL) const
{
    if (!sourceURL.startsWith(u"file:"))
        return {};
    const auto path = pathFromFileURL(QUrl::fromEncoded(sourceURL.toUtf8()));
    for (const auto &folder : m_folders) {
        if (path.startsWith(folder + '/'))
            return displayPath(path.mid(folder.size() + 1));
    }
    return displayPath(path);
}

ScriptLocations::Frame ScriptLocations::frame(
    const QString &function, const QString &sourceURL, int line, int column) const
{
    const auto offset = m_offsets.value(sourceURL);
    if (line == offset.lines + 1 && column > offset.columns)
        column -= offset.columns;
    return {function, fileName(sourceURL), line > offset.lines ? line - offset.lines : line, column};
}

QString ScriptLocations::Frame::text() const
{
    const auto place = QStringLiteral("%1:%2:%3").arg(file, QString::number(line), QString::number(column));
    return function.isEmpty() ? place : QStringLiteral("%1 (%2)").arg(function, place);
}

QList<ScriptLocations::Frame> ScriptLocations::frames(const QString &stack) const
{
    // "function@URL:line:column"; function names and URLs may both hold an "@".
    static const QRegularExpression notation(QStringLiteral("^(.*?)@(file:.*):(\\d+):(\\d+)$"));
    static const QRegularExpression generatedName(QStringLiteral("^(global|eval|module) code$"));
    constexpr qsizetype deepestStack = 64;

    QList<Frame> frames;
    const auto lines = stack.split(u'\n', Qt::SkipEmptyParts);
    for (const auto &line : lines) {
        const auto match = notation.match(line);
        if (!match.hasMatch() || frames.size() >= deepestStack)
            continue;
        const auto function = match.captured(1);
        frames.append(frame(generatedName.match(function).hasMatch() ? QString() : function, match.captured(2),
            match.capturedView(3).toInt(), match.capturedView(4).toInt()));
    }
    return frames;
}

QString ScriptLocations::text(const QList<Frame> &frames)
{
    QStringList lines;
    for (const auto &frame : frames)
        lines.append(frame.text());
    return lines.join(u'\n');
}
