#include "manager/PluginEditor.h"

#include "platform/FileURL.h"
#include "platform/LTAppEnvironment.h"
#include "platform/UserDefaults.h"

#include <QDir>
#include <QProcess>

namespace {

void keepAwayFromOurChannels(QProcess &process)
{
    // Whoever reads what the host prints must not get the editor's output, nor wait for its end.
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
}

void tellLine(QProcess &process, std::optional<int> line)
{
    auto variables = QProcessEnvironment::systemEnvironment();
    const auto name = QStringLiteral("KORVAN_EDITOR_LINE");
    variables.remove(name); // of a program that was itself started as somebody's editor
    if (line)
        variables.insert(name, QString::number(*line));
    process.setProcessEnvironment(variables);
}

} // namespace

EditorStart openInPluginEditor(const QUrl &url, std::optional<int> line)
{
    auto &environment = LTAppEnvironment::current();
    const auto editor = environment.userDefaults().stringForKey(QStringLiteral("Plugin Editor"));
    const auto path = displayPath(url);
    if (!editor || path.isEmpty())
        return EditorStart::NothingToDo;

    QProcess process;
    // A bare name would be looked up among the system's programs, but the setting is a path.
    process.setProgram(editor->isEmpty() ? QString() : QDir::current().absoluteFilePath(*editor));
    process.setArguments({path});
    keepAwayFromOurChannels(process);
    tellLine(process, line);
    if (process.startDetached())
        return EditorStart::Started;
    environment.systemLog(QStringLiteral("Couldn't open editor %1: %2").arg(*editor, process.errorString()));
    return EditorStart::Failed;
}
