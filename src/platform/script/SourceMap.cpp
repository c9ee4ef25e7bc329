#include "platform/script/SourceMap.h"

#include <algorithm>

std::optional<SourceMap::Place> SourceMap::find(int line, int column) const
{
    if (line < 1 || std::size_t(line) >= m_lines.size())
        return std::nullopt;
    const auto first = m_segments.begin() + std::ptrdiff_t(m_lines[std::size_t(line) - 1]);
    const auto last = m_segments.begin() + std::ptrdiff_t(m_lines[std::size_t(line)]);
    auto behind = std::upper_bound(
        first, last, column - 1, [](int wanted, const Segment &segment) { return wanted < segment.column; });
    if (behind == first)
        return std::nullopt;
    const auto &segment = *--behind;
    if (segment.source < 0 || m_sources.at(segment.source).isNull())
        return std::nullopt;
    return Place{m_sources.at(segment.source), segment.sourceLine + 1, segment.sourceColumn + 1,
        segment.name < 0 ? QString() : m_names.at(segment.name)};
}
