#pragma once

#include <QString>

/// Something that differs once a file in the bundle was written, came or went. Links are followed. Hidden files are
/// left out, and of very large bundles what is beyond ten thousand files.
QByteArray stampOfFiles(const QString &bundle);
