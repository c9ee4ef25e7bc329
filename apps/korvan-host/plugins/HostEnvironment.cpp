#include "plugins/HostEnvironment.h"

HostEnvironment::HostEnvironment(const HostingOptions &options)
    : ConfiguredEnvironment(options)
{ }

HostEnvironment::~HostEnvironment() = default;

void HostEnvironment::setWindow(QWidget *window)
{
    m_alerts.setWindow(window);
    m_presenter.setWindow(window);
    m_timeLimitQuestion.setWindow(window);
}

ScriptTimeLimitDecision HostEnvironment::scriptExceededTimeLimit(const QString &name, double seconds)
{
    return m_timeLimitQuestion.ask(name, seconds);
}
