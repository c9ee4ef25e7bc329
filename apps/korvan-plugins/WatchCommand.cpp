#include "Commands.h"

#include "BundleFiles.h"
#include "PluginReport.h"
#include "PluginSession.h"
#include "StopSignals.h"
#include "platform/JSONText.h"
#include "platform/NotificationCenter.h"

#include <QCoreApplication>
#include <QMap>

namespace {

/// Everything that tells one state of a plug-in from another, its files included.
QByteArray contentOf(const KRPluginBundle &bundle, const KRPluginManager &manager)
{
    const auto description = jsonFromVariant(QVariant::fromValue(describePlugin(bundle, manager)), JSONStyle::Compact);
    return description + stampOfFiles(bundle.url().toLocalFile());
}

class Watch
{
public:
    Watch(const GlobalOptions &options, Output &output)
        : m_output(output)
        , m_session(options)
    {
        m_session.manager().registerIncompatiblePlugins();
        m_observer =
            LTAppEnvironment::current().notificationCenter().addObserver(KRPluginManagerDidReloadPluginsNotification,
                &m_session.manager(), [this](const Notification &) { report(); });
    }

    void report()
    {
        QMap<QString, QByteArray> contents;
        QStringList added;
        QStringList changed;
        const auto plugins = m_session.manager().plugins();
        for (auto plugin = plugins.begin(); plugin != plugins.end(); ++plugin) {
            const auto content = contentOf(**plugin, m_session.manager());
            const auto before = m_contents.constFind(plugin.key());
            if (before == m_contents.constEnd())
                added.append(plugin.key());
            else if (*before != content)
                changed.append(plugin.key());
            contents.insert(plugin.key(), content);
        }
        QStringList removed;
        for (auto before = m_contents.constBegin(); before != m_contents.constEnd(); ++before) {
            if (!contents.contains(before.key()))
                removed.append(before.key());
        }
        m_contents = contents;
        print(plugins.size(), added, removed, changed);
    }

private:
    void print(qsizetype plugins, const QStringList &added, const QStringList &removed, const QStringList &changed)
    {
        const double milliseconds = double(m_session.manager().durationOfLatestReload().count()) / 1000;
        m_output.documentLine({
            {QStringLiteral("event"), QStringLiteral("reload")},
            {QStringLiteral("plugins"), plugins},
            {QStringLiteral("added"), added},
            {QStringLiteral("removed"), removed},
            {QStringLiteral("changed"), changed},
            {QStringLiteral("milliseconds"), milliseconds},
        });
        m_output.line(QStringLiteral("%1 plug-ins in %2 ms").arg(plugins).arg(milliseconds));
        printNames(QStringLiteral("+ "), added, Output::Colour::Green);
        printNames(QStringLiteral("- "), removed, Output::Colour::Red);
        printNames(QStringLiteral("~ "), changed, Output::Colour::Yellow);
    }

    void printNames(const QString &mark, const QStringList &identifiers, Output::Colour colour)
    {
        for (const auto &identifier : identifiers)
            m_output.line(QStringLiteral("  ") + mark + identifier, colour);
    }

    Output &m_output;
    PluginSession m_session;
    NotificationObserver m_observer;
    QMap<QString, QByteArray> m_contents;
};

} // namespace

ExitCode watchPlugins(const GlobalOptions &options, Output &output)
{
    const StopSignals stopSignals([] { QCoreApplication::quit(); });
    Watch watch(options, output);
    watch.report();
    QCoreApplication::exec();
    return ExitCode::Done;
}
