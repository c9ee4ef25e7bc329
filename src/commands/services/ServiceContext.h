#pragma once

#include "commands/KRPluginCommand.h"
#include "platform/script/ScriptHost.h"

#include <memory>

/// For whom a native service works: a session, and the command whose session it
/// is. Both may go before the service.
struct ServiceContext
{
    std::weak_ptr<ScriptHost> host;
    std::weak_ptr<KRPluginCommand> command;

    /// Keeps the session running until it is gone.
    std::shared_ptr<void> keepRunning() const
    {
        const auto session = host.lock();
        return session ? session->keepRunning() : nullptr;
    }
};
