#pragma once

#include <QListView>

#include <memory>

class KRPluginBundle;
class PluginListModel;
class QSortFilterProxyModel;

/// The list of plug-ins, less those that a search hides, and which of them is selected.
class PluginListView final : public QListView
{
    Q_OBJECT

public:
    /// The model outlives the view.
    explicit PluginListView(PluginListModel &model, QWidget *parent = nullptr);
    ~PluginListView() override;

    void search(const QString &text);
    /// Whether the search hides a plug-in of the list.
    bool hides(const QString &identifier) const;
    /// Nothing when it is not in the list, or hidden.
    void select(const QString &identifier);
    /// Null when none is selected.
    std::shared_ptr<KRPluginBundle> selectedPlugin() const;
    /// Empty when none is selected.
    QString selectedIdentifier() const;

signals:
    void selectionMoved();
    void removalRequested();

private:
    PluginListModel &m_plugins;
    QSortFilterProxyModel *m_found;
};
