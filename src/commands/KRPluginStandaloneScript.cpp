#include "commands/KRPluginStandaloneScript.h"

#include "platform/FileURL.h"

namespace {

class StandaloneFile final : public KRPluginStandaloneScript
{
public:
    explicit StandaloneFile(const QByteArray &path)
        : KRPluginStandaloneScript(path)
    { }
};

// The blanks at the beginning of each line, and at the end of the function, are part of the format.
const auto bodyTemplate =
    QStringLiteral("                         // Standalone Script Begins.\n"
                   "                         var doc = context.document;\n"
                   "                         if (doc && typeof(doc) !== 'undefined') context.doc = doc;\n"
                   "                         var selection = context.selection;\n"
                   "                         var korvan = context;\n"
                   "                         %1\n"
                   "                         // Standalone Script Ends.\n");
const auto functionTemplate = QStringLiteral("          var %1 = function(context) {\n"
                                             "          %2\n"
                                             "          };\n"
                                             "          ");

/// What a template has behind the text that takes a place in it.
int charactersBehind(const QString &place, const QString &text)
{
    return int(text.size() - text.indexOf(place) - place.size());
}

} // namespace

KRPluginStandaloneScript::KRPluginStandaloneScript(const QByteArray &path)
    : KRPluginScript(path)
{ }

std::shared_ptr<KRPluginStandaloneScript> KRPluginStandaloneScript::initWithURL(const QUrl &url, KRError *error)
{
    auto script = std::make_shared<StandaloneFile>(pathFromFileURL(url));
    return script->loadWithError(error) ? script : nullptr;
}

std::optional<QString> KRPluginStandaloneScript::script() const
{
    if (m_wrappedScript)
        return m_wrappedScript;
    const auto raw = rawScript();
    if (raw)
        m_wrappedScript = wrap(QString(bodyTemplate).replace(QStringLiteral("%1"), *raw), handler());
    return m_wrappedScript;
}

QByteArray KRPluginStandaloneScript::scriptBytes() const
{
    const auto wrapped = script();
    return wrapped ? wrapped->toUtf8() : QByteArray();
}

SourceOffset KRPluginStandaloneScript::sourceOffset() const
{
    static const int trailing =
        charactersBehind(QStringLiteral("%1"), bodyTemplate) + charactersBehind(QStringLiteral("%2"), functionTemplate);
    return {6, 25, trailing};
}

QString KRPluginStandaloneScript::handler() const
{
    return QStringLiteral("onRun");
}

QString KRPluginStandaloneScript::wrappedScript(const QString &body, const QString &handler)
{
    return functionTemplate.arg(handler, body);
}

QString KRPluginStandaloneScript::wrap(const QString &body, const QString &handler) const
{
    return wrappedScript(body, handler);
}
