#pragma once

#include "widgets/Export.h"
#include "widgets/console/LogEntry.h"
#include "widgets/console/LogQueue.h"

#include "platform/MainQueue.h"

#include <QAbstractTableModel>

#include <memory>

/// Log entries as the rows of a table, the latest last. Main thread only.
///
/// However many entries arrive, rows come once a frame and a limited number at a time; what is over the capacity goes,
/// the oldest first.
class KORVAN_WIDGETS_EXPORT LogModel final : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { TimeColumn, PluginColumn, MessageColumn, PlaceColumn, ColumnCount };
    enum Role {
        LevelRole = Qt::UserRole,
        IdentifierRole,
        /// With all of its lines.
        TextRole,
        FileRole,
        LineRole
    };

    static constexpr int usualCapacity = 50'000;
    /// In all texts; entries go for it as for the capacity. A single entry that is longer is kept.
    static constexpr qsizetype mostCharacters = 32'000'000;
    /// Between one insertion of rows and the next.
    static constexpr std::chrono::milliseconds frame{16};
    /// Rows of one insertion.
    static constexpr std::size_t largestBatch = 2'000;

    explicit LogModel(int capacity = usualCapacity, QObject *parent = nullptr);
    ~LogModel() override;

    /// Becomes a row within the next frames.
    void append(LogEntry entry);
    /// Those that wait for their frame go too.
    void clear();
    const LogEntry &entry(int row) const { return m_rows[std::size_t(row)]; }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

signals:
    /// Before and after the rows of one frame have come, and others have gone for them.
    void batchBegins();
    void batchEnded();

private:
    void planInsertion();
    void insertBatch();
    void makeRoom(std::size_t added);
    QString text(const LogEntry &entry, int column) const;

    const std::size_t m_capacity;
    LogQueue m_rows;
    LogQueue m_waiting;
    std::unique_ptr<ScheduledCall> m_insertion;
};

/// In the user's language.
KORVAN_WIDGETS_EXPORT QString logLevelName(LogLevel level);
