#include "SupplyArguments.h"

#include "ArgumentTexts.h"

void SupplyArguments::addTo(CLI::App &app, const AddCommand &addCommand, const GlobalOptions &options)
{
    m_supply = addCommand(app, "supply", "Put data of plug-ins into the layers of a document, or list what they offer",
        [this, &options](Output &output) { return supplyData(options, supplyOptions(), output); });
    m_supply->add_option("plugin", m_plugin, "Identifier of a plug-in")->type_name("ID");
    m_supply->add_option("supplier", m_supplier, "What it offers, where it offers more than one thing")
        ->type_name("NAME");
    m_supply->add_option("--document", m_documentFile, "Document whose layers are filled")->type_name("FILE");
    m_supply->add_option("--wait", m_waitSeconds, "Longest wait for a plug-in (60)")
        ->type_name("SECONDS")
        ->check(CLI::Range(0.0, 1e6));
    m_supply->add_option("--dump-document", m_dumpDocumentFile, "Where to write the document afterwards")
        ->type_name("FILE");
}

SupplyOptions SupplyArguments::supplyOptions() const
{
    SupplyOptions options;
    options.plugin = textIfGiven(*m_supply, "plugin", m_plugin);
    options.supplier = textIfGiven(*m_supply, "supplier", m_supplier);
    options.documentFile = textIfGiven(*m_supply, "--document", m_documentFile);
    options.waitSeconds = m_waitSeconds;
    options.dumpDocumentFile = textIfGiven(*m_supply, "--dump-document", m_dumpDocumentFile);
    return options;
}
