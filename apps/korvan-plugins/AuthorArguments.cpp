#include "AuthorArguments.h"

#include "ArgumentTexts.h"

void AuthorArguments::addTo(CLI::App &app, const AddCommand &addCommand, const GlobalOptions &)
{
    addValidate(app, addCommand);
}

void AuthorArguments::addValidate(CLI::App &app, const AddCommand &addCommand)
{
    auto *const validate = addCommand(app, "validate", "Check plug-ins for mistakes, without running them",
        [this](Output &output) { return validatePlugins({texts(m_paths)}, output); });
    validate->add_option("paths", m_paths, "Bundle folders")->type_name("PATH")->required();
}
