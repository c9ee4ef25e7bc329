#pragma once

#include "widgets/Export.h"

#include "platform/MainQueue.h"
#include "platform/NotificationCenter.h"

#include <QList>
#include <QPointer>
#include <QWidget>

#include <memory>

class KRPluginManager;
class QLabel;
class QVBoxLayout;
class RunningCommandRow;
struct RunningCommand;

/// The commands that go on after their run, each with its age and a button that stops it. Main thread only.
class KORVAN_WIDGETS_EXPORT RunningCommandsPanel final : public QWidget
{
    Q_OBJECT

public:
    /// The manager may go first; the panel is empty then.
    explicit RunningCommandsPanel(KRPluginManager &manager, QWidget *parent = nullptr);
    ~RunningCommandsPanel() override;

protected:
    void showEvent(QShowEvent *event) override;

private:
    void refreshSoon();
    void refresh();
    void removeEnded(const QList<RunningCommand> &running);
    void addRow(const RunningCommand &command);

    QPointer<KRPluginManager> m_manager;
    QLabel *m_title;
    QVBoxLayout *m_list;
    QList<RunningCommandRow *> m_rows;
    std::unique_ptr<ScheduledCall> m_refreshment;
    NotificationObserver m_observer;
};
