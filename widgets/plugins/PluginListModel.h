#pragma once

#include "widgets/Export.h"

#include "bundles/PluginTable.h"
#include "platform/NotificationCenter.h"

#include <QAbstractListModel>
#include <QCollator>
#include <QHash>
#include <QIcon>
#include <QPointer>
#include <QSet>

#include <vector>

class KRPluginManager;
class PluginUpdatesController;
struct PluginUpdateState;

/// The installed plug-ins in the order of their names, as rows of a list that follows every reload. Main thread only.
///
/// A row that stays keeps its place, its selection included; the check state is the switch that enables the plug-in,
/// for the user to set. All texts are in one line and plain.
class KORVAN_WIDGETS_EXPORT PluginListModel final : public QAbstractListModel
{
    Q_OBJECT

public:
    enum Role {
        IdentifierRole = Qt::UserRole,
        VersionRole,
        AuthorRole,
        /// A list of badges, as int.
        BadgesRole,
        /// From 0 to 1 while an update is downloaded; -1 while its size is not known; else nil.
        ProgressRole,
        /// All that a search looks through.
        SearchRole
    };
    enum class Badge { Incompatible, UpdateAvailable, Updating, UpdateFailed, Running };

    /// `updates` may be null; both may go before the model, which then stays as it is.
    explicit PluginListModel(
        KRPluginManager &manager, PluginUpdatesController *updates = nullptr, QObject *parent = nullptr);
    ~PluginListModel() override;

    /// Of a row; null for none.
    std::shared_ptr<KRPluginBundle> plugin(const QModelIndex &index) const;
    /// The row of an identifier; invalid when there is none.
    QModelIndex indexOf(const QString &identifier) const;
    QList<Badge> badges(const QModelIndex &index) const;
    /// In the user's language.
    static QString badgeText(Badge badge);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

private:
    struct Row
    {
        QString identifier;
        std::shared_ptr<KRPluginBundle> bundle;
        QCollatorSortKey key;
    };
    using Rows = std::vector<Row>;

    Rows currentRows() const;
    void reload();
    void removeMissing(const Rows &rows);
    void readRunning();
    void tellChanged(const QString &identifier);
    PluginUpdateState updateState(const Row &row) const;
    QString accessibleText(const QModelIndex &index) const;
    QIcon icon(const Row &row) const;

    QPointer<KRPluginManager> m_manager;
    QPointer<PluginUpdatesController> m_updates;
    QCollator m_collator;
    Rows m_rows;
    QSet<QString> m_running;
    mutable QHash<QString, QIcon> m_icons;
    NotificationObserver m_reloadObserver;
    NotificationObserver m_runningObserver;
};
