#pragma once

#include "platform/script/ScriptPreprocessor.h"
#include "platform/script/ScriptSourceMaps.h"
#include "platform/script/SourceOffset.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QSet>
#include <QString>

#include <memory>
#include <optional>

/// A text that a session's engine was given.
struct ScriptSource
{
    /// What stands before the file's text on its first line.
    int headColumns = 0;
    /// Where in the file's text its author's begins.
    SourceOffset offset;
    /// The file's text; nil when it is what the file holds.
    std::optional<QString> text;
    /// Which files belong to the same plug-in.
    QByteArray folder;
    /// Whether message sends in it were rewritten.
    bool isRewritten = false;
};

/// Where a script's code comes from, as its errors name it: files seen from the plug-in's folder, and for generated
/// code the places that a source map leads to. Nothing is read for that before a place is asked for. Main thread only.
class ScriptLocations
{
public:
    /// A folder that its files are named from, the innermost where there are several. Files of none are named by their
    /// whole path.
    void addFolder(const QByteArray &path) { m_folders.insert(path); }

    /// What a source consists of, each time that it is evaluated.
    void setSource(const QString &sourceURL, const ScriptSource &source);
    void setRewritten(const QString &sourceURL) { m_sources[sourceURL].isRewritten = true; }

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

    struct Position
    {
        int line;
        int column;
    };
    /// A place, and what a source map calls the identifier there.
    struct Place
    {
        Frame frame;
        QString name;
        bool isMapped = false;
    };

    Place place(const QString &function, const QString &sourceURL, Position position) const;
    /// A place as the file's author counts lines and columns.
    Frame frame(const QString &function, const QString &sourceURL, int line, int column) const;

    /// The calls of an engine's stack text that are the author's own.
    QList<Frame> frames(const QString &stack) const;
    /// One call a line.
    static QString text(const QList<Frame> &frames);

private:
    /// What is found out about a source when it is first asked for.
    struct Details
    {
        std::unique_ptr<ColumnsBeforeRewriting> columns;
        std::shared_ptr<const ScriptSourceMap> map;
    };
    const Details &detailsOf(const QString &sourceURL, const ScriptSource &source) const;
    Position authorsPosition(const QString &sourceURL, Position position) const;
    QString nameOfFile(const QByteArray &path) const;

    QSet<QByteArray> m_folders;
    QHash<QString, ScriptSource> m_sources;
    mutable QHash<QString, std::shared_ptr<const Details>> m_details;
};
