#pragma once

#include <QMap>
#include <QString>

/// Plug-in identifiers with the highest version of each that is known not to work.
using IncompatibleVersions = QMap<QString, QString>;
