#pragma once

#include <QUrl>

enum class EditorStart {
    Started,
    /// The user has chosen no editor, or there is nothing to open.
    NothingToDo,
    /// Said in the system log.
    Failed
};

/// Starts the program whose path is the user default "Plugin Editor", with the path of `url` as its only argument and
/// nothing on its standard channels. It is on its own from then on. Main thread.
EditorStart openInPluginEditor(const QUrl &url);
