#pragma once

#include "platform/Export.h"

#include <QUrl>

#include <optional>

enum class EditorStart {
    Started,
    /// The user has chosen no editor, or there is nothing to open.
    NothingToDo,
    /// Said in the system log.
    Failed
};

/// Starts the program whose path is the user default "Plugin Editor", with the path of `url` as its only argument and
/// nothing on its standard channels. It is on its own from then on. Main thread.
///
/// `line`, from 1, is where to look; the program finds it in the variable KORVAN_EDITOR_LINE, since no second argument
/// means the same to all editors.
KORVAN_EXPORT EditorStart openInPluginEditor(const QUrl &url, std::optional<int> line = std::nullopt);
