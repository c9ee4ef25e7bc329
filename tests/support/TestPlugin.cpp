#include "support/TestPlugin.h"

#include "platform/FileURL.h"
#include "support/BundleBuilder.h"

TestPlugin::TestPlugin(const TestEnvironment &environment, const QByteArray &source, const QByteArray &keys)
{
    BundleBuilder builder(environment.path(QStringLiteral("Plugins")), QStringLiteral("Tidy"));
    builder.manifest("{\"identifier\": \"com.example.tidy\", " + keys
        + "\"commands\": [{\"script\": \"tidy.js\", \"name\": \"Tidy Layers\", \"identifier\": \"tidy\"}]}");
    builder.script(QStringLiteral("tidy.js"), source);
    m_path = builder.path();
    bundle = KRPluginBundle::pluginBundleWithURL(builder.url());
}

QUrl TestPlugin::scriptURL() const
{
    return fileURLFromPath(scriptPath(), FileKind::File);
}

void TestPlugin::write(const QString &relativePath, const QByteArray &content) const
{
    writeFile(m_path + QStringLiteral("/Contents/Korvan/") + relativePath, content);
}
