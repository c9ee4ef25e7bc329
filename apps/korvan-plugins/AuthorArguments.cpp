#include "AuthorArguments.h"

#include "ArgumentTexts.h"
#include "UpdateFeedFile.h"

namespace {

/// "" for the name of a feed whose format is known by it.
std::string flawOfFeed(const std::string &file)
{
    return updateFeedFormat(text(file)) ? std::string() : "a feed's name has to end in .json, .xml or .rss";
}

} // namespace

void AuthorArguments::addTo(CLI::App &app, const AddCommand &addCommand, const GlobalOptions &options)
{
    addCreate(app, addCommand, options);
    addValidate(app, addCommand);
    addTest(app, addCommand, options);
    addPack(app, addCommand, options);
}

void AuthorArguments::addCreate(CLI::App &app, const AddCommand &addCommand, const GlobalOptions &options)
{
    m_create = addCommand(app, "create", "Make a new plug-in from a template, ready to run",
        [this, &options](Output &output) { return createNewPlugin(options, createOptions(), output); });
    m_create->add_option("name", m_name, "The plug-in's name")->type_name("NAME")->required();
    m_create->add_option("--identifier", m_identifier, "Its identifier (com.example. and the name)")->type_name("ID");
    m_create->add_option("--template", m_template, "What it is to become (command)")
        ->check(CLI::IsMember({"command", "long-running", "data-supplier"}));
}

void AuthorArguments::addValidate(CLI::App &app, const AddCommand &addCommand)
{
    auto *const validate = addCommand(app, "validate", "Check plug-ins for mistakes, without running them",
        [this](Output &output) { return validatePlugins({texts(m_paths)}, output); });
    validate->add_option("paths", m_paths, "Bundle folders")->type_name("PATH")->required();
}

void AuthorArguments::addTest(CLI::App &app, const AddCommand &addCommand, const GlobalOptions &options)
{
    m_test = addCommand(app, "test", "Run the tests of plug-ins",
        [this, &options](Output &output) { return testPlugins(options, testOptions(), output); });
    m_test->add_option("paths", m_paths, "Bundle folders, or files *.test.js and folders of them")
        ->type_name("PATH")
        ->required();
    m_test->add_option("--document", m_document, "Document that each test works on a copy of")->type_name("FILE");
    m_test->add_option("--filter", m_filter, "Only tests with that in their title")->type_name("TEXT");
    m_test->add_option("--limit", m_limitSeconds, "Longest time for a test (5)")
        ->type_name("SECONDS")
        ->check(CLI::Range(0.01, 1e6));
}

void AuthorArguments::addPack(CLI::App &app, const AddCommand &addCommand, const GlobalOptions &options)
{
    m_pack = addCommand(app, "pack", "Pack a plug-in for its users, with the feed that offers it to them",
        [this, &options](Output &output) { return packPlugin(options, packOptions(), output); });
    m_pack->add_option("path", m_path, "Bundle folder")->type_name("PATH")->required();
    m_pack->add_option("--output", m_archive, "The archive (name and version, in this folder)")->type_name("ZIP");
    auto *const feed = m_pack->add_option("--feed", m_feed, "Update feed to write: .json, or .xml and .rss")
                           ->type_name("FILE")
                           ->check(CLI::Validator(flawOfFeed, std::string()));
    auto *const url = m_pack->add_option("--url", m_url, "Where the archive will be; or its folder, with / at the end")
                          ->type_name("URL");
    feed->needs(url);
    url->needs(feed);
}

CreateOptions AuthorArguments::createOptions() const
{
    return {text(m_name), textIfGiven(*m_create, "--identifier", m_identifier), text(m_template)};
}

TestOptions AuthorArguments::testOptions() const
{
    return {texts(m_paths), textIfGiven(*m_test, "--document", m_document), text(m_filter), m_limitSeconds};
}

PackOptions AuthorArguments::packOptions() const
{
    return {
        text(m_path), textIfGiven(*m_pack, "--output", m_archive), textIfGiven(*m_pack, "--feed", m_feed), text(m_url)};
}
