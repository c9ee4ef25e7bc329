#pragma once

#include "platform/script/ScriptHost.h"
#include "platform/script/ScriptObject.h"

#include <QHash>
#include <QString>
#include <QVariantList>
#include <QVariantMap>

#include <memory>

/// The servers of a test: they answer as the test has said beforehand, and nothing leaves this computer. Main thread
/// only.
class ScriptedNetwork
{
public:
    /// Answers each request of that URL from now on: "status", "headers" (pairs), "body" (a text), or "error" (a text)
    /// for a request that fails.
    void setAnswer(const QString &url, const QVariantMap &answer);
    /// What was sent, in order: dictionaries with "url", "method", "headers" and "body".
    const QVariantList &requests() const { return m_state->requests; }

    /// What takes the place of the service "fetch" in a session.
    ScriptObjectPointer serviceFor(const std::shared_ptr<ScriptHost> &host) const;

private:
    struct State
    {
        QHash<QString, QVariantMap> answers;
        QVariantList requests;
    };
    class Service;

    std::shared_ptr<State> m_state = std::make_shared<State>();
};
