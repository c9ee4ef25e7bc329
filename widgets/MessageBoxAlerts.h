#pragma once

#include "widgets/Export.h"

#include "platform/AlertPresenter.h"

#include <QPointer>

class QWidget;

/// Shows alerts in message boxes. Main thread only; needs a QApplication.
///
///     class Environment : public LTAppEnvironment
///     {
///         AlertPresenter *alertPresenter() override { return &m_alerts; }
///         MessageBoxAlerts m_alerts;
///     };
class KORVAN_WIDGETS_EXPORT MessageBoxAlerts final : public AlertPresenter
{
public:
    /// The boxes stand before `window`, which may go before this object. They are modal to the whole application.
    explicit MessageBoxAlerts(QWidget *window = nullptr);
    ~MessageBoxAlerts() override;

    void setWindow(QWidget *window) { m_window = window; }
    void runModal(const Alert &alert) override;

private:
    QPointer<QWidget> m_window;
};
