#pragma once

#include "Commands.h"

#include <CLI/CLI.hpp>

#include <functional>
#include <string>
#include <vector>

/// The command `updates` with its own commands, and what they take.
class UpdatesArguments
{
public:
    using AddCommand = std::function<CLI::App *(
        CLI::App &parent, const char *name, const char *description, std::function<ExitCode(Output &)> command)>;

    /// `options` are read when a command is carried out; both have to live until then.
    void addTo(CLI::App &app, const AddCommand &addCommand, const GlobalOptions &options);

private:
    DownloadOptions downloadOptions() const;

    std::vector<std::string> m_plugins;
    std::string m_plugin;
    std::string m_all;
};
