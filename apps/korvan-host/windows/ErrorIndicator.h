#pragma once

#include "widgets/console/LogEntry.h"

#include <QToolButton>

class ConsoleLog;
class PluginWindows;

/// Counts the errors of plug-ins that nobody has seen, and shows them in the console. Hidden while there are none.
class ErrorIndicator final : public QToolButton
{
    Q_OBJECT

public:
    /// Both outlive it.
    ErrorIndicator(ConsoleLog &log, PluginWindows &windows, QWidget *parent = nullptr);

private:
    void note(const LogEntry &entry);
    void showUnseen();

    PluginWindows &m_windows;
    int m_unseen = 0;
    LogEntry m_latest;
};
