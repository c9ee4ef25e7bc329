#include "widgets/plugins/PluginFileInstaller.h"

#include "localization/Localizable.h"
#include "manager/KRPluginManager.h"
#include "platform/LTAppEnvironment.h"
#include "platform/LTCompareVersions.h"
#include "widgets/PluginText.h"
#include "widgets/plugins/StagedPlugin.h"

#include <QDir>
#include <QFileInfo>
#include <QThreadPool>

using Kind = PluginInstallOutcome::Kind;

/// What waits for its place, and for the user's answer.
struct PluginFileInstaller::Candidate
{
    std::shared_ptr<StagedPlugin> staged;
    std::shared_ptr<KRPluginBundle> bundle;
    PluginInstallOutcome outcome;
};

namespace {

/// For the user.
QString fileName(const QString &path)
{
    return plainLine(QFileInfo(QDir::cleanPath(path)).fileName());
}

QString stagingFolder()
{
    const auto folder = LTAppEnvironment::current().applicationSupportDirectory(
        QStringLiteral("PluginStaging"), LTAppEnvironment::FolderCreation::IfNeeded);
    return folder.isEmpty() ? QDir::tempPath() : QDir::cleanPath(folder.toLocalFile());
}

PluginReplacement::Kind kindOf(int order)
{
    if (order == 0)
        return PluginReplacement::Kind::Same;
    return order > 0 ? PluginReplacement::Kind::Newer : PluginReplacement::Kind::Older;
}

/// A manifest without an identifier is known by where it lies, which here is for a moment only.
bool hasOwnIdentifier(const KRPluginBundle &bundle)
{
    return bundle.identifier() && *bundle.identifier() != bundle.url().toString(QUrl::FullyEncoded);
}

bool isInstalled(const QString &path, const PluginTable &plugins)
{
    const auto asked = QFileInfo(path).canonicalFilePath();
    return std::any_of(plugins.begin(), plugins.end(), [&asked](const std::shared_ptr<KRPluginBundle> &plugin) {
        return !asked.isEmpty() && QFileInfo(QDir::cleanPath(plugin->url().toLocalFile())).canonicalFilePath() == asked;
    });
}

} // namespace

PluginFileInstaller::PluginFileInstaller(KRPluginManager &manager, Question question, QObject *parent)
    : QObject(parent)
    , m_manager(&manager)
    , m_question(std::move(question))
{ }

PluginFileInstaller::~PluginFileInstaller() = default;

bool PluginFileInstaller::canInstall(const QString &path)
{
    return mayBePlugin(path);
}

void PluginFileInstaller::fail(const QString &path, const QString &message)
{
    PluginInstallOutcome outcome;
    outcome.path = path;
    outcome.message = message;
    emit finished(outcome);
}

void PluginFileInstaller::install(const QString &path)
{
    if (!m_manager)
        return;
    if (isInstalled(path, m_manager->plugins())) {
        fail(path, Localizable::tr("“%1” is installed already.").arg(fileName(path)));
        return;
    }
    QThreadPool::globalInstance()->start([self = QPointer(this), path, parent = stagingFolder()] {
        auto result = StagedPlugin::stage(path, parent);
        LTAppEnvironment::runOnMainQueue([self, path, result = std::move(result)] {
            if (self)
                self->staged(path, result);
        });
    });
}

void PluginFileInstaller::staged(const QString &path, const Result<std::shared_ptr<StagedPlugin>> &result)
{
    if (!m_manager)
        return;
    if (!result) {
        fail(path, result.error().localizedDescription);
        return;
    }
    auto bundle = read(*result.value(), path);
    if (!bundle) {
        fail(path, bundle.error().localizedDescription);
        return;
    }
    const auto candidate = std::make_shared<Candidate>();
    candidate->staged = result.value();
    candidate->bundle = std::move(bundle).value();
    candidate->outcome = {Kind::Declined, path, *candidate->bundle->identifier(),
        candidate->bundle->name().value_or(QString()), candidate->bundle->version().value_or(QString()), {}};
    if (const auto installed = m_manager->plugins().value(candidate->outcome.identifier))
        ask(candidate, installed);
    else
        finish(candidate);
}

Result<std::shared_ptr<KRPluginBundle>> PluginFileInstaller::read(const StagedPlugin &staged, const QString &path) const
{
    const auto name = fileName(path);
    const auto url = m_manager->firstPluginBundleFoundInFolder(QUrl::fromLocalFile(staged.folder() + u'/'));
    if (url.isEmpty())
        return pluginFileError(Localizable::tr("There is no plug-in in “%1”.").arg(name));
    const bool isLink = QFileInfo(QDir::cleanPath(url.toLocalFile())).isSymbolicLink();
    auto bundle = isLink ? nullptr : KRPluginBundle::pluginBundleWithURL(url);
    if (!bundle)
        return pluginFileError(Localizable::tr("The manifest of “%1” is missing or cannot be read.").arg(name));
    if (!hasOwnIdentifier(*bundle))
        return pluginFileError(Localizable::tr("The manifest of “%1” names no identifier.").arg(name));
    return bundle;
}

void PluginFileInstaller::ask(const CandidatePointer &candidate, const std::shared_ptr<KRPluginBundle> &installed)
{
    if (!m_question) {
        emit finished(candidate->outcome);
        return;
    }
    const PluginReplacement replacement{candidate->outcome.name, installed->version().value_or(QString()),
        candidate->outcome.version, kindOf(LTCompareVersions(candidate->bundle->version(), installed->version()))};
    m_question(replacement, [self = QPointer(this), candidate](Answer answer) {
        if (!self)
            return;
        if (answer == Answer::Replace)
            self->finish(candidate);
        else
            emit self->finished(candidate->outcome);
    });
}

void PluginFileInstaller::finish(const CandidatePointer &candidate)
{
    if (!m_manager)
        return;
    auto &outcome = candidate->outcome;
    KRError error;
    const bool isDone = m_manager->installPluginAtURL(candidate->bundle->url(), outcome.identifier, &error);
    outcome.kind = isDone ? Kind::Installed : Kind::Failed;
    outcome.message = error.localizedDescription;
    if (isDone)
        m_manager->reloadPlugins();
    else if (outcome.message.isEmpty())
        outcome.message = Localizable::tr("Failure to install plugin.");
    emit finished(outcome);
}
