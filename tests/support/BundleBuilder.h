#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

/// Writes a file and the folders on the way to it. A failure fails the program: no test makes sense without its files.
void writeFile(const QString &path, const QByteArray &content);

/// Makes plug-in bundles on disk, each call a folder "<name>.korvanplugin" below `folder`.
class BundleBuilder
{
public:
    /// Makes the bundle's folders.
    BundleBuilder(const QString &folder, const QString &name);

    BundleBuilder &manifest(const QByteArray &json);
    BundleBuilder &script(const QString &relativePath, const QByteArray &source);
    BundleBuilder &resource(const QString &relativePath, const QByteArray &content);

    QString path() const { return m_path; }
    /// Ends in "/".
    QUrl url() const { return QUrl::fromLocalFile(m_path + u'/'); }

private:
    QString m_path;
};
