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
    void addCreate(CLI::App &app, const AddCommand &addCommand, const GlobalOptions &options);
    void addValidate(CLI::App &app, const AddCommand &addCommand);
    void addTest(CLI::App &app, const AddCommand &addCommand, const GlobalOptions &options);
    void addPack(CLI::App &app, const AddCommand &addCommand, const GlobalOptions &options);
    CreateOptions createOptions() const;
    TestOptions testOptions() const;
    PackOptions packOptions() const;

    CLI::App *m_create = nullptr;
    CLI::App *m_test = nullptr;
    CLI::App *m_pack = nullptr;
    std::string m_name;
    std::string m_identifier;
    std::string m_template = "command";
    std::vector<std::string> m_paths;
    std::string m_document;
    std::string m_filter;
    double m_limitSeconds = 5;
    std::string m_path;
    std::string m_archive;
    std::string m_feed;
    std::string m_url;
};
