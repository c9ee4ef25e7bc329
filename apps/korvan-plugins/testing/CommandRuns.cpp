#include "CommandRuns.h"

#include "document/DocumentContext.h"
#include "platform/script/ScriptException.h"
#include "testing/TestLog.h"

#include <algorithm>

namespace {

template <class Table>
QString namesIn(const Table &table)
{
    QStringList names;
    for (const auto &[name, value] : table)
        names.append(name);
    return names.join(QStringLiteral(", "));
}

} // namespace

CommandRuns::CommandRuns(TestHost &host, KRPluginManager &manager, std::shared_ptr<KRPluginBundle> bundle)
    : m_host(host)
    , m_manager(manager)
    , m_bundle(std::move(bundle))
{ }

std::shared_ptr<KRPluginCommand> CommandRuns::findCommand(const QString &identifier, const QString &handler) const
{
    if (!m_bundle)
        throw ScriptException(QStringLiteral("The test's file is in no plug-in, so that it has no commands."));
    const auto &commands = m_bundle->commands();
    const auto found = commands.find(identifier);
    if (found == commands.end()) {
        throw ScriptException(
            QStringLiteral("The plug-in has no command \"%1\". It has: %2.").arg(identifier, namesIn(commands)));
    }
    const auto &handlers = found->second->handlers();
    if (handlers.find(handler) == handlers.end()) {
        throw ScriptException(QStringLiteral("The command \"%1\" has no handler \"%2\". It has: %3.")
                                  .arg(identifier, handler, namesIn(handlers)));
    }
    return found->second;
}

void CommandRuns::run(
    const QString &identifier, const QString &handler, const QVariantMap &context, const ScriptValue &done)
{
    const auto started = std::make_shared<Started>();
    started->command = findCommand(identifier, handler);
    started->key = handler;
    started->context = contextWithDocument(context, m_host.document());
    started->done = done;
    m_started.push_back(started);
    m_host.clock().async([this, started] {
        started->command->runHandlerWithKey(started->key, started->context, &m_manager);
        started->hasReturned = true;
    });
}

QStringList CommandRuns::identifiersWithHandler(const QString &handler) const
{
    QStringList identifiers;
    for (const auto &[identifier, command] : m_bundle ? m_bundle->commands() : CommandTable()) {
        if (command->handlers().contains(handler))
            identifiers.append(identifier);
    }
    return identifiers;
}

QList<DataSupplier> CommandRuns::suppliers() const
{
    const bool isAsked = m_bundle && m_bundle->suppliesData();
    return isAsked ? m_manager.dataSuppliers()->suppliers() : QList<DataSupplier>();
}

void CommandRuns::supply(const QString &supplier, const QVariantList &layers, const ScriptValue &done) const
{
    QStringList names;
    const auto known = suppliers();
    const auto found = std::find_if(known.begin(), known.end(), [&](const DataSupplier &each) {
        names.append(QStringLiteral("\"%1\"").arg(each.identifier));
        return each.identifier == supplier || each.name == supplier;
    });
    if (found == known.end()) {
        throw ScriptException(names.isEmpty()
                ? QStringLiteral(
                    "The plug-in supplies no data. Its manifest needs \"suppliesData\": true and a command "
                    "with a handler for the action \"Startup\", which registers what there is.")
                : QStringLiteral("The plug-in has no data supplier \"%1\". It has: %2.")
                      .arg(supplier, names.join(QStringLiteral(", "))));
    }
    DataSuppliers::Layers objects;
    for (const auto &layer : layers)
        objects.append(layer.value<ScriptObjectPointer>());
    m_manager.dataSuppliers()->supply(*found, objects, [done](const Result<DataSuppliers::Values> &values) {
        QVariantList texts;
        if (!values)
            return done.call({values.error().localizedDescription, texts});
        for (const auto &value : values.value())
            texts.append(value ? QVariant(*value) : QVariant::fromValue(nullptr));
        return done.call({QVariant::fromValue(nullptr), texts});
    });
}

bool CommandRuns::take(const QVariantMap &entry, const QString &identifier)
{
    const auto awaited = std::find_if(m_started.begin(), m_started.end(),
        [&identifier](const auto &run) { return run->command->identifier() == identifier; });
    if (awaited == m_started.end())
        return !isUncaughtError(entry);
    (*awaited)->log.append(QVariantMap{
        {QStringLiteral("level"), entry.value(QStringLiteral("level"))}, {QStringLiteral("text"), textOfEntry(entry)}});
    if ((*awaited)->error.isEmpty() && isUncaughtError(entry))
        (*awaited)->error = textOfUncaughtError(entry);
    return true;
}

bool CommandRuns::isDone(const Started &run) const
{
    if (!run.hasReturned)
        return false;
    const auto value = run.command->returnValue();
    const bool isPromise = value.metaType() == QMetaType::fromType<ScriptValue>()
        && value.value<ScriptValue>().kind() == ScriptValue::Kind::Promise;
    return !isPromise || value.value<ScriptValue>().isSettled() || !run.error.isEmpty()
        || !m_manager.isCommandRunning(run.command->commandSpecifier());
}

bool CommandRuns::finish()
{
    const auto found =
        std::find_if(m_started.begin(), m_started.end(), [this](const auto &run) { return isDone(*run); });
    if (found == m_started.end())
        return false;
    const auto run = *found;
    m_started.erase(found);
    callBack(*run);
    return true;
}

void CommandRuns::callBack(const Started &run)
{
    auto value = run.command->returnValue();
    if (value.metaType() == QMetaType::fromType<ScriptValue>())
        value = value.value<ScriptValue>().settledValue();
    const auto error = run.error.isEmpty()
        ? QVariant::fromValue(nullptr)
        : QVariant(QStringLiteral("The command \"%1\" has failed: %2")
                       .arg(run.command->identifier().value_or(QString()), run.error));
    run.done.call({error,
        QVariantMap{
            {QStringLiteral("returnValue"), value},
            {QStringLiteral("log"), run.log},
            {QStringLiteral("isRunning"), isRunning(run)},
        }});
}

/// The manager only looks now and then whether a command has ended.
bool CommandRuns::isRunning(const Started &run) const
{
    return m_manager.isCommandRunning(run.command->commandSpecifier()) && run.command->stayRunning();
}
