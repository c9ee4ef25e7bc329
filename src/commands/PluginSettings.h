#pragma once

#include "platform/FileIdentity.h"
#include "platform/KRError.h"

#include <QByteArray>
#include <QString>
#include <QVariantMap>

#include <optional>

/// The values that one plug-in keeps for itself, in a file of its own in the application's support folder, so that they
/// are there the next time. Values are what JSON can hold.
///
/// Every write is on the disk when it returns. Several processes may use the same file: each change begins with what
/// the file holds at that moment. A file that cannot be read counts as empty, and is kept beside the new one by the
/// first change. Main thread only.
class PluginSettings
{
public:
    /// The size in bytes that the file may have.
    static constexpr qsizetype largestSize = 1024 * 1024;

    /// Nothing is read or made before it is needed.
    explicit PluginSettings(QString pluginIdentifier);

    QVariantMap values();
    /// Nil (invalid) removes a value. The error says what to do; nothing has changed then.
    [[nodiscard]] std::optional<KRError> setValues(const QVariantMap &changes);
    /// Removes all values, and the file.
    [[nodiscard]] std::optional<KRError> clear();

    /// Why that cannot be kept, be it here or on a layer; nil when it can.
    static std::optional<KRError> refusalToKeep(const QString &key, const QVariant &value);

    /// The file of a plug-in of that identifier, whatever its characters: what people can read of it, and what tells it
    /// from all others. Empty when the application has no support folder.
    static QByteArray fileFor(const QString &pluginIdentifier);

private:
    void refresh();

    QString m_pluginIdentifier;
    QByteArray m_path;
    QVariantMap m_values;
    /// Of the file that m_values were read from, or written to; nil before the first time, and for no file.
    std::optional<FileIdentity> m_source;
    bool m_isUnreadable = false;
};
