#pragma once

#include <QWidget>

class QLineEdit;
class QPushButton;

/// Above the list of plug-ins: the search, updates of all, and what is to be installed. Asks; whoever made it acts.
class PluginsToolBar final : public QWidget
{
    Q_OBJECT

public:
    explicit PluginsToolBar(QWidget *parent = nullptr);

    void focusSearch();
    void clearSearch();
    /// Asks the user for archives to install.
    void chooseFiles();
    void showChecking(bool isChecking);
    /// How many updates have not begun, and how many have.
    void showUpdates(qsizetype available, qsizetype underWay);

signals:
    void searchChanged(const QString &text);
    void checkRequested();
    void updateAllRequested();
    void cancelAllRequested();
    void installRequested(const QStringList &paths);

private:
    void setUpSearch();
    QPushButton *makeInstallButton();
    void chooseFolder();

    QLineEdit *m_search;
    QPushButton *m_check;
    QPushButton *m_updateAll;
    QPushButton *m_cancelAll;
};
