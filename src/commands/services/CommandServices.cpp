#include "commands/services/CommandServices.h"

#include "commands/services/DataSupplierService.h"
#include "commands/services/DocumentsService.h"
#include "commands/services/SettingsService.h"
#include "commands/services/UserInterfaceService.h"

namespace {

template <class Service>
QVariant makeService(const ServiceContext &context)
{
    return QVariant::fromValue(ScriptObjectPointer(std::make_shared<Service>(context)));
}

/// A function that keeps the session running until the function that it returns
/// is called.
QVariant makeKeepRunning(const ServiceContext &context)
{
    return QVariant::fromValue(NativeFunction{[context](const QVariantList &) {
        const auto held = std::make_shared<std::shared_ptr<void>>(context.keepRunning());
        return QVariant::fromValue(NativeFunction{[held](const QVariantList &) {
            held->reset();
            return QVariant();
        }});
    }});
}

struct NamedService
{
    QLatin1String name;
    QVariant (*make)(const ServiceContext &context);
};

constexpr NamedService services[] = {
    {QLatin1String("data-supplier"), &makeService<DataSupplierService>},
    {QLatin1String("documents"), &makeService<DocumentsService>},
    {QLatin1String("keep-running"), &makeKeepRunning},
    {QLatin1String("settings"), &makeService<SettingsService>},
    {QLatin1String("user-interface"), &makeService<UserInterfaceService>},
};

} // namespace

QVariant makeCommandService(const QString &name, const ServiceContext &context)
{
    for (const auto &service : services) {
        if (service.name == name)
            return service.make(context);
    }
    return {};
}
