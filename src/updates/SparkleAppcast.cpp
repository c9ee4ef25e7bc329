#include "updates/SparkleAppcast.h"

#include "platform/XMLBounds.h"
#include "updates/FeedLimits.h"

#include <QStringDecoder>

#include <functional>
#include <initializer_list>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr auto sparkleNamespace = "http://www.andymatuschak.org/xml-namespaces/sparkle"_L1;

/// What an item and its enclosures may both say.
struct Facts
{
    QString version;
    QString shortVersion;
    QString system;
};

struct Enclosure
{
    Facts facts;
    QString url;
};

struct Item
{
    Facts facts;
    QString channel;
    std::vector<Enclosure> enclosures;
};

const QString &firstGiven(std::initializer_list<std::reference_wrapper<const QString>> texts)
{
    static const QString none;
    for (const QString &text : texts) {
        if (!text.trimmed().isEmpty())
            return text;
    }
    return none;
}

/// Plug-ins are scripts, the same on each system: the usual archive names none, or the one that the format takes for
/// granted. What names another one is not for plug-ins' hosts.
bool isForEverySystem(const QString &system)
{
    const auto name = system.trimmed();
    return name.isEmpty() || name.compare("macos"_L1, Qt::CaseInsensitive) == 0;
}

void appendCandidates(const Item &item, std::vector<UpdateCandidate> &candidates)
{
    if (!item.channel.trimmed().isEmpty())
        return;
    for (const auto &[facts, url] : item.enclosures) {
        const auto &version =
            firstGiven({facts.version, item.facts.version, facts.shortVersion, item.facts.shortVersion});
        if (!version.isEmpty() && !url.isEmpty() && isForEverySystem(firstGiven({facts.system, item.facts.system})))
            candidates.push_back({version, url});
    }
}

/// Goes through the elements of a document without recursion of its depth.
class AppcastReader
{
public:
    explicit AppcastReader(QXmlStreamReader &parser)
        : m_parser(parser)
    { }

    std::optional<std::vector<UpdateCandidate>> read()
    {
        forEachChild([this] {
            m_rssNamespace = m_parser.namespaceUri().toString();
            if (isRSS("rss"_L1))
                readRoot();
        });
        if (m_parser.hasError())
            return std::nullopt;
        return std::move(m_candidates);
    }

private:
    void readRoot()
    {
        forEachChild([this] {
            if (isRSS("channel"_L1))
                readChannel();
        });
    }

    void readChannel()
    {
        forEachChild([this] {
            if (isRSS("item"_L1))
                appendCandidates(readItem(), m_candidates);
        });
    }

    Item readItem()
    {
        Item item;
        item.facts = factsOfAttributes();
        forEachChild([&] {
            if (isRSS("enclosure"_L1))
                readEnclosure(item);
            else if (isSparkle("version"_L1))
                item.facts.version = readText();
            else if (isSparkle("shortVersionString"_L1))
                item.facts.shortVersion = readText();
            else if (isSparkle("os"_L1))
                item.facts.system = readText();
            else if (isSparkle("channel"_L1))
                item.channel = readText();
        });
        return item;
    }

    void readEnclosure(Item &item)
    {
        if (sparkleAttribute("deltaFrom"_L1).isEmpty())
            item.enclosures.push_back({factsOfAttributes(), m_parser.attributes().value("url"_L1).toString()});
    }

    Facts factsOfAttributes() const
    {
        return {sparkleAttribute("version"_L1), sparkleAttribute("shortVersionString"_L1), sparkleAttribute("os"_L1)};
    }

    QString sparkleAttribute(QLatin1StringView name) const
    {
        return m_parser.attributes().value(sparkleNamespace, name).toString();
    }

    bool isRSS(QLatin1StringView name) const
    {
        return m_parser.name() == name && m_parser.namespaceUri() == m_rssNamespace;
    }
    bool isSparkle(QLatin1StringView name) const
    {
        return m_parser.name() == name && m_parser.namespaceUri() == sparkleNamespace;
    }

    /// The element's own text, without that of elements in it and without the white space of the layout.
    QString readText()
    {
        QString text;
        for (const int depth = m_depth; next() && m_depth >= depth;) {
            if (m_parser.isCharacters() && m_depth == depth)
                text += m_parser.text();
        }
        return text.trimmed();
    }

    /// Calls `visit` at each element below the present one, which then is at its end. A visitor may leave its element
    /// unread.
    template <class Visit>
    void forEachChild(Visit visit)
    {
        for (const int depth = m_depth; next() && m_depth >= depth;) {
            if (!m_parser.isStartElement())
                continue;
            visit();
            while (m_depth > depth && next()) { }
        }
    }

    /// False at the document's end and at an error.
    bool next()
    {
        switch (m_parser.readNext()) {
        case QXmlStreamReader::StartElement:
            if (++m_depth > deepestAppcastElement)
                m_parser.raiseError(u"nested too deep"_s);
            break;
        case QXmlStreamReader::EndElement:
            --m_depth;
            break;
        case QXmlStreamReader::DTD: // declarations can make much of little: entities, default attributes
            if (m_parser.text().contains(u'['))
                m_parser.raiseError(u"declarations"_s);
            break;
        default:
            break;
        }
        return !m_parser.atEnd() && !m_parser.hasError();
    }

    QXmlStreamReader &m_parser;
    int m_depth = 0;
    QString m_rssNamespace;
    std::vector<UpdateCandidate> m_candidates;
};

bool startsWithUTF16Mark(const QByteArray &bytes)
{
    return bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF");
}

} // namespace

std::optional<std::vector<UpdateCandidate>> readSparkleAppcast(QXmlStreamReader &parser)
{
    return AppcastReader(parser).read();
}

std::optional<std::vector<UpdateCandidate>> readSparkleAppcast(const QByteArray &xml)
{
    if (!startsWithUTF16Mark(xml)) {
        QXmlStreamReader parser(xml);
        return isXMLWithinBounds(xml) ? readSparkleAppcast(parser) : std::nullopt;
    }
    QStringDecoder decoder(QStringDecoder::Utf16);
    const QString text = decoder(xml);
    if (decoder.hasError() || !isXMLWithinBounds(text.toUtf8()))
        return std::nullopt;
    QXmlStreamReader parser(text); // which then does not go by the declared encoding
    return readSparkleAppcast(parser);
}
