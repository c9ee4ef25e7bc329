#include "platform/script/ScriptLocations.h"

#include "platform/FileURL.h"
#include "platform/TextFile.h"
#include "platform/script/ContainedPath.h"

#include <QRegularExpression>

#include <algorithm>
#include <vector>

void ScriptLocations::setSource(const QString &sourceURL, const ScriptSource &source)
{
    m_sources.insert(sourceURL, source);
    m_details.remove(sourceURL);
}

QString ScriptLocations::nameOfFile(const QByteArray &path) const
{
    qsizetype innermost = 0; // folders may be in each other
    for (const auto &folder : m_folders) {
        if (isContainedPath(path, folder))
            innermost = std::max(innermost, folder.size() + 1);
    }
    return displayPath(path.mid(innermost));
}

QString ScriptLocations::fileName(const QString &sourceURL) const
{
    return sourceURL.startsWith(u"file:") ? nameOfFile(pathFromFileURL(QUrl::fromEncoded(sourceURL.toUtf8())))
                                          : QString();
}

const ScriptLocations::Details &ScriptLocations::detailsOf(const QString &sourceURL, const ScriptSource &source) const
{
    auto &known = m_details[sourceURL];
    if (known)
        return *known;
    auto details = std::make_shared<Details>();
    const auto path = pathFromFileURL(QUrl::fromEncoded(sourceURL.toUtf8()));
    const auto text = source.text ? source.text : path.isEmpty() ? std::nullopt : readTextFile(path);
    if (text && source.isRewritten)
        details->columns = std::make_unique<ColumnsBeforeRewriting>(*text);
    if (text)
        details->map = readSourceMap(*text, path, source.folder);
    known = details;
    return *known;
}

ScriptLocations::Position ScriptLocations::authorsPosition(const QString &sourceURL, Position position) const
{
    const auto found = m_sources.constFind(sourceURL);
    if (found == m_sources.constEnd())
        return position;
    auto [line, column] = position;
    if (line == 1 && column > found->headColumns)
        column -= found->headColumns;
    if (found->isRewritten) {
        if (const auto &columns = detailsOf(sourceURL, *found).columns)
            column = columns->columnBefore(line, column);
    }
    const auto &offset = found->offset;
    if (line == offset.lines + 1 && column > offset.columns)
        column -= offset.columns;
    return {line > offset.lines ? line - offset.lines : line, column};
}

ScriptLocations::Place ScriptLocations::place(
    const QString &function, const QString &sourceURL, Position position) const
{
    const auto [line, column] = authorsPosition(sourceURL, position);
    const Place generated{{function, fileName(sourceURL), line, column}, {}, false};
    const auto found = m_sources.constFind(sourceURL);
    if (found == m_sources.constEnd())
        return generated;
    const auto map = detailsOf(sourceURL, *found).map;
    const auto original = map ? map->map.find(line, column) : std::nullopt;
    if (!original)
        return generated;
    const auto file = nameOfFile(map->pathOf(original->source));
    return {{function, file, original->line, original->column}, original->name, true};
}

ScriptLocations::Frame ScriptLocations::frame(
    const QString &function, const QString &sourceURL, int line, int column) const
{
    return place(function, sourceURL, {line, column}).frame;
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
    bool isCalledByFrame = false; // whether the call before was made by the next line's code, not by the engine's own
    const auto lines = stack.split(u'\n', Qt::SkipEmptyParts);
    for (const auto &line : lines) {
        const auto match = notation.match(line);
        if (!match.hasMatch() || frames.size() >= deepestStack) {
            isCalledByFrame = false;
            continue;
        }
        const auto function = match.captured(1);
        const auto [frame, name, isMapped] = place(generatedName.match(function).hasMatch() ? QString() : function,
            match.captured(2), {match.capturedView(3).toInt(), match.capturedView(4).toInt()});
        // A generated function's own name is told by whoever calls it.
        if (isCalledByFrame && !name.isEmpty() && !frames.last().function.isEmpty())
            frames.last().function = name;
        isCalledByFrame = isMapped;
        frames.append(frame);
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
