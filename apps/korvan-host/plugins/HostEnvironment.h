#pragma once

#include "hosting/ConfiguredEnvironment.h"
#include "widgets/DialogPresenter.h"
#include "widgets/MessageBoxAlerts.h"
#include "widgets/console/TimeLimitQuestion.h"

/// The host that the framework sees: this program, as its options describe it, with windows to ask the user in.
class HostEnvironment final : public ConfiguredEnvironment
{
public:
    explicit HostEnvironment(const HostingOptions &options);
    ~HostEnvironment() override;

    /// Before which window alerts and questions stand; it may go before this object.
    void setWindow(QWidget *window);
    /// Null for none.
    void setOpenDocuments(OpenDocuments *documents) { m_documents = documents; }
    void setLogTarget(LogTarget *target) { m_log = target; }

    AlertPresenter *alertPresenter() override { return &m_alerts; }
    UserPresenter *userPresenter() override { return &m_presenter; }
    OpenDocuments *openDocuments() override { return m_documents; }
    LogTarget *logTarget() override { return m_log; }
    ScriptTimeLimitDecision scriptExceededTimeLimit(const QString &name, double seconds) override;

private:
    MessageBoxAlerts m_alerts;
    DialogPresenter m_presenter;
    OpenDocuments *m_documents = nullptr;
    LogTarget *m_log = nullptr;
    TimeLimitQuestion m_timeLimitQuestion;
};
