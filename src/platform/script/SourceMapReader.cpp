#include "platform/script/SourceMapReader.h"

#include "platform/JSON.h"

#include <algorithm>
#include <limits>
#include <map>
#include <string_view>

namespace {

/// A map of a script as large as the engine runs them stays below this; more would fill the memory for nothing.
constexpr std::size_t mostSegments = 4'000'000;
constexpr int mostLines = 4'000'000;

using Members = std::map<std::string_view, JSONView>;

Members membersOf(const JSONView &object)
{
    Members members;
    object.forEachMember([&](std::string_view key, const JSONView &value) { members.insert_or_assign(key, value); });
    return members;
}

std::optional<JSONView> memberOf(const Members &members, std::string_view key)
{
    const auto found = members.find(key);
    return found == members.end() ? std::nullopt : std::optional(found->second);
}

/// Nil for anything but a whole number that is not negative.
std::optional<int> numberOf(const Members &members, std::string_view key)
{
    const auto value = memberOf(members, key);
    const auto text = value ? value->numberText() : std::nullopt;
    bool isNumber = false;
    const int number = text ? text->toInt(&isNumber) : 0;
    return isNumber && number >= 0 ? std::optional(number) : std::nullopt;
}

bool isVersionThree(const Members &map)
{
    return numberOf(map, "version") == 3;
}

int digitOf(char character)
{
    if (character >= 'A' && character <= 'Z')
        return character - 'A';
    if (character >= 'a' && character <= 'z')
        return character - 'a' + 26;
    if (character >= '0' && character <= '9')
        return character - '0' + 52;
    return character == '+' ? 62 : character == '/' ? 63 : -1;
}

/// Takes one number: groups of five bits, the lowest first, the sign in the lowest bit of all. Nil when it has no end,
/// a character of another kind, or more than 32 bits.
std::optional<qint64> takeNumber(std::string_view &rest)
{
    qint64 bits = 0;
    for (int shift = 0; !rest.empty() && shift <= 30; shift += 5) {
        const int digit = digitOf(rest.front());
        if (digit < 0)
            return std::nullopt;
        rest.remove_prefix(1);
        bits |= qint64(digit & 31) << shift;
        if (!(digit & 32))
            return bits & 1 ? -(bits >> 1) : bits >> 1;
    }
    return std::nullopt;
}

/// Adds the next number to a counter, which stays a whole number that is not negative.
bool count(std::string_view &rest, int &counter)
{
    const auto number = takeNumber(rest);
    const auto sum = counter + number.value_or(0);
    if (!number || sum < 0 || sum > std::numeric_limits<int>::max() / 2)
        return false;
    counter = int(sum);
    return true;
}

bool isSegmentOver(std::string_view rest)
{
    return rest.empty() || rest.front() == ',' || rest.front() == ';';
}

} // namespace

/// Reads a source map. Used once.
class SourceMapReader
{
public:
    std::optional<SourceMap> read(const QByteArray &json);

private:
    /// Where the generated text of a map begins in the whole, from 0.
    struct Offset
    {
        int line = 0;
        int column = 0;
    };
    /// What the numbers of a map's mappings count on from.
    struct Counters
    {
        int column = 0;
        int source = 0;
        int sourceLine = 0;
        int sourceColumn = 0;
        int name = 0;
    };
    struct Segment
    {
        int line;
        SourceMap::Segment values;
    };

    bool readWhole(const JSONView &map);
    bool readSections(const JSONView &sections);
    bool readSection(const JSONView &section);
    bool readMap(const JSONView &map, const Offset &offset);
    bool addSources(const JSONView &map);
    bool readMappings(std::string_view mappings, const Offset &offset);
    bool readSegment(std::string_view &rest, int line, const Offset &offset);
    bool addSegment(int line, int column, bool hasSource, bool hasName);
    SourceMap finished();

    SourceMap m_map;
    std::vector<Segment> m_segments;
    Counters m_counters;
    /// Of the current section, in those of all.
    int m_firstSource = 0;
    int m_firstName = 0;
    Offset m_latestOffset;
};

std::optional<SourceMap> sourceMapFromJSON(const QByteArray &json)
{
    return SourceMapReader().read(json);
}

std::optional<SourceMap> SourceMapReader::read(const QByteArray &json)
{
    // A line that keeps a map from being run as a script.
    const auto text = json.startsWith(")]}'") ? json.mid(json.indexOf('\n') + 1) : json;
    JSONParser parser;
    const auto root = parser.parse(text);
    if (!root || !readWhole(root.value()))
        return std::nullopt;
    return finished();
}

bool SourceMapReader::readWhole(const JSONView &map)
{
    const auto members = membersOf(map);
    if (!isVersionThree(members))
        return false;
    const auto sections = memberOf(members, "sections");
    return sections ? readSections(*sections) : readMap(map, {});
}

