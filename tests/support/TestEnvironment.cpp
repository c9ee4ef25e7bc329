#include "support/TestEnvironment.h"

#include "commands/KRPluginCommandKeys.h"

QStringList RecordingLogTarget::texts() const
{
    QStringList texts;
    for (const auto &[from, entry] : entries)
        texts.append(entry.value(QStringLiteral("stringValue")).toString());
    return texts;
}

TestEnvironment::TestEnvironment()
    : m_defaults(m_folder.filePath(QStringLiteral("defaults.ini")))
    , m_installation(*this)
{
    m_defaults.setOverrides({{KRPluginCommandScriptTimeLimitKey, 0}}); // busy machines run scripts slowly
}

TestEnvironment::~TestEnvironment() = default;

QUrl TestEnvironment::mainBundleResourcesFolder() const
{
    return QUrl::fromLocalFile(path(QStringLiteral("resources")) + u'/');
}

QUrl TestEnvironment::applicationSupportFolder() const
{
    return QUrl::fromLocalFile(path(QStringLiteral("support")) + u'/');
}

ScriptTimeLimitDecision TestEnvironment::scriptExceededTimeLimit(const QString &name, double)
{
    timeLimitQuestions.append(name);
    return timeLimitDecisions.size() > 1 ? timeLimitDecisions.takeFirst() : timeLimitDecisions.first();
}
