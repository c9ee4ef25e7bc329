#include "widgets/console/LogModel.h"

#include "localization/Localizable.h"
#include "platform/LTAppEnvironment.h"
#include "widgets/PluginText.h"

#include <QFileInfo>

namespace {

/// What fits a row: the rest of a stack, say, is for whoever shows the whole entry. Looks at the beginning only: rows
/// are drawn often, and a message may be a megabyte.
QString firstLine(const QString &text)
{
    constexpr qsizetype beginning = 1'000;
    const auto trimmed = QStringView(text).left(beginning).trimmed();
    const auto end = trimmed.indexOf(u'\n');
    return end < 0 ? plainLine(trimmed.toString()) : plainLine(trimmed.left(end).toString()) + QStringLiteral(" …");
}

QString placeText(const LogEntry &entry)
{
    return entry.line > 0
        ? QStringLiteral("%1:%2").arg(plainLine(QFileInfo(entry.file.path()).fileName())).arg(entry.line)
        : QString();
}

QString accessibleText(const LogEntry &entry)
{
    return entry.level == LogLevel::Log
        ? plainLine(entry.text)
        : QStringLiteral("%1: %2").arg(logLevelName(entry.level), plainLine(entry.text));
}

} // namespace

QString logLevelName(LogLevel level)
{
    switch (level) {
    case LogLevel::Error:
        return Localizable::tr("Error");
    case LogLevel::Warning:
        return Localizable::tr("Warning");
    case LogLevel::Log:
        break;
    }
    return Localizable::tr("Message");
}

LogModel::LogModel(int capacity, QObject *parent)
    : QAbstractTableModel(parent)
    , m_capacity(std::size_t(std::max(capacity, 1)))
{ }

LogModel::~LogModel() = default;

void LogModel::append(LogEntry entry)
{
    m_waiting.append(std::move(entry));
    // The latest stays, however long it is.
    m_waiting.dropFirst(std::min(m_waiting.surplus(m_capacity, mostCharacters), m_waiting.size() - 1));
    planInsertion();
}

void LogModel::planInsertion()
{
    if (!m_insertion && m_waiting.size() > 0)
        m_insertion = LTAppEnvironment::current().mainQueue().callAfter(frame, [this] { insertBatch(); });
}

void LogModel::insertBatch()
{
    m_insertion.reset();
    const auto count = std::min({m_waiting.size(), largestBatch, m_capacity});
    if (count == 0)
        return;
    emit batchBegins();
    makeRoom(count);
    beginInsertRows({}, int(m_rows.size()), int(m_rows.size() + count) - 1);
    m_waiting.moveFirst(count, m_rows);
    endInsertRows();
    emit batchEnded();
    planInsertion();
}

void LogModel::makeRoom(std::size_t added)
{
    const auto surplus = m_rows.surplus(m_capacity - added, mostCharacters - m_waiting.charactersOfFirst(added));
    if (surplus == 0)
        return;
    beginRemoveRows({}, 0, int(surplus) - 1);
    m_rows.dropFirst(surplus);
    endRemoveRows();
}

void LogModel::clear()
{
    m_waiting.clear();
    m_insertion.reset();
    beginResetModel();
    m_rows.clear();
    endResetModel();
}

int LogModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int LogModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QString LogModel::text(const LogEntry &entry, int column) const
{
    switch (column) {
    case TimeColumn:
        return entry.time.toString(QStringLiteral("HH:mm:ss.zzz"));
    case PluginColumn:
        return plainLine(entry.pluginName);
    case MessageColumn:
        return firstLine(entry.text);
    default:
        return placeText(entry);
    }
}

QVariant LogModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const auto &found = entry(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return text(found, index.column());
    case Qt::AccessibleTextRole:
        return index.column() == MessageColumn ? accessibleText(found) : text(found, index.column());
    case LevelRole:
        return int(found.level);
    case IdentifierRole:
        return found.pluginIdentifier;
    case TextRole:
        return found.text;
    case FileRole:
        return found.file;
    case LineRole:
        return found.line;
    default:
        return {};
    }
}

QVariant LogModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case TimeColumn:
        return Localizable::tr("Time");
    case PluginColumn:
        return Localizable::tr("Plug-in");
    case MessageColumn:
        return Localizable::tr("Message");
    default:
        return Localizable::tr("Place");
    }
}
