#include "widgets/plugins/PluginListModel.h"

#include "localization/Localizable.h"
#include "manager/KRPluginManager.h"
#include "platform/LTAppEnvironment.h"
#include "widgets/PluginText.h"
#include "widgets/plugins/PluginIcon.h"
#include "widgets/plugins/PluginUpdatesController.h"

#include <algorithm>

using Phase = PluginUpdateState::Phase;

namespace {

QString nameOf(const KRPluginBundle &bundle)
{
    const auto name = plainLine(bundle.name().value_or(QString()));
    return name.isEmpty() ? plainLine(bundle.identifier().value_or(QString())) : name;
}

QVariant progressOf(const PluginUpdateState &state)
{
    if (state.phase != Phase::Downloading)
        return {};
    return state.bytesExpected > 0 ? double(state.bytesReceived) / double(state.bytesExpected) : -1.0;
}

} // namespace

PluginListModel::PluginListModel(KRPluginManager &manager, PluginUpdatesController *updates, QObject *parent)
    : QAbstractListModel(parent)
    , m_manager(&manager)
    , m_updates(updates)
{
    m_collator.setCaseSensitivity(Qt::CaseInsensitive);
    m_collator.setNumericMode(true);
    auto &center = LTAppEnvironment::current().notificationCenter();
    m_reloadObserver =
        center.addObserver(KRPluginManagerDidReloadPluginsNotification, &manager, [this](const auto &) { reload(); });
    m_runningObserver = center.addObserver(
        KRPluginManagerRunningCommandsDidChangeNotification, &manager, [this](const auto &) { readRunning(); });
    if (updates)
        connect(updates, &PluginUpdatesController::stateChanged, this, &PluginListModel::tellChanged);
    m_rows = currentRows();
    readRunning();
}

PluginListModel::~PluginListModel() = default;

PluginListModel::Rows PluginListModel::currentRows() const
{
    Rows rows;
    const auto plugins = m_manager->plugins();
    for (auto plugin = plugins.begin(); plugin != plugins.end(); ++plugin)
        rows.push_back({plugin.key(), plugin.value(), m_collator.sortKey(nameOf(*plugin.value()))});
    std::stable_sort(rows.begin(), rows.end(), [](const Row &one, const Row &other) { return one.key < other.key; });
    return rows;
}

/// Row by row: a reset would take the selection away from whoever looks at the list.
void PluginListModel::reload()
{
    if (!m_manager)
        return;
    auto rows = currentRows();
    m_icons.clear();
    removeMissing(rows);
    for (std::size_t i = 0; i < rows.size(); ++i) { // what is left of the old rows is in order
        if (i < m_rows.size() && m_rows[i].identifier == rows[i].identifier) {
            m_rows[i] = rows[i];
            continue;
        }
        beginInsertRows({}, int(i), int(i));
        m_rows.insert(m_rows.begin() + std::ptrdiff_t(i), rows[i]);
        endInsertRows();
    }
    if (!m_rows.empty())
        emit dataChanged(index(0), index(int(m_rows.size()) - 1));
}

/// Those with another name, and so with another place, too.
void PluginListModel::removeMissing(const Rows &rows)
{
    QHash<QString, const Row *> kept;
    for (const auto &row : rows)
        kept.insert(row.identifier, &row);
    for (int i = int(m_rows.size()) - 1; i >= 0; --i) {
        const auto &old = m_rows[std::size_t(i)];
        if (const auto *const row = kept.value(old.identifier); row && row->key.compare(old.key) == 0)
            continue;
        beginRemoveRows({}, i, i);
        m_rows.erase(m_rows.begin() + i);
        endRemoveRows();
    }
}

void PluginListModel::readRunning()
{
    if (!m_manager)
        return;
    QSet<QString> running;
    const auto commands = m_manager->runningCommands();
    for (const auto &command : commands)
        running.insert(command.specifier.pluginBundleIdentifier().value_or(QString()));
    const auto before = std::exchange(m_running, running);
    for (const auto &identifier : (before - running) + (running - before))
        tellChanged(identifier);
}

void PluginListModel::tellChanged(const QString &identifier)
{
    if (const auto changed = indexOf(identifier); changed.isValid())
        emit dataChanged(changed, changed);
}

