#pragma once

#include "document/Document.h"

#include "commands/DataSuppliers.h"

#include <QMenu>

#include <memory>

class PluginSystem;

/// What plug-ins offer to put into the selected layers, by plug-in; and puts it there.
class DataMenu final : public QMenu
{
    Q_OBJECT

public:
    DataMenu(PluginSystem &plugins, std::shared_ptr<Document> document, QWidget *parent = nullptr);

private:
    void fill();
    void add(QMenu &menu, const DataSupplier &supplier);
    void supply(const DataSupplier &supplier);
    void put(
        const DataSupplier &supplier, const QList<LayerPointer> &layers, const Result<DataSuppliers::Values> &values);

    PluginSystem &m_plugins;
    std::shared_ptr<Document> m_document;
};
