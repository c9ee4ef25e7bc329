#pragma once

#include "commands/KRPluginCommandSpecifier.h"

#include <QString>

#include <chrono>

/// One command that goes on after its run, as a host shows it.
struct RunningCommand
{
    KRPluginCommandSpecifier specifier;
    /// The command's name; empty when it has none.
    QString name;
    /// The name of its plug-in; empty when it has none, or is gone.
    QString pluginName;
    /// For how long, since its latest run.
    std::chrono::milliseconds age{0};
};
