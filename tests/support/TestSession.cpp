#include "support/TestSession.h"

#include "platform/script/ValueText.h"
#include "support/BundleBuilder.h"

std::shared_ptr<TestSession> TestSession::make(TestEnvironment &environment, const COScript::CoreModules &modules)
{
    auto session = std::make_shared<TestSession>();
    const auto plugin = environment.path(QStringLiteral("Tidy.korvanplugin/"));
    session->m_folder = plugin + QStringLiteral("Contents/Korvan/");
    session->script = std::make_shared<COScript>(modules, QStringLiteral("Tidy Layers"));
    session->script->setPrintController(session);
    session->script->setModuleFolder(QUrl::fromLocalFile(plugin));
    session->script->env().insert(
        QStringLiteral("scriptURL"), QUrl::fromLocalFile(session->m_folder + QStringLiteral("main.js")));
    return session;
}

void TestSession::print(const QVariant &value)
{
    values.append(value);
    const auto entry = value.toMap();
    const auto level = entry.value(QStringLiteral("level")).toString();
    const auto text = entry.value(QStringLiteral("stringValue")).toString();
    printed.append(level.isEmpty() ? descriptionOfValue(value) : level + QStringLiteral(": ") + text);
}

void TestSession::scriptEncounteredException(const ScriptException &exception)
{
    exceptions.append(exception.message());
}

QVariant TestSession::call(const QString &name, const QVariantList &arguments)
{
    try {
        return script->callFunctionNamed(name, arguments);
    } catch (const ScriptException &exception) {
        thrown = exception.text();
        return {};
    }
}

void TestSession::write(const QString &relativePath, const QByteArray &content) const
{
    writeFile(m_folder + relativePath, content);
}
