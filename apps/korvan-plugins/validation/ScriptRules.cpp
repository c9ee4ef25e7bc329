#include "validation/ScriptRules.h"

#include "validation/BundlePath.h"
#include "validation/ModuleRules.h"
#include "validation/SourceText.h"

#include <QDir>
#include <QHash>
#include <QRegularExpression>

namespace {

/// A larger script than any that people write.
constexpr qint64 largestScript = 64 * 1024 * 1024;

class ScriptsCheck
{
public:
    ScriptsCheck(Manifest &manifest, ScriptChecker &checker)
        : m_manifest(manifest)
        , m_checker(checker)
        , m_messageSends(sendsOf(manifest))
    { }

    void check(const CommandFacts &command)
    {
        const auto path = QDir::cleanPath(m_manifest.scriptFolder() + u'/' + command.script);
        const auto key = Manifest::keyOfMember(command.key, QStringLiteral("script"));
        const auto file = QStringLiteral("Contents/Korvan/") + command.script;
        if (!isFileInBundle(m_manifest.bundle(), file)) {
            m_manifest.error(key, command.scriptOffset, QStringLiteral("There is no file “%1”.").arg(file));
            return;
        }
        if (leadsOut(m_manifest.bundle(), file))
            m_manifest.warning(
                key, command.scriptOffset, QStringLiteral("“%1” is not in the bundle.").arg(command.script));
        checkSpelling(command, path, key);
        auto known = m_outlines.constFind(path);
        if (known == m_outlines.constEnd())
            known = m_outlines.insert(path, outlineOf(path, key));
        if (*known)
            checkHandlers(command, **known);
    }

private:
    static ScriptChecker::MessageSends sendsOf(const Manifest &manifest)
    {
        const auto *const switchedOff =
            manifest.root().value(u"disableCocoaScriptPreprocessor", JSONNode::Type::Boolean);
        return switchedOff && switchedOff->boolean ? ScriptChecker::MessageSends::Rejected
                                                   : ScriptChecker::MessageSends::Rewritten;
    }

    /// Nil when the file holds no script, which is then reported.
    std::optional<ScriptOutline> outlineOf(const QString &path, const QString &key)
    {
        const auto text = readSourceText(path, largestScript);
        if (const auto *const error = std::get_if<SourceTextError>(&text)) {
            m_manifest.errorInFile(key, path, error->position, error->message);
            return std::nullopt;
        }
        auto check = m_checker.check(std::get<QString>(text), m_messageSends);
        if (check.error)
            m_manifest.errorInFile(key, path, {check.error->line, check.error->column}, check.error->message);
        else
            checkRequired(key, path, std::get<QString>(text));
        return std::move(check.outline);
    }

    void checkRequired(const QString &key, const QString &path, const QString &source)
    {
        checkModules(m_manifest, key, path, source);
        const auto *const supplies = m_manifest.root().value(u"suppliesData", JSONNode::Type::Boolean);
        if (supplies && supplies->boolean)
            return;
        static const QRegularExpression use(QStringLiteral("require\\s*\\(\\s*(['\"`])korvan/data-supplier\\1"));
        if (const auto match = use.match(source); match.hasMatch()) {
            m_manifest.warningInFile(key, path, positionIn(source, match.capturedStart()),
                QStringLiteral("Hosts ask no plug-in for data whose manifest does not say “\"suppliesData\": true”."));
        }
    }

    /// Hosts load one script for all spellings of its path, the first one.
    void checkSpelling(const CommandFacts &command, const QString &path, const QString &key)
    {
        const auto first = m_firstSpellings.constFind(path.toLower());
        if (first == m_firstSpellings.constEnd()) {
            m_firstSpellings.insert(path.toLower(), path);
        } else if (*first != path) {
            m_manifest.warning(key, command.scriptOffset,
                QStringLiteral("“%1” differs from “%2” by case only, so that script is taken for both.")
                    .arg(command.script, QDir(m_manifest.scriptFolder()).relativeFilePath(*first)));
        }
    }

    void checkHandlers(const CommandFacts &command, const ScriptOutline &outline)
    {
        for (const auto &handler : command.handlers) {
            const auto definition = outline.definitionOf(handler.function);
            const bool isOpen = definition == ScriptOutline::Definition::Uncertain;
            if ((definition != ScriptOutline::Definition::Missing && !isOpen) || m_checker.isBuiltIn(handler.function))
                continue;
            if (isOpen) {
                m_manifest.warning(handler.key, handler.offset,
                    QStringLiteral("“%1” seems to define no function “%2”.").arg(command.script, handler.function));
            } else {
                m_manifest.error(handler.key, handler.offset,
                    QStringLiteral("“%1” defines no function “%2”.").arg(command.script, handler.function));
            }
        }
    }

    Manifest &m_manifest;
    ScriptChecker &m_checker;
    ScriptChecker::MessageSends m_messageSends;
    QHash<QString, std::optional<ScriptOutline>> m_outlines;
    QHash<QString, QString> m_firstSpellings;
};

} // namespace

void checkScripts(Manifest &manifest, const QList<CommandFacts> &commands, ScriptChecker &checker)
{
    ScriptsCheck check(manifest, checker);
    for (const auto &command : commands) {
        if (!command.script.isEmpty())
            check.check(command);
    }
}
