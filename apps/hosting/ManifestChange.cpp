#include "hosting/ManifestChange.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

bool changeManifest(const QString &bundle, const QString &key, const QString &value)
{
    QFile file(bundle + QStringLiteral("/Contents/Korvan/manifest.json"));
    if (!file.open(QIODevice::ReadWrite))
        return false;
    auto manifest = QJsonDocument::fromJson(file.readAll()).object();
    manifest.insert(key, value);
    return file.resize(0) && file.seek(0) && file.write(QJsonDocument(manifest).toJson()) > 0;
}
