#pragma once

#include "commands/services/ServiceContext.h"

#include <QString>
#include <QVariant>

/// What a core module gets for `require('host:NAME')` in a command's session;
/// nil for a name that is none.
QVariant makeCommandService(const QString &name, const ServiceContext &context);
