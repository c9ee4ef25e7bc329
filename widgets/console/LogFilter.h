#pragma once

#include "widgets/Export.h"
#include "widgets/console/LogEntry.h"

#include <QSortFilterProxyModel>
#include <QString>

#include <optional>

class LogModel;

/// The entries of a LogModel that somebody wants to see, in their order.
class KORVAN_WIDGETS_EXPORT LogFilter final : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    /// The model outlives the filter.
    explicit LogFilter(LogModel &model, QObject *parent = nullptr);

    /// Nil: of all plug-ins; empty: of none, but the framework's own.
    void setPlugin(const std::optional<QString> &identifier);
    /// This level and what is graver.
    void setLowestLevel(LogLevel level);
    /// Entries whose text or command has it, in any case; empty for all.
    void setSearch(const QString &text);

    const LogEntry &entry(int row) const;

protected:
    bool filterAcceptsRow(int row, const QModelIndex &parent) const override;

private:
    void filterAnew();

    LogModel &m_model;
    std::optional<QString> m_plugin;
    LogLevel m_lowestLevel = LogLevel::Log;
    QString m_search;
};
