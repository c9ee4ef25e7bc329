#include "platform/script/RequiredModules.h"

#include "platform/FileURL.h"
#include "platform/script/ScriptModules.h"
#include "platform/script/ScriptTokens.h"

#include <QSet>

namespace {

const QStringView requireName = u"require";

struct Requirement
{
    QString name;
    qsizetype offset;
    MissingModule::Use use;
};

/// The calls of "require" with a literal in a text.
class RequirementScan
{
public:
    explicit RequirementScan(QStringView source)
        : m_source(source)
        , m_tokens(scriptTokens(source))
    { }

    std::vector<Requirement> requirements()
    {
        for (m_index = 0; m_index < m_tokens.size(); ++m_index) {
            if (isSign(m_index, u'{'))
                ++m_depth;
            else if (isSign(m_index, u'}'))
                --m_depth;
            else if (text(m_index) == requireName && !isSign(m_index - 1, u'.') && text(m_index - 1) != u"?.")
                scanRequire();
        }
        return m_hasItsOwn ? std::vector<Requirement>() : std::move(m_found);
    }

private:
    // Before the first token is none: its index wraps around.
    QStringView text(std::size_t index) const
    {
        return index < m_tokens.size() ? m_tokens[index].text(m_source) : QStringView();
    }
    bool isSign(std::size_t index, char16_t sign) const
    {
        return index < m_tokens.size() && m_tokens[index].is(m_source, sign);
    }

    void scanRequire()
    {
        const auto before = text(m_index - 1);
        const bool isCall = isSign(m_index + 1, u'(') && before != u"function";
        m_hasItsOwn |= !isCall && before != u"typeof";
        if (!isCall || !isSign(m_index + 3, u')'))
            return;
        const auto literal = text(m_index + 2);
        const bool isText = literal.size() > 2 && (literal[0] == u'"' || literal[0] == u'\'' || literal[0] == u'`');
        if (!isText || literal.contains(u'\\'))
            return;
        m_found.push_back({literal.mid(1, literal.size() - 2).toString(), qsizetype(m_tokens[m_index + 2].start),
            m_depth > 0 ? MissingModule::Use::Conditional : MissingModule::Use::Unconditional});
    }

    QStringView m_source;
    std::vector<ScriptToken> m_tokens;
    std::vector<Requirement> m_found;
    std::size_t m_index = 0;
    int m_depth = 0;
    /// A parameter or a variable of that name, as bundlers make them.
    bool m_hasItsOwn = false;
};

class ModuleWalk
{
public:
    ModuleWalk(const QByteArray &scriptPath, const QByteArray &folder, const QStringList &coreModules)
        : m_modules({})
        , m_coreModules(coreModules)
        , m_scriptFile(displayPath(scriptPath))
    {
        m_modules.setMainScript(scriptPath, folder);
    }

    std::vector<MissingModule> walk(const QString &source)
    {
        look({}, source);
        while (!m_waiting.isEmpty()) {
            const auto file = m_waiting.takeFirst();
            if (const auto module = m_modules.text(file); module && !file.endsWith(u".json"))
                look(file, module.value());
        }
        return std::move(m_missing);
    }

private:
    /// `requirer` is "" for the main script.
    void look(const QString &requirer, const QString &source)
    {
        if (!source.contains(requireName))
            return;
        for (const auto &requirement : RequirementScan(source).requirements()) {
            const auto &name = requirement.name;
            if (m_coreModules.contains(name.startsWith(u"node:") ? name.mid(5) : name))
                continue;
            if (const auto file = m_modules.resolve(name, requirer); !file)
                m_missing.push_back({requirer.isEmpty() ? m_scriptFile : requirer, source, requirement.offset,
                    requirement.use, file.error().localizedDescription});
            else if (!m_seen.contains(file.value()))
                wait(file.value());
        }
    }

    void wait(const QString &file)
    {
        m_seen.insert(file);
        m_waiting.append(file);
    }

    ScriptModules m_modules;
    const QStringList &m_coreModules;
    QString m_scriptFile;
    QSet<QString> m_seen;
    QStringList m_waiting;
    std::vector<MissingModule> m_missing;
};

} // namespace

std::vector<MissingModule> missingModules(
    const QByteArray &scriptPath, const QString &source, const QByteArray &folder, const QStringList &coreModules)
{
    return ModuleWalk(scriptPath, folder, coreModules).walk(source);
}
