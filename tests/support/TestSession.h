#pragma once

#include "platform/script/COScript.h"
#include "support/TestEnvironment.h"

#include <memory>

/// A session of one script "Contents/Korvan/main.js", and what it says.
class TestSession final : public COPrintController, public std::enable_shared_from_this<TestSession>
{
public:
    static std::shared_ptr<TestSession> make(TestEnvironment &environment, const COScript::CoreModules &modules = {});

    void print(const QVariant &value) override;
    void scriptEncounteredException(const ScriptException &exception) override;

    /// Evaluates the source.
    QVariant run(const QString &source) { return script->executeString(source); }
    /// Calls a function; the exception's message goes to `thrown`.
    QVariant call(const QString &name, const QVariantList &arguments = {});
    /// Writes a file beside the script.
    void write(const QString &relativePath, const QByteArray &content) const;

    std::shared_ptr<COScript> script;
    /// What was printed, as text; ready-made entries with their level before it.
    QStringList printed;
    QVariantList values;
    QStringList exceptions;
    QString thrown;

private:
    QString m_folder;
};
