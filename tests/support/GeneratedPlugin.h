#pragma once

#include <QString>
#include <QUrl>

/// Writes a plug-in below `folder` as nobody would write it by hand: the same one for the same number, of any mixture
/// of keys, names, scripts and icons that makes a plug-in. Answers its URL.
QUrl writeGeneratedPlugin(const QString &folder, unsigned number);
