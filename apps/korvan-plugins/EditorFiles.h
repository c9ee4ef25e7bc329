#pragma once

#include <QString>

// What a new plug-in has beside "Contents" for its author's editor, so that it completes at once: nothing that users
// get.

/// The typings of what scripts find. Hidden, so that hosts do not watch it.
inline const QString editorTypings = QStringLiteral(".typings");
/// Tells an editor where the scripts and the typings are.
inline const QString editorProject = QStringLiteral("jsconfig.json");
