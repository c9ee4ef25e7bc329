#include "commands/PluginSettings.h"

#include "platform/AtomicFile.h"
#include "platform/FileReading.h"
#include "platform/FileURL.h"
#include "platform/FolderLock.h"
#include "platform/JSONText.h"
#include "platform/JSONValidity.h"
#include "platform/LTAppEnvironment.h"

#include <QCryptographicHash>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <unistd.h>

namespace {

const auto identifierKey = QStringLiteral("identifier");
const auto valuesKey = QStringLiteral("values");

KRError settingsError(const QString &message)
{
    return {QStringLiteral("settings"), 0, message};
}

/// Nil for a file that is none of this plug-in's settings.
std::optional<QVariantMap> readValues(const QByteArray &path, const QString &identifier)
{
    const auto bytes = readFile(path, PluginSettings::largestSize);
    const auto content = bytes ? variantFromJSON(bytes.value()) : Result<QVariant>(bytes.error());
    if (!content || content.value().typeId() != QMetaType::QVariantMap)
        return std::nullopt;
    const auto root = content.value().toMap();
    const auto values = root.value(valuesKey);
    if (root.value(identifierKey) != identifier || values.typeId() != QMetaType::QVariantMap)
        return std::nullopt;
    return values.toMap();
}

KRError writingError(const QByteArray &path, const QString &reason)
{
    return settingsError(
        QStringLiteral("The settings cannot be written to \"%1\": %2").arg(QString::fromUtf8(path), reason));
}

/// Keeps other processes from changing settings between what is read and what is written.
Result<FolderLock> lockFolderOf(const QByteArray &path)
{
    constexpr std::chrono::seconds longestWait(5); // one change takes milliseconds
    const auto folder = pathWithoutLastComponent(path);
    std::error_code ignored; // locking the folder tells it better
    std::filesystem::create_directories(folder.toStdString(), ignored);
    auto lock = FolderLock::lock(folder, longestWait);
    if (lock)
        return lock;
    if (lock.error().code == EWOULDBLOCK) {
        return writingError(path,
            QStringLiteral("another process has been changing settings there for too long. Try again, or end that "
                           "process."));
    }
    return writingError(path, lock.error().localizedDescription);
}

/// Says where it is from now on: its plug-in goes on without what it kept.
std::optional<KRError> putAsideUnreadableFile(const QByteArray &path)
{
    const auto kept = keepUnreadableFile(path);
    if (!kept)
        return writingError(path, kept.error().localizedDescription);
    if (!kept.value().isEmpty()) {
        LTAppEnvironment::current().systemLog(
            QStringLiteral("The settings file \"%1\" cannot be read and is kept as \"%2\".")
                .arg(QString::fromUtf8(path), QString::fromUtf8(kept.value())));
    }
    return std::nullopt;
}

} // namespace

PluginSettings::PluginSettings(QString pluginIdentifier)
    : m_pluginIdentifier(std::move(pluginIdentifier))
    , m_path(fileFor(m_pluginIdentifier))
{ }

QByteArray PluginSettings::fileFor(const QString &pluginIdentifier)
{
    const auto folder = LTAppEnvironment::current().applicationSupportDirectory(
        QStringLiteral("PluginSettings"), LTAppEnvironment::FolderCreation::Never);
    if (folder.isEmpty())
        return {};
    constexpr qsizetype longestReadablePart = 60;
    QByteArray readable;
    for (const auto character : pluginIdentifier.left(longestReadablePart)) {
        const bool isPlain = (character >= u'a' && character <= u'z') || (character >= u'0' && character <= u'9')
            || character == u'.' || character == u'-';
        readable.append(isPlain ? char(character.unicode()) : '_');
    }
    // A name that begins with a dot would be hidden; names in two cases are one on some file systems.
    const auto digest =
        QCryptographicHash::hash(pluginIdentifier.toUtf8(), QCryptographicHash::Sha256).toHex().first(32);
    if (readable.startsWith('.'))
        readable[0] = '_';
    return pathByAppending(pathFromFileURL(folder), readable + '-' + digest + ".json");
}

void PluginSettings::refresh()
{
    const auto source = identityOfFile(m_path); // before: a change in between is noticed later
    if (source == m_source)
        return;
    m_source = source;
    const auto values = source ? readValues(m_path, m_pluginIdentifier) : QVariantMap();
    m_isUnreadable = !values;
    m_values = values.value_or(QVariantMap());
}

std::optional<KRError> PluginSettings::refusalToKeep(const QString &key, const QVariant &value)
{
    if (isValidJSONValue(value) && isValidJSONText(key))
        return std::nullopt;
    return settingsError(QStringLiteral("The setting \"%1\" cannot be kept: settings are texts, numbers, "
                                        "booleans, null, and arrays and plain objects of them.")
                             .arg(key));
}

QVariantMap PluginSettings::values()
{
    refresh();
    return m_values;
}

std::optional<KRError> PluginSettings::setValues(const QVariantMap &changes)
{
    if (m_path.isEmpty())
        return settingsError(QStringLiteral("This application keeps no settings: it has no folder for them."));
    const auto lock = lockFolderOf(m_path);
    if (!lock)
        return lock.error();
    refresh();
    auto values = m_values;
    for (auto change = changes.begin(); change != changes.end(); ++change) {
        if (!change->isValid()) {
            values.remove(change.key());
            continue;
        }
        if (auto refusal = refusalToKeep(change.key(), *change))
            return refusal;
        values.insert(change.key(), *change);
    }
    if (values == m_values)
        return std::nullopt;
    const QVariantMap root{{identifierKey, m_pluginIdentifier}, {valuesKey, values}};
    const auto bytes = jsonFromVariant(root, JSONStyle::Indented);
    if (bytes.size() > largestSize) {
        return settingsError(
            QStringLiteral("The settings of a plug-in hold at most %1 bytes as JSON, which these would exceed. Keep "
                           "less of them: take out what is not needed any more, or what can be made anew.")
                .arg(largestSize));
    }
    if (m_isUnreadable) {
        if (const auto error = putAsideUnreadableFile(m_path))
            return error;
    }
    if (const auto error = replaceFileAtomically(m_path, bytes))
        return writingError(m_path, error->localizedDescription);
    m_values = values;
    m_isUnreadable = false;
    m_source = identityOfFile(m_path);
    return std::nullopt;
}

std::optional<KRError> PluginSettings::clear()
{
    if (!identityOfFile(m_path)) { // nor perhaps a folder to lock
        refresh();
        return std::nullopt;
    }
    const auto lock = lockFolderOf(m_path);
    if (!lock)
        return lock.error();
    refresh();
    if (m_isUnreadable) {
        if (const auto error = putAsideUnreadableFile(m_path))
            return error;
    }
    if (m_source && ::unlink(m_path.constData()) != 0 && errno != ENOENT)
        return writingError(m_path, systemError(errno).localizedDescription);
    m_values.clear();
    m_source.reset();
    m_isUnreadable = false;
    return std::nullopt;
}
