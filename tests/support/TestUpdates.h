#pragma once

#include "bundles/PluginTable.h"
#include "updates/KRPluginVersions.h"

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <memory>

/// A plug-in on disk with a version and a feed (empty: none), loaded.
std::shared_ptr<KRPluginBundle> pluginWithFeed(
    const QString &folder, const QString &identifier, const QString &version, const QUrl &feed);

/// What a feed offers: one version, in the JSON form.
QByteArray jsonFeed(const QString &version, const QUrl &archive);
/// The same as an appcast.
QByteArray appcastFeed(const QString &version, const QUrl &archive);

/// The record of a plug-in whose feed offers these versions, each from "https://example.com/<version>.zip".
std::shared_ptr<KRPluginVersions> recordOf(const QString &identifier, const QStringList &versions);
