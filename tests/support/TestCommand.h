#pragma once

#include "commands/KRPluginCommand.h"

#include <memory>

/// A command "tidy" named "Tidy Layers" without a plug-in, with the usual handlers ("onRun", "onSetUp", "onTearDown").
/// Its script is a text, or whatever is given.
std::shared_ptr<KRPluginCommand> commandWithSource(const QString &source);
std::shared_ptr<KRPluginCommand> commandWithScript(std::shared_ptr<KRPluginScript> script);
