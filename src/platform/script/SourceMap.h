#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

/// Where the parts of a generated script come from, as a source map (version 3) says it; maps of sections too. Made
/// from bytes of unknown origin, and bounded in what it keeps of them (sourceMapFromJSON()). Immutable, so for any
/// thread.
class SourceMap
{
public:
    struct Place
    {
        /// As the map names it: a URL, mostly relative to the map's own.
        QString source;
        /// From 1.
        int line = 0;
        /// From 1.
        int column = 0;
        /// What the identifier there was called; "" when the map does not say.
        QString name;
    };

    /// What stands at a place of the generated script, both from 1; nil where that is nobody's.
    std::optional<Place> find(int line, int column) const;

private:
    friend class SourceMapReader;

    /// All from 0.
    struct Segment
    {
        int column;
        /// -1: nobody's.
        int source;
        int sourceLine;
        int sourceColumn;
        /// -1: none.
        int name;
    };

    std::vector<Segment> m_segments;
    /// Where each generated line's segments begin, and where the last one's end.
    std::vector<std::size_t> m_lines;
    QStringList m_sources;
    QStringList m_names;
};
