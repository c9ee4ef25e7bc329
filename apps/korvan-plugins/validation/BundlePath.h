#pragma once

#include <QString>

/// Whether hosts find a regular file at that path in a bundle, which may go over links.
bool isFileInBundle(const QString &bundle, const QString &relativePath);

/// Whether that file lies outside of the bundle: by its path, or because a link leads out.
bool leadsOut(const QString &bundle, const QString &relativePath);
