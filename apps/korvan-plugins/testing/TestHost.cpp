#include "TestHost.h"

#include "commands/KRPluginCommandKeys.h"

TestHost::TestHost(const GlobalOptions &options, double timeLimit, std::function<void(const QString &)> complain)
    : TestHost(options, std::make_unique<QTemporaryDir>(), timeLimit, std::move(complain))
{ }

TestHost::TestHost(const GlobalOptions &options, std::unique_ptr<QTemporaryDir> folder, double timeLimit,
    std::function<void(const QString &)> complain)
    : CommandLineEnvironment(ownOptions(options, folder->path(), timeLimit))
    , m_folder(std::move(folder))
    , m_user(std::move(complain))
    , m_installation(*this)
{ }

TestHost::~TestHost() = default;

/// What the user has installed and set is no part of a test.
GlobalOptions TestHost::ownOptions(GlobalOptions options, const QString &folder, double timeLimit)
{
    options.supportFolder = folder;
    options.defaultsFile = folder + QStringLiteral("/defaults");
    options.defaults.insert(KRPluginCommandScriptTimeLimitKey, timeLimit);
    return options;
}

QVariant TestHost::scriptService(
    const QString &name, const std::shared_ptr<ScriptHost> &host, const std::shared_ptr<ScriptObject> &owner)
{
    if (name == u"testing")
        return QVariant::fromValue(m_testingService.lock());
    if (name == u"fetch")
        return QVariant::fromValue(m_network.serviceFor(host));
    return CommandLineEnvironment::scriptService(name, host, owner);
}
