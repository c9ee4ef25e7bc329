#include "widgets/console/LogLocation.h"

#include <QDir>
#include <QFileInfo>

namespace {

struct Place
{
    QStringView file;
    int line;
};

/// "file:line:column", behind the last "(" where there is one.
std::optional<Place> placeOf(QStringView call)
{
    if (call.endsWith(u')'))
        call = call.mid(call.lastIndexOf(u'(') + 1).chopped(1);
    const auto column = call.lastIndexOf(u':');
    const auto line = column > 0 ? call.lastIndexOf(u':', column - 1) : -1;
    if (line <= 0)
        return std::nullopt;
    bool isNumber = false;
    const int number = call.mid(line + 1, column - line - 1).toInt(&isNumber);
    return isNumber && number > 0 ? std::optional(Place{call.left(line), number}) : std::nullopt;
}

std::optional<LogLocation> resolved(const Place &place, const QString &folder)
{
    const QFileInfo file(QDir(folder).absoluteFilePath(place.file.toString()));
    const auto path = file.canonicalFilePath();
    if (!file.isFile() || !path.startsWith(folder + u'/'))
        return std::nullopt;
    return LogLocation{QUrl::fromLocalFile(path), place.line};
}

} // namespace

std::optional<LogLocation> locationIn(const QString &text, const QUrl &pluginFolder)
{
    static const auto marker = QStringLiteral("\n    at ");
    constexpr int mostCalls = 64;
    const auto first = text.indexOf(marker);
    if (first < 0)
        return std::nullopt;
    const auto folder = QFileInfo(QDir::cleanPath(pluginFolder.toLocalFile())).canonicalFilePath();
    if (folder.isEmpty())
        return std::nullopt;
    int seen = 0;
    for (const auto &call : QStringView(text).mid(first + 1).tokenize(u'\n')) {
        if (++seen > mostCalls)
            break;
        if (!call.startsWith(u"    at "))
            continue;
        const auto place = placeOf(call.mid(marker.size() - 1).trimmed());
        if (const auto location = place ? resolved(*place, folder) : std::nullopt)
            return location;
    }
    return std::nullopt;
}
