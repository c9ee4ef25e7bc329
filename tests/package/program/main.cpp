// A host as small as it gets: speaks German, loads the plug-ins of the folder that it is given, lists them and runs one
// command.

#include <bundles/KRPluginBundle.h>
#include <localization/KorvanPluginManagerLocalization.h>
#include <localization/KorvanPluginManagerTranslator.h>
#include <manager/KRPluginManager.h>

#include <QCoreApplication>
#include <QTextStream>

namespace {

class Log : public KRPluginLogAction
{
public:
    void log(const QVariantMap &entry, const QString &from) override
    {
        QTextStream(stdout) << from << ": " << entry.value("stringValue").toString() << Qt::endl;
        QCoreApplication::quit();
    }
    QString logStringFor(const QString &) override { return {}; }
    void clearLogFor(const QString &) override { }
};

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const auto folder = QUrl::fromLocalFile(application.arguments().at(1) + "/");

    const auto texts = KorvanPluginManagerTranslator(QLocale("de_DE"));
    if (texts)
        QCoreApplication::installTranslator(texts.get());
    QTextStream(stdout) << KorvanPluginManagerLocalizedString("untitled script") << Qt::endl;

    KRPluginManager::initialisePlugins();
    KRPluginManager manager({folder}, nullptr, nullptr);
    const auto log = std::make_shared<Log>();
    manager.setLogAction(log);
    manager.reloadPlugins();
    for (const auto &plugin : manager.plugins())
        QTextStream(stdout) << plugin->identifier().value_or("(none)") << " " << plugin->name().value_or("(none)")
                            << Qt::endl;
    manager.runHandlerWithKey("run", "greet", "com.example.host", {{"who", "host"}});
    return QCoreApplication::exec();
}
