#pragma once

#include "Commands.h"

#include <CLI/CLI.hpp>

#include <functional>
#include <string>

/// The command `supply`, and what it takes.
class SupplyArguments
{
public:
    using AddCommand = std::function<CLI::App *(
        CLI::App &parent, const char *name, const char *description, std::function<ExitCode(Output &)> command)>;

    /// `options` are read when the command is carried out; both have to live until then.
    void addTo(CLI::App &app, const AddCommand &addCommand, const GlobalOptions &options);

private:
    SupplyOptions supplyOptions() const;

    CLI::App *m_supply = nullptr;
    std::string m_plugin;
    std::string m_supplier;
    std::string m_documentFile;
    std::string m_dumpDocumentFile;
    double m_waitSeconds = 60;
};
