#pragma once

#include "platform/script/ScriptHost.h"

/// The native services that every application has for core modules, by their names without "host:":
///
/// | name | what `require('host:NAME')` answers |
/// |---|---|
/// | "application" | a dictionary: "version" is the application's |
/// | "clock", "process", "system" | see ProcessService.h |
///
/// Nil for any other name. Main thread.
QVariant platformService(const QString &name, const std::shared_ptr<ScriptHost> &host);
