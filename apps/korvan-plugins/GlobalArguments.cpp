#include "GlobalArguments.h"

#include "ArgumentTexts.h"
#include "platform/JSONText.h"

namespace {

QVariantMap readDefaults(const std::vector<std::string> &arguments)
{
    QVariantMap defaults;
    for (const auto &argument : arguments) {
        const auto pair = QByteArray::fromStdString(argument);
        const auto equals = pair.indexOf('=');
        const auto value = variantFromJSON(pair.mid(equals + 1));
        const bool isUsable =
            value && value.value().typeId() != QMetaType::Nullptr && value.value().typeId() != QMetaType::QVariantMap;
        if (equals <= 0 || !isUsable) {
            throw CLI::ValidationError(
                "--default", "\"" + argument + "\" is not KEY=JSON with a text, number, boolean or array");
        }
        defaults.insert(QString::fromUtf8(pair.left(equals)), value.value());
    }
    return defaults;
}

} // namespace

void GlobalArguments::addTo(CLI::App &app)
{
    m_app = &app;
    app.add_option("--folder", m_folders, "A plug-in folder; may be repeated, replaces the usual ones")
        ->type_name("DIR")
        ->expected(1)
        ->allow_extra_args(false)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    app.add_option("--support-dir", m_supportFolder, "The application's support folder")->type_name("DIR");
    app.add_option("--defaults", m_defaultsFile, "The file of the user's settings")->type_name("FILE");
    app.add_option("--default", m_defaults, "One setting for this call; may be repeated")
        ->type_name("KEY=JSON")
        ->expected(1)
        ->allow_extra_args(false)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    app.add_flag("--safe-mode", m_safeMode, "Load every plug-in disabled");
    app.add_option("--resources", m_resourcesFolder, "The application's resources")->type_name("DIR");
    app.add_option("--host-version", m_hostVersion, "The application's version")->type_name("VERSION");
    app.add_option("--blocklist-url", m_blocklistURL, "Where the vendor's list is fetched, up to the host's name")
        ->type_name("URL");
    app.add_flag("--json", m_json, "Print one JSON document");
}

GlobalOptions GlobalArguments::options() const
{
    GlobalOptions options;
    if (!m_folders.empty())
        options.folders = texts(m_folders);
    options.supportFolder = textIfGiven(*m_app, "--support-dir", m_supportFolder);
    options.defaultsFile = textIfGiven(*m_app, "--defaults", m_defaultsFile);
    options.defaults = readDefaults(m_defaults);
    options.resourcesFolder = textIfGiven(*m_app, "--resources", m_resourcesFolder);
    options.hostVersion = textIfGiven(*m_app, "--host-version", m_hostVersion);
    options.blocklistURL = textIfGiven(*m_app, "--blocklist-url", m_blocklistURL);
    options.safeMode = m_safeMode;
    options.json = m_json;
    return options;
}
