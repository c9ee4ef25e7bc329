#include "windows/ErrorIndicator.h"

#include "look/Icons.h"
#include "widgets/PluginText.h"
#include "widgets/console/ConsoleLog.h"
#include "windows/PluginWindows.h"

ErrorIndicator::ErrorIndicator(ConsoleLog &log, PluginWindows &windows, QWidget *parent)
    : QToolButton(parent)
    , m_windows(windows)
{
    setObjectName(QStringLiteral("ErrorIndicator"));
    setAutoRaise(true);
    setFocusPolicy(Qt::TabFocus);
    setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    setIcon(lineIcon(QStringLiteral("warning")));
    hide();
    connect(&log, &ConsoleLog::logged, this, &ErrorIndicator::note);
    connect(&log.entries(), &LogModel::batchEnded, this, &ErrorIndicator::showUnseen); // there may be thousands
    connect(this, &QToolButton::clicked, &m_windows, &PluginWindows::showConsole);
    connect(&m_windows, &PluginWindows::consoleShown, this, [this] {
        m_unseen = 0;
        hide();
    });
}

void ErrorIndicator::note(const LogEntry &entry)
{
    if (entry.level != LogLevel::Error || m_windows.isConsoleShown())
        return;
    ++m_unseen;
    m_latest = entry;
}

void ErrorIndicator::showUnseen()
{
    if (m_unseen == 0)
        return;
    setText(tr("Errors: %1").arg(m_unseen));
    setToolTip(
        plainToolTip(plainLine(m_latest.pluginName + QStringLiteral(": ") + m_latest.text.section(u'\n', 0, 0))));
    show();
}
