#pragma once

#include <QTableView>

class LogFilter;
class LogModel;

/// The entries in a table that stays at its end for as long as the user is there.
class ConsoleTable final : public QTableView
{
    Q_OBJECT

public:
    ConsoleTable(LogModel &model, LogFilter &filter, QWidget *parent = nullptr);

    /// The selected entries, or all, one below the other with their lines.
    QString textToCopy() const;

signals:
    /// The user wants to see the place that a row points to.
    void placeActivated(const QModelIndex &index);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;

private:
    void keepPlace();

    LogFilter &m_filter;
    bool m_isAtEnd = true;
    /// What goes at the top while the user is reading further down.
    int m_rowsGone = 0;
};
