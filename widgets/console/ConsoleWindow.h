#pragma once

#include "widgets/Export.h"

#include <QUrl>
#include <QWidget>

#include <memory>

class ConsoleLog;
class ConsoleTable;
class KRPluginManager;
class LogFilter;
class QAction;
class QComboBox;
class QKeySequence;
class QLabel;
class QLineEdit;
class QModelIndex;
class QPlainTextEdit;

/// What plug-ins log, as it comes: filtered by plug-in, level and text, with the running commands below. A window of
/// its own, or a part of the host's. Main thread only; needs a QApplication.
class KORVAN_WIDGETS_EXPORT ConsoleWindow final : public QWidget
{
    Q_OBJECT

public:
    /// Keeps the log. With a manager, which may go before the window, it also shows what runs.
    explicit ConsoleWindow(
        std::shared_ptr<ConsoleLog> log, KRPluginManager *manager = nullptr, QWidget *parent = nullptr);
    ~ConsoleWindow() override;

    /// Only this plug-in's entries; empty for those of all.
    void showPlugin(const QString &identifier);
    /// To the clipboard: the selected entries, or all that are shown.
    void copy() const;
    void clear();

signals:
    /// The user wants to see a place in a script. While nobody is connected, the file is opened in the editor that the
    /// user has chosen for plug-ins, or, without one, a script in the system's program for it.
    void locationActivated(const QUrl &file, int line);

private:
    QWidget *makeToolBar();
    void setUpPluginFilter();
    void setUpLevelFilter();
    void setUpSearch();
    template <class Slot>
    QAction *addShortcut(const QKeySequence &keys, Slot slot);
    QWidget *makeContent(KRPluginManager *manager);
    void addPlugin(const QString &identifier, const QString &name);
    void placeActivated(const QModelIndex &index);
    void showSelected();
    void showCount();

    std::shared_ptr<ConsoleLog> m_log;
    LogFilter *m_filter;
    ConsoleTable *m_table;
    QComboBox *m_plugins;
    QComboBox *m_level;
    QLineEdit *m_search;
    QPlainTextEdit *m_detail;
    QLabel *m_count;
};
