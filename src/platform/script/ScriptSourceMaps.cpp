#include "platform/script/ScriptSourceMaps.h"

#include "platform/FileReading.h"
#include "platform/FileURL.h"
#include "platform/FolderListing.h"
#include "platform/JSON.h"
#include "platform/script/ContainedPath.h"
#include "platform/script/SourceMapReader.h"

#include <QRegularExpression>
#include <QUrl>

namespace {

/// The maps of the largest bundles that people make have some ten megabytes.
constexpr qint64 largestMap = 64 * 1024 * 1024;
constexpr qsizetype longestSource = 4096;

bool hasScheme(const QString &url)
{
    static const QRegularExpression scheme(QStringLiteral("^[A-Za-z][A-Za-z0-9+.-]*:"));
    return scheme.match(url).hasMatch();
}

std::optional<QByteArray> contentOfDataURL(QStringView url)
{
    const auto comma = url.indexOf(u',');
    if (comma < 0 || !url.first(comma).endsWith(u";base64", Qt::CaseInsensitive))
        return std::nullopt;
    const auto decoded =
        QByteArray::fromBase64Encoding(url.mid(comma + 1).toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
    return decoded ? std::optional(*decoded) : std::nullopt;
}

QByteArray decodedPath(const QString &url)
{
    return QByteArray::fromPercentEncoding(url.toUtf8());
}

std::shared_ptr<const ScriptSourceMap> mapFrom(const QByteArray &json, const QByteArray &folder)
{
    auto map = sourceMapFromJSON(json);
    return map ? std::make_shared<const ScriptSourceMap>(ScriptSourceMap{std::move(*map), folder}) : nullptr;
}

} // namespace

QByteArray ScriptSourceMap::pathOf(const QString &source) const
{
    if (source.startsWith(u"file:"))
        return pathFromFileURL(QUrl(source));
    if (source.size() > longestSource || hasScheme(source))
        return source.left(longestSource).toUtf8();
    const auto path = decodedPath(source);
    return normalizedPath(path.startsWith('/') ? path : pathByAppending(folder, path));
}

QStringView sourceMapReference(QStringView script)
{
    // A script that was given as bare statements ends with the brace of the function around them.
    static const QRegularExpression comment(
        QStringLiteral("//[#@][ \\t]*sourceMappingURL=([^\\s'\"`]+)[ \\t]*(?=[\\r\\n\\x{2028}\\x{2029}]|$)"));
    static const QRegularExpression end(QStringLiteral("^(?:[\\s}]|//[^\\n]*(?:\\n|$))*$"));
    const auto mark =
        std::max(script.lastIndexOf(u"//# sourceMappingURL="), script.lastIndexOf(u"//@ sourceMappingURL="));
    if (mark < 0)
        return {};
    const auto match = comment.match(
        script.mid(mark), 0, QRegularExpression::NormalMatch, QRegularExpression::AnchorAtOffsetMatchOption);
    if (!match.hasMatch() || !end.match(script.mid(mark + match.capturedEnd())).hasMatch())
        return {};
    return match.capturedView(1);
}

std::shared_ptr<const ScriptSourceMap> readSourceMap(
    QStringView script, const QByteArray &scriptPath, const QByteArray &folder)
{
    const auto reference = sourceMapReference(script);
    const auto scriptFolder = pathWithoutLastComponent(scriptPath);
    if (reference.startsWith(u"data:", Qt::CaseInsensitive)) {
        const auto content = contentOfDataURL(reference);
        return content ? mapFrom(*content, scriptFolder) : nullptr;
    }
    if (reference.isEmpty() || reference.size() > longestSource || hasScheme(reference.toString()))
        return nullptr;
    const auto path = resolvedPath(normalizedPath(pathByAppending(scriptFolder, decodedPath(reference.toString()))));
    if (path.isEmpty() || !isContainedPath(path, resolvedPath(folder)))
        return nullptr;
    const auto json = readFile(path, largestMap, JSONParser::padding);
    return json ? mapFrom(json.value(), scriptFolder) : nullptr;
}
