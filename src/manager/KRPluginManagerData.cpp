// What plug-ins offer to put into layers.

#include "manager/KRPluginManager.h"

QList<DataSupplier> KRPluginManager::availableDataSuppliers()
{
    QSet<QString> enabled;
    const auto bundles = enabledPlugins();
    for (const auto &bundle : bundles) {
        if (bundle->suppliesData())
            enabled.insert(bundle->identifier().value_or(QString()));
    }
    auto suppliers = m_dataSuppliers.suppliers();
    suppliers.removeIf(
        [&enabled](const DataSupplier &supplier) { return !enabled.contains(supplier.pluginIdentifier); });
    return suppliers;
}
