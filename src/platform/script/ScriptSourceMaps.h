#pragma once

#include "platform/script/SourceMap.h"

#include <QByteArray>
#include <QString>
#include <QStringView>

#include <memory>
#include <optional>

/// A script's own source map: the one that a comment at its end names (`//# sourceMappingURL=`), a file beside it or a
/// data URL.
struct ScriptSourceMap
{
    SourceMap map;
    /// The folder that relative sources are seen from.
    QByteArray folder;

    /// The source of a place as a path, or as the map has it when it is a URL of another kind.
    QByteArray pathOf(const QString &source) const;
};

/// What the last comment of that kind says, where nothing but comments follows it; empty when there is none.
QStringView sourceMapReference(QStringView script);

/// Reads the map of a script in that file. Like its modules, the map's file has to be inside of `folder`, after all
/// links. Null when there is no map, or it cannot be used for any reason.
std::shared_ptr<const ScriptSourceMap> readSourceMap(
    QStringView script, const QByteArray &scriptPath, const QByteArray &folder);
