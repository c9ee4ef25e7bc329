#include "commands/DataSuppliers.h"

#include <algorithm>
#include <vector>

struct DataSuppliers::Registry
{
    struct Entry
    {
        DataSupplier supplier;
        Supply supply;
    };

    std::vector<std::shared_ptr<Entry>> entries;
};

DataSuppliers::DataSuppliers()
    : m_registry(std::make_shared<Registry>())
{ }

DataSuppliers::~DataSuppliers() = default;

QList<DataSupplier> DataSuppliers::suppliers() const
{
    QList<DataSupplier> suppliers;
    for (const auto &entry : m_registry->entries)
        suppliers.append(entry->supplier);
    return suppliers;
}

void DataSuppliers::supply(const DataSupplier &supplier, const Layers &layers, const Answer &answer) const
{
    const auto &entries = m_registry->entries;
    const auto found = std::find_if(
        entries.begin(), entries.end(), [&supplier](const auto &entry) { return entry->supplier == supplier; });
    if (found == entries.end()) {
        const auto message = QStringLiteral("The plug-in \"%1\" offers no \"%2\" any more.");
        return answer(KRError{QStringLiteral("data"), 0, message.arg(supplier.pluginIdentifier, supplier.name)});
    }
    const auto entry = *found; // which may take itself back meanwhile
    entry->supply(layers, answer);
}

std::shared_ptr<void> DataSuppliers::add(const DataSupplier &supplier, Supply supply)
{
    const auto entry = std::make_shared<Registry::Entry>(Registry::Entry{supplier, std::move(supply)});
    m_registry->entries.push_back(entry);
    const auto remove = [registry = std::weak_ptr(m_registry), entry](void *) {
        if (const auto current = registry.lock())
            std::erase(current->entries, entry);
    };
    return {entry.get(), remove};
}
