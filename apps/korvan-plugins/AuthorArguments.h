#pragma once

#include "Commands.h"

#include <CLI/CLI.hpp>

#include <functional>
#include <string>
#include <vector>

/// The commands for authors of plug-ins, and what they take.
class AuthorArguments
{
public:
    using AddCommand = std::function<CLI::App *(
        CLI::App &parent, const char *name, const char *description, std::function<ExitCode(Output &)> command)>;

    /// `options` are read when a command is carried out; both have to live until then.
    void addTo(CLI::App &app, const AddCommand &addCommand, const GlobalOptions &options);

private:
    void addValidate(CLI::App &app, const AddCommand &addCommand);

    std::vector<std::string> m_paths;
};
