#include "manager/PluginDiscovery.h"

#include "manager/BundleLoader.h"
#include "platform/FileURL.h"
#include "platform/LTAppEnvironment.h"

#include <QHash>

namespace {

using Step = FolderWalk::Step;

void systemLog(const QString &line)
{
    LTAppEnvironment::current().systemLog(line);
}

/// Goes through the steps of a walk and keeps, of all plug-ins with one identifier, the one that counts.
class Registration
{
public:
    explicit Registration(const ShouldEnablePlugin &shouldEnable)
        : m_shouldEnable(shouldEnable)
    { }

    void enterFolder() { m_firstInFolder.push_back(m_latestNumber + 1); }
    void leaveFolder() { m_firstInFolder.pop_back(); }

    void add(const std::shared_ptr<KRPluginBundle> &bundle)
    {
        if (!bundle || !bundle->identifier())
            return;
        const auto identifier = *bundle->identifier();
        bundle->setEnabled(m_shouldEnable(identifier, bundle->version()));
        auto &found = m_found[identifier];
        const bool wasFoundInThisFolder = found.bundle && found.number >= m_firstInFolder.back();
        if (!wasFoundInThisFolder) {
            found = {bundle, ++m_latestNumber};
            return;
        }
        systemLog(QStringLiteral("Plugin at URL %1 and plugin at URL %2 have the same bundle identifier (%3). The "
                                 "second plugin will be ignored.")
                      .arg(absoluteString(found.bundle->url()), absoluteString(bundle->url()), identifier));
    }

    PluginTable table() const
    {
        PluginTable table;
        for (auto found = m_found.begin(); found != m_found.end(); ++found)
            table.insert(found.key(), found->bundle);
        return table;
    }

private:
    struct Found
    {
        std::shared_ptr<KRPluginBundle> bundle;
        /// Counts what was found; a folder's plug-ins and those of its subfolders have numbers in a row.
        int number = 0;
    };

    const ShouldEnablePlugin &m_shouldEnable;
    QHash<QString, Found> m_found;
    int m_latestNumber = 0;
    std::vector<int> m_firstInFolder;
};

std::vector<QByteArray> bundlePaths(const std::vector<Step> &steps)
{
    std::vector<QByteArray> paths;
    for (const auto &step : steps) {
        if (step.kind == Step::Kind::Bundle)
            paths.push_back(step.path);
    }
    return paths;
}

} // namespace

PluginTable pluginsFoundBy(const FolderWalk &walk, const ShouldEnablePlugin &shouldEnable)
{
    const auto loaded = loadBundles(bundlePaths(walk.steps()));
    auto next = loaded.begin();
    Registration registration(shouldEnable);
    for (const auto &step : walk.steps()) {
        switch (step.kind) {
        case Step::Kind::Enter:
            registration.enterFolder();
            break;
        case Step::Kind::Leave:
            registration.leaveFolder();
            break;
        case Step::Kind::Ignored:
            systemLog(QStringLiteral("Ignoring the contents of folder %1.")
                          .arg(absoluteString(fileURLFromPath(step.path, FileKind::Folder))));
            break;
        case Step::Kind::Bundle:
            KRPluginBundle::deliver(next->messages);
            registration.add(next->bundle);
            ++next;
            break;
        }
    }
    return registration.table();
}
