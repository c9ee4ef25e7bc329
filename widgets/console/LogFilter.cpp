#include "widgets/console/LogFilter.h"

#include "widgets/console/LogModel.h"

LogFilter::LogFilter(LogModel &model, QObject *parent)
    : QSortFilterProxyModel(parent)
    , m_model(model)
{
    setSourceModel(&model);
}

void LogFilter::setPlugin(const std::optional<QString> &identifier)
{
    if (std::exchange(m_plugin, identifier) != identifier)
        filterAnew();
}

void LogFilter::setLowestLevel(LogLevel level)
{
    if (std::exchange(m_lowestLevel, level) != level)
        filterAnew();
}

void LogFilter::setSearch(const QString &text)
{
    if (std::exchange(m_search, text) != text)
        filterAnew();
}

/// All at once: entries that go one by one, when every other one does, would take seconds.
void LogFilter::filterAnew()
{
    invalidate();
}

const LogEntry &LogFilter::entry(int row) const
{
    return m_model.entry(mapToSource(index(row, 0)).row());
}

bool LogFilter::filterAcceptsRow(int row, const QModelIndex &) const
{
    const auto &entry = m_model.entry(row);
    if (entry.level < m_lowestLevel || (m_plugin && entry.pluginIdentifier != *m_plugin))
        return false;
    return m_search.isEmpty() || entry.text.contains(m_search, Qt::CaseInsensitive)
        || entry.command.contains(m_search, Qt::CaseInsensitive);
}
