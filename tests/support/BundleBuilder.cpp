#include "support/BundleBuilder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

void writeFile(const QString &path, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(path));
}

BundleBuilder::BundleBuilder(const QString &folder, const QString &name)
    : m_path(folder + u'/' + name + QStringLiteral(".korvanplugin"))
{
    QDir().mkpath(m_path + QStringLiteral("/Contents/Korvan"));
    QDir().mkpath(m_path + QStringLiteral("/Contents/Resources"));
}

BundleBuilder &BundleBuilder::manifest(const QByteArray &json)
{
    writeFile(m_path + QStringLiteral("/Contents/Korvan/manifest.json"), json);
    return *this;
}

BundleBuilder &BundleBuilder::script(const QString &relativePath, const QByteArray &source)
{
    writeFile(m_path + QStringLiteral("/Contents/Korvan/") + relativePath, source);
    return *this;
}

BundleBuilder &BundleBuilder::resource(const QString &relativePath, const QByteArray &content)
{
    writeFile(m_path + QStringLiteral("/Contents/Resources/") + relativePath, content);
    return *this;
}
