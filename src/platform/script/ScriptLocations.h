#pragma once

#include "platform/script/SourceOffset.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QSet>
#include <QString>

/// Where a script's code comes from, as its errors name it: files seen from the plug-in's folder. Main
/// thread only.
class ScriptLocations
{
public:
    /// A folder that its files are named from. Files of no such folder are named by their whole path.
    void addFolder(const QByteArray &path) { m_folders.insert(path); }

    /// Where in a source its author's text begins.
    void setOffset(const QString &sourceURL, const SourceOffset &offset);

    /// A source's URL as a name for people; "" for code that is the session's own.
    QString fileName(const QString &sourceURL) const;

    struct Frame
    {
        QString function;
        QString file;
        int line = 0;
        int column = 0;

        QString text() const;
    };

    /// A place as the file's author counts lines and columns.
    Frame frame(const QString &function, const QString &sourceURL, int line, int column) const;

    /// The calls of an engine's stack text that are the author's own.
    QList<Frame> frames(const QString &stack) const;
    /// One call a line.
    static QString text(const QList<Frame> &frames);

private:
    QSet<QByteArray> m_folders;
    QHash<QString, SourceOffset> m_offsets;
};
