#pragma once

#include <QMap>
#include <QString>
#include <QUrl>
#include <QVariantMap>

/// What a feed offers: entries by version, exactly as the feed writes it. An entry has one key, `downloadURLKey`, with
/// the QUrl of the version's archive.
using VersionsDictionary = QMap<QString, QVariantMap>;
inline const QString downloadURLKey = QStringLiteral("downloadURL");

/// Updates to be downloaded: for a plug-in's identifier, the URLs of archives by version.
using UpdateList = QMap<QString, QMap<QString, QUrl>>;
