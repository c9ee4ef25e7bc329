#pragma once

#include "widgets/plugins/PluginFileInstaller.h"

#include <functional>

class QWidget;

// What the window for plug-ins asks before it takes something away. Each question stands before `window` without
// stopping the program, and goes with it; closing it is the careful answer.

/// Calls `confirmed` when the plug-in of that name may go to the trash.
void askToRemovePlugin(QWidget *window, const QString &name, std::function<void()> confirmed);

void askToReplacePlugin(
    QWidget *window, const PluginReplacement &replacement, std::function<void(PluginFileInstaller::Answer)> answer);
