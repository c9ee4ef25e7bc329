#include "widgets/console/ConsoleLog.h"

#include "commands/KRPluginCommand.h"
#include "localization/Localizable.h"

namespace {

constexpr qsizetype mostTexts = 10'000;

LogLevel levelOf(const QString &name)
{
    if (name == u"error")
        return LogLevel::Error;
    return name == u"warn" || name == u"warning" ? LogLevel::Warning : LogLevel::Log;
}

std::shared_ptr<KRPluginCommand> commandOf(const QVariantMap &entry)
{
    const auto value = entry.value(QStringLiteral("command"));
    return std::dynamic_pointer_cast<KRPluginCommand>(value.value<WeakScriptObjectPointer>().lock());
}

} // namespace

ConsoleLog::ConsoleLog(int capacity)
    : m_entries(capacity)
{ }

ConsoleLog::~ConsoleLog() = default;

void ConsoleLog::log(const QVariantMap &entry, const QString &from)
{
    logFromCommand(entry, from, commandOf(entry));
}

void ConsoleLog::logFromCommand(
    const QVariantMap &entry, const QString &from, const std::shared_ptr<KRPluginCommand> &command)
{
    LogEntry kept;
    kept.time = QDateTime::currentDateTime();
    kept.level = levelOf(entry.value(QStringLiteral("level")).toString());
    kept.text = entry.value(QStringLiteral("stringValue")).toString();
    if (command)
        takeOrigin(kept, *command);
    if (kept.pluginName.isEmpty())
        kept.pluginName = kept.pluginIdentifier.isEmpty() ? Localizable::tr("Application") : kept.pluginIdentifier;

    keepText(m_texts[from], kept.text);
    if (!m_plugins.contains(kept.pluginIdentifier)) {
        m_plugins.insert(kept.pluginIdentifier, kept.pluginName);
        emit pluginAppeared(kept.pluginIdentifier, kept.pluginName);
    }
    emit logged(kept);
    m_entries.append(std::move(kept));
}

void ConsoleLog::takeOrigin(LogEntry &entry, const KRPluginCommand &command)
{
    entry.command = command.name().value_or(QString());
    const auto plugin = command.pluginBundle();
    if (!plugin)
        return;
    entry.pluginIdentifier = plugin->identifier().value_or(QString());
    entry.pluginName = plugin->name().value_or(QString());
    if (entry.level == LogLevel::Log)
        return; // only errors point to a place
    if (m_latestError.text != entry.text || m_latestError.folder != plugin->url())
        m_latestError = {entry.text, plugin->url(), locationIn(entry.text, plugin->url())};
    if (m_latestError.place) {
        entry.file = m_latestError.place->file;
        entry.line = m_latestError.place->line;
    }
}

void ConsoleLog::keepText(CommandLog &log, const QString &text)
{
    log.texts.append(text);
    log.characters += text.size();
    while (log.texts.size() > mostTexts || (log.characters > LogModel::mostCharacters && log.texts.size() > 1))
        log.characters -= log.texts.takeFirst().size();
}

QString ConsoleLog::logStringFor(const QString &sender)
{
    return m_texts.value(sender).texts.join(u'\n');
}

void ConsoleLog::clearLogFor(const QString &sender)
{
    m_texts.remove(sender);
}
