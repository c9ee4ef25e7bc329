#include "platform/script/COScript.h"

#include "platform/script/ScriptEngine.h"
#include "platform/script/ScriptSession.h"

void COScript::listen()
{
    ScriptEngine::instance();
}

void COScript::setFlowDelegate(const std::weak_ptr<COFlowDelegate> &delegate)
{
    ScriptSession::setFlowDelegate(delegate);
}

void COScript::collectGarbage()
{
    ScriptEngine::instance().collectGarbage();
}

COScript::COScript(const CoreModules &coreModules, const QString &andName)
    : m_session(std::make_shared<ScriptSession>(coreModules, andName))
{
    m_session->setFacade(this);
}

COScript::~COScript()
{
    m_session->setFacade(nullptr);
    m_session->end();
}

void COScript::setPrintController(const std::weak_ptr<COPrintController> &controller)
{
    m_session->setPrintController(controller);
}

QVariantMap &COScript::env()
{
    return m_session->mutableEnvironment();
}

void COScript::setModuleFolder(const QUrl &folder)
{
    m_session->setModuleFolder(folder);
}

void COScript::setHosting(const std::weak_ptr<ScriptHosting> &hosting)
{
    m_session->setHosting(hosting);
}

void COScript::setSourceOffset(const SourceOffset &offset)
{
    m_session->setSourceOffset(offset);
}

void COScript::setShouldPreprocess(bool shouldPreprocess)
{
    m_session->setShouldPreprocess(shouldPreprocess);
}

void COScript::setTimeLimit(double seconds)
{
    m_session->setTimeLimit(seconds);
}

void COScript::beginActivity(const QString &name)
{
    m_session->beginActivity(name);
}

void COScript::pushObject(const QVariant &object, const QString &withName)
{
    m_session->pushObject(object, withName);
}

void COScript::deleteObjectWithName(const QString &name)
{
    m_session->deleteObject(name);
}

QVariant COScript::executeString(const std::optional<QString> &source)
{
    return source ? m_session->execute(*source) : QVariant();
}

bool COScript::hasFunctionNamed(const QString &name) const
{
    return m_session->hasFunction(name);
}

QVariant COScript::callFunctionNamed(const QString &name, const QVariantList &withArguments)
{
    const auto session = m_session; // the script may end it, and with it this object
    return session->callFunctionNamed(name, withArguments);
}

bool COScript::shouldKeepRunning() const
{
    return !m_session->isEnded() && (m_session->shouldKeepAround() || m_session->hasPendingWork());
}

bool COScript::shouldKeepAround() const
{
    return m_session->shouldKeepAround();
}

void COScript::setShouldKeepAround(bool keepAround)
{
    m_session->setShouldKeepAround(keepAround);
}

void COScript::cleanup()
{
    m_session->end();
}
