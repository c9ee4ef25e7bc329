#include "commands/services/DataSupplierService.h"

#include "platform/script/ScriptClass.h"
#include "platform/script/ScriptEvents.h"
#include "platform/script/ScriptException.h"

#include <utility>

DataSupplierService::DataSupplierService(ServiceContext context)
    : m_context(std::move(context))
    , m_life(std::make_shared<char>())
{ }

DataSupplierService::~DataSupplierService()
{
    m_life.reset();
    for (const auto &[id, request] : std::exchange(m_requests, {}))
        fail(request, QStringLiteral("The plug-in ended before it had the values."));
}

void DataSupplierService::registerSupplier(
    const QString &identifier, const QString &name, const QString &kind, const QVariant &supply)
{
    const auto command = m_context.command.lock();
    const auto bundle = command ? command->pluginBundle() : nullptr;
    if (!bundle || !bundle->suppliesData()) {
        throw ScriptException(QStringLiteral("Only plug-ins whose manifest says \"suppliesData\": true can register "
                                             "data suppliers. Add that to the manifest."));
    }
    auto *const suppliers = command->manager() ? command->manager()->dataSuppliers() : nullptr;
    if (!suppliers)
        throw ScriptException(QStringLiteral("This application asks no plug-ins for data."));
    const auto kindOfData = kind == u"image" ? DataSupplier::Kind::Image : DataSupplier::Kind::Text;
    const DataSupplier supplier{bundle->identifier().value_or(QString()), identifier, name, kindOfData};
    const auto request = [this, life = std::weak_ptr(m_life), name, function = supply.value<ScriptValue>()](
                             const DataSuppliers::Layers &layers, const DataSuppliers::Answer &answer) {
        if (!life.expired())
            this->request(name, function, layers, answer);
    };
    m_registered.erase(identifier); // first: one that takes its place comes last
    m_registered[identifier] = {suppliers->add(supplier, request), m_context.keepRunning()};
}

bool DataSupplierService::unregister(const QString &identifier)
{
    // Held until it is out of the table: the session may notice that nothing
    // keeps it any more.
    const auto entry = m_registered.extract(identifier);
    return !entry.empty();
}

void DataSupplierService::request(const QString &supplierName, const ScriptValue &supply,
    const DataSuppliers::Layers &layers, const DataSuppliers::Answer &answer)
{
    const int id = ++m_latestRequest;
    m_requests[id] = {supplierName, answer, m_context.keepRunning()};
    QVariantList objects;
    for (const auto &layer : layers)
        objects.append(QVariant::fromValue(layer));
    const NativeFunction answered{[this, life = std::weak_ptr(m_life), id](const QVariantList &valuesAndError) {
        if (!life.expired())
            finish(id, valuesAndError);
        return QVariant();
    }};
    runAsScriptEvent([supply, objects, answered] {
        supply.call({QVariant::fromValue(objects), QVariant::fromValue(answered)});
    });
}

void DataSupplierService::finish(int id, const QVariantList &valuesAndError)
{
    const auto entry = m_requests.extract(id);
    if (entry.empty())
        return;
    const auto &request = entry.mapped();
    const auto error = valuesAndError.value(1);
    if (error.typeId() == QMetaType::QString) {
        const auto message = QStringLiteral("The data supplier \"%1\" has failed: %2");
        if (const auto command = m_context.command.lock())
            command->error(message.arg(request.supplierName, error.toString()));
        return fail(request, message.arg(request.supplierName, error.toString()));
    }
    DataSuppliers::Values values;
    const auto elements = valuesAndError.value(0).toList();
    for (const auto &element : elements)
        values.append(element.typeId() == QMetaType::QString ? std::optional(element.toString()) : std::nullopt);
    request.answer(values);
}

void DataSupplierService::fail(const Request &request, const QString &message)
{
    request.answer(KRError{QStringLiteral("data"), 0, message});
}

const ScriptClass &DataSupplierService::scriptClass() const
{
    static constexpr ScriptOperation operations[] = {
        scriptOperation<&DataSupplierService::registerSupplier>("register", "(id, name, kind, supply: Function)"),
        scriptOperation<&DataSupplierService::unregister>("unregister", "(id)"),
    };
    static constexpr ScriptClass scriptClass{"DataSupplierService", operations};
    return scriptClass;
}