bool SourceMapReader::readSections(const JSONView &sections)
{
    bool isGood = sections.isArray();
    sections.forEachElement([&](const JSONView &section) { isGood = isGood && readSection(section); });
    return isGood;
}

bool SourceMapReader::readSection(const JSONView &section)
{
    const auto members = membersOf(section);
    const auto place = memberOf(members, "offset");
    const auto map = memberOf(members, "map");
    if (!place || !map)
        return false;
    const auto numbers = membersOf(*place);
    const auto line = numberOf(numbers, "line");
    const auto column = numberOf(numbers, "column");
    const bool isOrdered = line && column
        && std::pair(*line, *column) >= std::pair(m_latestOffset.line, m_latestOffset.column) && *line < mostLines;
    if (!isOrdered || !isVersionThree(membersOf(*map)))
        return false;
    m_latestOffset = {*line, *column};
    // What an earlier section says of this one's text does not count.
    const auto isLater = [&](const Segment &segment) {
        return std::pair(segment.line, segment.values.column) >= std::pair(*line, *column);
    };
    while (!m_segments.empty() && isLater(m_segments.back()))
        m_segments.pop_back();
    return readMap(*map, m_latestOffset);
}

bool SourceMapReader::addSources(const JSONView &map)
{
    const auto members = membersOf(map);
    const auto sources = memberOf(members, "sources");
    if (!sources || !sources->isArray())
        return false;
    const auto rootMember = memberOf(members, "sourceRoot");
    auto root = rootMember ? rootMember->string().value_or(QString()) : QString();
    if (!root.isEmpty() && !root.endsWith(u'/'))
        root += u'/';
    m_firstSource = int(m_map.m_sources.size());
    sources->forEachElement([&](const JSONView &source) {
        const auto name = source.string();
        m_map.m_sources.append(name ? root + *name : QString());
    });
    m_firstName = int(m_map.m_names.size());
    if (const auto names = memberOf(members, "names")) {
        names->forEachElement([&](const JSONView &name) { m_map.m_names.append(name.string().value_or(QString())); });
    }
    return true;
}

bool SourceMapReader::readMap(const JSONView &map, const Offset &offset)
{
    const auto members = membersOf(map);
    const auto member = memberOf(members, "mappings");
    const auto mappings = member ? member->utf8() : std::nullopt;
    return mappings && addSources(map) && readMappings(*mappings, offset);
}

bool SourceMapReader::readMappings(std::string_view mappings, const Offset &offset)
{
    m_counters = {};
    int line = 0;
    while (!mappings.empty()) {
        const char first = mappings.front();
        if (first == ';') {
            m_counters.column = 0;
            if (++line + offset.line >= mostLines)
                return false;
        }
        if (first == ';' || first == ',')
            mappings.remove_prefix(1);
        else if (!readSegment(mappings, line, offset))
            return false;
    }
    return true;
}

bool SourceMapReader::readSegment(std::string_view &rest, int line, const Offset &offset)
{
    auto &counters = m_counters;
    if (m_segments.size() >= mostSegments || !count(rest, counters.column))
        return false;
    const int column = counters.column + (line == 0 ? offset.column : 0);
    if (isSegmentOver(rest))
        return addSegment(line + offset.line, column, false, false);
    if (!count(rest, counters.source) || !count(rest, counters.sourceLine) || !count(rest, counters.sourceColumn))
        return false;
    const bool hasName = !isSegmentOver(rest);
    if (hasName && !count(rest, counters.name))
        return false;
    return isSegmentOver(rest) && addSegment(line + offset.line, column, true, hasName);
}

bool SourceMapReader::addSegment(int line, int column, bool hasSource, bool hasName)
{
    const int source = m_firstSource + m_counters.source;
    const int name = m_firstName + m_counters.name;
    if (hasSource && source >= m_map.m_sources.size())
        return false;
    if (hasName && name >= m_map.m_names.size())
        return false;
    m_segments.push_back(
        {line, {column, hasSource ? source : -1, m_counters.sourceLine, m_counters.sourceColumn, hasName ? name : -1}});
    return true;
}

SourceMap SourceMapReader::finished()
{
    // Mostly they are in order already.
    std::stable_sort(m_segments.begin(), m_segments.end(), [](const Segment &first, const Segment &second) {
        return std::pair(first.line, first.values.column) < std::pair(second.line, second.values.column);
    });
    m_map.m_segments.reserve(m_segments.size());
    for (const auto &segment : m_segments) {
        while (m_map.m_lines.size() <= std::size_t(segment.line))
            m_map.m_lines.push_back(m_map.m_segments.size());
        m_map.m_segments.push_back(segment.values);
    }
    m_map.m_lines.push_back(m_map.m_segments.size());
    return std::move(m_map);
}
