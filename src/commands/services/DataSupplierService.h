#pragma once

#include "commands/DataSuppliers.h"
#include "commands/services/ServiceContext.h"
#include "platform/script/ScriptValue.h"

#include <QVariantList>

#include <map>
#include <memory>

/// "host:data-supplier": registers what a command's scripts offer to put into
/// layers. Everything registered keeps the session running, and is taken back
/// when it ends; requests that wait then fail.
class DataSupplierService final : public ScriptObject
{
public:
    explicit DataSupplierService(ServiceContext context);
    ~DataSupplierService() override;

    /// `supply` is called with an array of layers and a function that takes the
    /// values, or null and what went wrong.
    void registerSupplier(const QString &identifier, const QString &name, const QString &kind, const QVariant &supply);
    /// False when there is none of that identifier.
    bool unregister(const QString &identifier);

    const ScriptClass &scriptClass() const override;

private:
    struct Registered
    {
        std::shared_ptr<void> registration;
        std::shared_ptr<void> keepsRunning;
    };
    struct Request
    {
        QString supplierName;
        DataSuppliers::Answer answer;
        std::shared_ptr<void> keepsRunning;
    };

    void request(const QString &supplierName, const ScriptValue &supply, const DataSuppliers::Layers &layers,
        const DataSuppliers::Answer &answer);
    void finish(int id, const QVariantList &valuesAndError);
    static void fail(const Request &request, const QString &message);

    ServiceContext m_context;
    std::map<QString, Registered> m_registered;
    std::map<int, Request> m_requests;
    int m_latestRequest = 0;
    /// Tells callbacks whether this object still exists.
    std::shared_ptr<char> m_life;
};