std::shared_ptr<KRPluginBundle> PluginListModel::plugin(const QModelIndex &index) const
{
    const bool isRow = index.model() == this && index.row() < int(m_rows.size());
    return isRow ? m_rows[std::size_t(index.row())].bundle : nullptr;
}

QModelIndex PluginListModel::indexOf(const QString &identifier) const
{
    const auto row = std::find_if(
        m_rows.begin(), m_rows.end(), [&identifier](const Row &one) { return one.identifier == identifier; });
    return row == m_rows.end() ? QModelIndex() : index(int(row - m_rows.begin()));
}

PluginUpdateState PluginListModel::updateState(const Row &row) const
{
    return m_updates ? m_updates->state(row.identifier) : PluginUpdateState();
}

QList<PluginListModel::Badge> PluginListModel::badges(const QModelIndex &index) const
{
    QList<Badge> badges;
    if (!m_manager || !plugin(index))
        return badges;
    const auto &row = m_rows[std::size_t(index.row())];
    if (m_running.contains(row.identifier))
        badges.append(Badge::Running);
    if (m_manager->isIncompatiblePlugin(row.bundle))
        badges.append(Badge::Incompatible);
    const auto state = updateState(row);
    if (state.phase == Phase::Available)
        badges.append(Badge::UpdateAvailable);
    else if (state.isUnderWay())
        badges.append(Badge::Updating);
    else if (state.phase == Phase::Failed)
        badges.append(Badge::UpdateFailed);
    return badges;
}

QString PluginListModel::badgeText(Badge badge)
{
    switch (badge) {
    case Badge::Incompatible:
        return Localizable::tr("Incompatible");
    case Badge::UpdateAvailable:
        return Localizable::tr("Update available");
    case Badge::Updating:
        return Localizable::tr("Updating");
    case Badge::UpdateFailed:
        return Localizable::tr("Update failed");
    case Badge::Running:
        break;
    }
    //: A badge of a plug-in one of whose commands goes on.
    return Localizable::tr("Running");
}

int PluginListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant PluginListModel::data(const QModelIndex &index, int role) const
{
    const auto bundle = plugin(index);
    if (!bundle)
        return {};
    const auto &row = m_rows[std::size_t(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        return nameOf(*bundle);
    case Qt::DecorationRole:
        return icon(row);
    case Qt::CheckStateRole:
        return QVariant::fromValue(bundle->isEnabled() ? Qt::Checked : Qt::Unchecked);
    case Qt::AccessibleTextRole:
        return accessibleText(index);
    case IdentifierRole:
        return row.identifier;
    case VersionRole:
        return plainLine(bundle->version().value_or(QString()));
    case AuthorRole:
        return plainLine(bundle->author().value_or(QString()));
    case BadgesRole: {
        QVariantList list;
        for (const auto badge : badges(index))
            list.append(int(badge));
        return list;
    }
    case ProgressRole:
        return progressOf(updateState(row));
    case SearchRole:
        return QStringList{bundle->name().value_or(QString()), bundle->author().value_or(QString()), row.identifier,
            bundle->pluginDescription().value_or(QString())}
            .join(u'\n');
    default:
        return {};
    }
}

QString PluginListModel::accessibleText(const QModelIndex &index) const
{
    QStringList parts{index.data(Qt::DisplayRole).toString(),
        Localizable::tr("Version %1").arg(index.data(VersionRole).toString()), index.data(AuthorRole).toString(),
        plugin(index)->isEnabled() ? Localizable::tr("enabled") : Localizable::tr("disabled")};
    for (const auto badge : badges(index))
        parts.append(badgeText(badge));
    parts.removeAll(QString());
    return parts.join(QStringLiteral(", "));
}

QIcon PluginListModel::icon(const Row &row) const
{
    const auto known = m_icons.constFind(row.identifier);
    return known != m_icons.constEnd() ? *known : *m_icons.insert(row.identifier, pluginIcon(*row.bundle));
}

bool PluginListModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    const auto bundle = plugin(index);
    if (!bundle || !m_manager || role != Qt::CheckStateRole)
        return false;
    if (value.value<Qt::CheckState>() == Qt::Checked)
        m_manager->enablePlugin(bundle);
    else
        m_manager->disablePlugin(bundle);
    return true;
}

Qt::ItemFlags PluginListModel::flags(const QModelIndex &index) const
{
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable : Qt::NoItemFlags;
}
