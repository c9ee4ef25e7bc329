#include "RunArguments.h"

#include "ArgumentTexts.h"
#include "platform/JSONText.h"

namespace {

QVariantMap readContext(const std::string &argument)
{
    if (argument.empty())
        return {};
    const auto value = variantFromJSON(QByteArray::fromStdString(argument));
    if (!value || value.value().typeId() != QMetaType::QVariantMap)
        throw CLI::ValidationError("--context", "the context has to be a JSON object");
    return value.value().toMap();
}

} // namespace

void RunArguments::addTo(CLI::App &app, const AddCommand &addCommand, const GlobalOptions &options)
{
    m_run = addCommand(app, "run", "Run a command and show what it logs",
        [this, &options](Output &output) { return runCommand(options, m_options, output); });
    auto *const specifier =
        m_run->add_option("command", m_specifier, "The command, as PLUG-IN/COMMAND")->type_name("SPEC");
    m_run->add_option("--standalone", m_standaloneFile, "A file of bare statements to run instead")
        ->type_name("FILE")
        ->excludes(specifier);
    m_run->add_option("--handler", m_handlers, "Handler key to run; may be repeated (run)")
        ->type_name("KEY")
        ->expected(1)
        ->allow_extra_args(false)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    m_run->add_option("--document", m_documentFile, "Document to work on")->type_name("FILE");
    m_run->add_option("--context", m_context, "Further keys of the context")->type_name("JSON");
    m_run->add_option("--wait", m_waitSeconds, "Longest wait for a command that stays running (60)")
        ->type_name("SECONDS")
        ->check(CLI::Range(0.0, 1e6));
    m_run->add_option("--dump-document", m_dumpDocumentFile, "Where to write the document afterwards")
        ->type_name("FILE");
    m_run->add_option("--profile", m_profileFile, "Where to write a profile (.cpuprofile) of the scripts' time")
        ->type_name("FILE");
    m_run->add_flag("--trace", m_trace, "Show each call of the scripts into the application, with its time");
}

void RunArguments::read()
{
    m_options = runOptions();
}

RunOptions RunArguments::runOptions() const
{
    RunOptions options;
    const bool namesNothing = m_specifier.empty() && m_standaloneFile.empty();
    if (m_run->parsed() && namesNothing)
        throw CLI::RequiredError("SPEC or --standalone FILE");
    options.specifier = text(m_specifier);
    options.standaloneFile = textIfGiven(*m_run, "--standalone", m_standaloneFile);
    options.handlers = m_handlers.empty() ? QStringList{QStringLiteral("run")} : texts(m_handlers);
    options.documentFile = textIfGiven(*m_run, "--document", m_documentFile);
    options.context = readContext(m_context);
    options.waitSeconds = m_waitSeconds;
    options.dumpDocumentFile = textIfGiven(*m_run, "--dump-document", m_dumpDocumentFile);
    options.profileFile = textIfGiven(*m_run, "--profile", m_profileFile);
    options.trace = m_trace;
    return options;
}
