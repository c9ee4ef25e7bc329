#pragma once

#include "Options.h"

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

/// What every command takes.
class GlobalArguments
{
public:
    void addTo(CLI::App &app);

    /// After the command line was parsed. Throws CLI::ValidationError for a setting that is none.
    GlobalOptions options() const;

private:
    CLI::App *m_app = nullptr;
    std::vector<std::string> m_folders;
    std::vector<std::string> m_defaults;
    std::string m_supportFolder;
    std::string m_defaultsFile;
    std::string m_resourcesFolder;
    std::string m_hostVersion;
    std::string m_blocklistURL;
    bool m_safeMode = false;
    bool m_json = false;
};
