#pragma once

#include "support/servers/ChildProcess.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

/// How a run of the program has ended.
struct Finished
{
    /// -1: it did not end by itself.
    int exitCode = -1;
    QByteArray output;
    /// The lines on standard error.
    QStringList errors;

    QJsonObject json() const { return QJsonDocument::fromJson(output).object(); }
};

/// The folder of the example plug-ins and documents.
inline const QString examples = QStringLiteral(KORVAN_SOURCE_DIR "/examples");

/// Writes a file and the folders on the way to it. A failure fails the program: no test makes sense without its files.
inline void writeFile(const QString &path, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(path));
}

/// Runs the program as a shell starts it, in a folder that is the user's home and everything that the user has.
class CommandLineFixture
{
protected:
    void makeFolder() { m_folder = std::make_unique<QTemporaryDir>(); }

    /// With its output in a file, if one is named, and with that on its standard input.
    Finished run(const QStringList &arguments, const QString &outputFile = {}, const QByteArray &input = {}) const
    {
        const QTemporaryDir outputs;
        const auto variable = [](const char *name, const QString &path) {
            return QByteArray(name) + '=' + QFile::encodeName(path);
        };
        ChildProcess process({QStringLiteral(KORVAN_PLUGINS_PROGRAM), arguments, m_folder->path(),
            outputFile.isEmpty() ? outputs.filePath(QStringLiteral("output")) : outputFile,
            m_environment
                + QList<QByteArray>{variable("HOME", m_folder->path()),
                    variable("XDG_DATA_HOME", m_folder->filePath(QStringLiteral("data"))),
                    variable("XDG_CONFIG_HOME", m_folder->filePath(QStringLiteral("config")))},
            outputs.filePath(QStringLiteral("errors"))});
        process.write(input);
        process.closeInput();
        const int exitCode = process.waitForEnd();
        const auto errors = QString::fromUtf8(fileContent(outputs.filePath(QStringLiteral("errors"))));
        return {
            exitCode, fileContent(outputs.filePath(QStringLiteral("output"))), errors.split(u'\n', Qt::SkipEmptyParts)};
    }

    static QByteArray fileContent(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// A plug-in in the folder "plugins", with one script "script.js".
    void plugin(const QString &name, const QByteArray &manifest, const QByteArray &script = "function onRun() {}") const
    {
        const auto scripts = m_folder->filePath(QStringLiteral("plugins/%1.korvanplugin/Contents/Korvan/").arg(name));
        writeFile(scripts + QStringLiteral("manifest.json"), manifest);
        writeFile(scripts + QStringLiteral("script.js"), script);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    /// "NAME=value", in place of what the test was started with.
    QList<QByteArray> m_environment;
};
