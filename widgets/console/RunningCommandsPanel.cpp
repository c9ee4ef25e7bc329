#include "widgets/console/RunningCommandsPanel.h"

#include "localization/Localizable.h"
#include "manager/KRPluginManager.h"
#include "platform/LTAppEnvironment.h"
#include "widgets/console/RunningCommandRow.h"

#include <QLabel>
#include <QScrollArea>
#include <QVBoxLayout>

#include <algorithm>

using namespace std::chrono_literals;

RunningCommandsPanel::RunningCommandsPanel(KRPluginManager &manager, QWidget *parent)
    : QWidget(parent)
    , m_manager(&manager)
    , m_title(new QLabel)
{
    setObjectName(QStringLiteral("RunningCommands"));
    setAccessibleName(Localizable::tr("Running commands"));
    auto *const content = new QWidget;
    m_list = new QVBoxLayout(content);
    m_list->setContentsMargins(12, 0, 12, 8);
    m_list->addStretch(1);
    auto *const area = new QScrollArea;
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(content);
    m_title->setContentsMargins(12, 8, 12, 4);
    m_title->setObjectName(QStringLiteral("RunningCommandsTitle"));
    auto font = m_title->font();
    font.setWeight(QFont::DemiBold);
    m_title->setFont(font);
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_title);
    layout->addWidget(area, 1);
    // Later: the button that stops a command is one of those that go.
    m_observer = LTAppEnvironment::current().notificationCenter().addObserver(
        KRPluginManagerRunningCommandsDidChangeNotification, &manager, [this](const auto &) { refreshSoon(); });
    refresh();
}

RunningCommandsPanel::~RunningCommandsPanel() = default;

void RunningCommandsPanel::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    refresh();
}

void RunningCommandsPanel::refreshSoon()
{
    m_refreshment = LTAppEnvironment::current().mainQueue().callAfter(0ms, [this] { refresh(); });
}

void RunningCommandsPanel::refresh()
{
    const auto commands = m_manager ? m_manager->runningCommands() : QList<RunningCommand>();
    removeEnded(commands);
    for (const auto &command : commands) {
        const auto known = std::find_if(m_rows.begin(), m_rows.end(),
            [&command](const RunningCommandRow *row) { return row->specifier() == command.specifier; });
        if (known != m_rows.end())
            (*known)->setAge(command.age);
        else
            addRow(command);
    }
    m_title->setText(commands.isEmpty() ? Localizable::tr("No commands are running")
                                        : Localizable::tr("Running commands: %1").arg(commands.size()));
    m_refreshment.reset();
    if (isVisible() && !commands.isEmpty())
        m_refreshment = LTAppEnvironment::current().mainQueue().callAfter(1s, [this] { refresh(); });
}

void RunningCommandsPanel::removeEnded(const QList<RunningCommand> &running)
{
    const auto rows = m_rows;
    for (auto *const row : rows) {
        const bool isRunning = std::any_of(running.begin(), running.end(),
            [row](const RunningCommand &command) { return command.specifier == row->specifier(); });
        if (isRunning)
            continue;
        m_rows.removeOne(row);
        row->hide();
        row->deleteLater();
    }
}

void RunningCommandsPanel::addRow(const RunningCommand &command)
{
    auto *const row = new RunningCommandRow(command);
    connect(row, &RunningCommandRow::stopRequested, this, [this, specifier = command.specifier] {
        if (m_manager)
            m_manager->stopCommand(specifier);
    });
    m_list->insertWidget(int(m_rows.size()), row);
    m_rows.append(row);
}
