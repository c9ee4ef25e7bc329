#pragma once

#include <QToolButton>

class ConsoleLog;
class PluginWindows;
struct LogEntry;

/// Counts the errors of plug-ins that nobody has seen, and shows them in the console. Hidden while there are none.
class ErrorIndicator final : public QToolButton
{
    Q_OBJECT

public:
    /// Both outlive it.
    ErrorIndicator(const ConsoleLog &log, PluginWindows &windows, QWidget *parent = nullptr);

private:
    void note(const LogEntry &entry);

    PluginWindows &m_windows;
    int m_unseen = 0;
};
