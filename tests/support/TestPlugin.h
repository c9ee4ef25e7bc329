#pragma once

#include "bundles/KRPluginBundle.h"
#include "support/TestEnvironment.h"

#include <memory>

/// A plug-in "com.example.tidy" on disk with the one command "tidy", named "Tidy Layers", of the script
/// "Contents/Korvan/tidy.js".
class TestPlugin
{
public:
    /// `keys` are further members of the manifest, each followed by a comma.
    TestPlugin(const TestEnvironment &environment, const QByteArray &source, const QByteArray &keys = {});

    std::shared_ptr<KRPluginCommand> command() const { return bundle->commands().at(QStringLiteral("tidy")); }
    QString scriptPath() const { return m_path + QStringLiteral("/Contents/Korvan/tidy.js"); }
    QUrl scriptURL() const;
    /// Writes a file below "Contents/Korvan".
    void write(const QString &relativePath, const QByteArray &content) const;

    std::shared_ptr<KRPluginBundle> bundle;

private:
    QString m_path;
};
