#pragma once

#include "platform/LogMessages.h"
#include "platform/script/COScript.h"

#include <QByteArray>
#include <QString>

#include <map>
#include <memory>

class KRPluginScript;

/// Scripts by the path of their file in lower case, so that commands of one file share its script.
using ScriptCache = std::map<QString, std::shared_ptr<KRPluginScript>>;

/// What the commands of one plug-in share while they are made.
struct CommandLoading
{
    /// Where "script" paths start from.
    QByteArray scriptsFolder;
    const COScript::CoreModules &coreModules;
    ScriptCache &scripts;
    LogMessages &messages;
    /// What stands before "script" paths in the cache's keys. Nothing while the cache serves this folder only.
    QString cacheKeyPrefix;
};
