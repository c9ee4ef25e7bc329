#pragma once

#include "hosting/LogCollector.h"

#include <QObject>

/// What commands and the loader log, for whoever shows it: the status bar, a console.
class HostLog final : public QObject
{
    Q_OBJECT

public:
    HostLog();
    ~HostLog() override;

    /// For the manager, which holds it weakly.
    const std::shared_ptr<LogCollector> &action() const { return m_action; }

signals:
    /// An entry as KRPluginLogAction describes it, and the identifier of the command, or of whoever else logs.
    void logged(const QVariantMap &entry, const QString &sender);

private:
    std::shared_ptr<LogCollector> m_action;
};
