#include "commands/KRPluginScript.h"

#include "platform/FileReading.h"
#include "platform/FileURL.h"
#include "platform/UTF8.h"

#include <cerrno>

namespace {

class ScriptFile final : public KRPluginScript
{
public:
    explicit ScriptFile(const QByteArray &path)
        : KRPluginScript(path)
    { }
};

Result<QByteArray> readSource(const QByteArray &path)
{
    auto bytes = readFile(path, largestTextFile);
    if (bytes && !isValidUTF8(bytes.value()))
        return systemError(EILSEQ);
    return bytes;
}

} // namespace

KRPluginScript::KRPluginScript(const QByteArray &path)
    : m_path(path)
{ }

KRPluginScript::KRPluginScript(const std::optional<QString> &script, const QString &filename)
    : m_filename(filename)
    , m_source(script ? script->toUtf8() : QByteArray())
{
    if (script && m_source.isNull())
        m_source = QByteArray("");
}

KRPluginScript::~KRPluginScript() = default;

std::shared_ptr<KRPluginScript> KRPluginScript::initWithURL(const QUrl &url, KRError *error)
{
    return initWithPath(pathFromFileURL(url), error);
}

std::shared_ptr<KRPluginScript> KRPluginScript::initWithPath(const QByteArray &path, KRError *error)
{
    auto script = std::make_shared<ScriptFile>(path);
    return script->loadWithError(error) ? script : nullptr;
}

QUrl KRPluginScript::URL() const
{
    if (m_url.isEmpty() && !m_path.isEmpty())
        m_url = fileURLFromPath(m_path, FileKind::File);
    return m_url;
}

QString KRPluginScript::filename() const
{
    return m_path.isEmpty() ? m_filename : displayPath(lastPathComponent(m_path));
}

std::optional<QString> KRPluginScript::script() const
{
    return rawText();
}

std::optional<QString> KRPluginScript::rawText() const
{
    if (m_source.isNull())
        return std::nullopt;
    return QString::fromUtf8(m_source);
}

bool KRPluginScript::loadWithError(KRError *error)
{
    auto source = readSource(m_path);
    if (!source) {
        m_source = {};
        if (error)
            *error = source.error();
        return false;
    }
    m_source = std::move(source).value();
    if (m_source.isNull())
        m_source = QByteArray("");
    return true;
}

void KRPluginScript::reload()
{
    if (!m_path.isEmpty())
        loadWithError();
}
