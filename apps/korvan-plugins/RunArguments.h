#pragma once

#include "Commands.h"

#include <CLI/CLI.hpp>

#include <functional>
#include <string>
#include <vector>

/// The command `run`, and what it takes.
class RunArguments
{
public:
    using AddCommand = std::function<CLI::App *(
        CLI::App &parent, const char *name, const char *description, std::function<ExitCode(Output &)> command)>;

    /// `options` are read when the command is carried out; both have to live until then.
    void addTo(CLI::App &app, const AddCommand &addCommand, const GlobalOptions &options);

    /// After the command line was parsed. Throws CLI::ParseError for arguments that do not fit each other.
    void read();

private:
    RunOptions runOptions() const;

    CLI::App *m_run = nullptr;
    RunOptions m_options;
    std::vector<std::string> m_handlers;
    std::string m_specifier;
    std::string m_standaloneFile;
    std::string m_documentFile;
    std::string m_context;
    std::string m_dumpDocumentFile;
    std::string m_profileFile;
    double m_waitSeconds = 60;
    bool m_trace = false;
};
