#include "windows/DataMenu.h"

#include "bundles/KRPluginBundle.h"
#include "document/LayerData.h"
#include "platform/UserPresenter.h"
#include "plugins/PluginSystem.h"
#include "widgets/PluginText.h"

namespace {

/// A plug-in's text, with "&" as itself.
QString menuTitle(const QString &text)
{
    return withoutMnemonics(plainLine(text));
}

} // namespace

DataMenu::DataMenu(PluginSystem &plugins, std::shared_ptr<Document> document, QWidget *parent)
    : QMenu(tr("Fill with &Data"), parent)
    , m_plugins(plugins)
    , m_document(std::move(document))
{
    connect(this, &QMenu::aboutToShow, this, &DataMenu::fill);
}

void DataMenu::fill()
{
    clear();
    QHash<QString, QMenu *> submenus;
    const auto suppliers = m_plugins.manager().availableDataSuppliers();
    for (const auto &supplier : suppliers) {
        auto *&submenu = submenus[supplier.pluginIdentifier];
        if (!submenu) {
            const auto plugin = m_plugins.manager().plugins().value(supplier.pluginIdentifier);
            submenu = addMenu(menuTitle(plugin ? plugin->name().value_or(QString()) : supplier.pluginIdentifier));
        }
        add(*submenu, supplier);
    }
    if (suppliers.isEmpty())
        addAction(tr("No Plug-in Supplies Data"))->setEnabled(false);
}

void DataMenu::add(QMenu &menu, const DataSupplier &supplier)
{
    auto *const action = menu.addAction(menuTitle(supplier.name), this, [this, supplier] { supply(supplier); });
    action->setMenuRole(QAction::NoRole);
    action->setEnabled(!layersForData(m_document->selection(), supplier.kind).isEmpty());
}

void DataMenu::supply(const DataSupplier &supplier)
{
    const auto layers = layersForData(m_document->selection(), supplier.kind);
    m_plugins.manager().dataSuppliers()->supply(supplier, {layers.begin(), layers.end()},
        [=, self = QPointer(this)](const Result<DataSuppliers::Values> &values) {
            // Later: what is changed while the script runs would be a step of its command.
            LTAppEnvironment::runOnMainQueue([=] {
                if (self)
                    self->put(supplier, layers, values);
            });
        });
}

void DataMenu::put(
    const DataSupplier &supplier, const QList<LayerPointer> &layers, const Result<DataSuppliers::Values> &values)
{
    m_document->history().closeStep();
    if (values)
        putDataIntoLayers(*m_document, supplier, layers, values.value());
    else
        m_plugins.environment().userPresenter()->showMessage({supplier.name, {}, values.error().localizedDescription});
}
