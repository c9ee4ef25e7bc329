#pragma once

#include "platform/Export.h"

#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVariantMap>

#include <memory>
#include <mutex>
#include <optional>

class QSettings;

/// The user's settings, by key. Thread-safe.
///
/// Values come from a settings file, under values given for this process only. The typed lookups read what the file
/// holds as text ("true", "7") as the type asked for; a value of another type counts as absent.
class KORVAN_EXPORT UserDefaults
{
public:
    /// Over the file at `filePath` (INI format; it need not exist yet).
    explicit UserDefaults(const QString &filePath);
    /// Over the file that Qt chooses for this application and user.
    UserDefaults();
    ~UserDefaults();
    UserDefaults(const UserDefaults &) = delete;
    UserDefaults &operator=(const UserDefaults &) = delete;

    /// The value under the key; nil (invalid) when there is none.
    QVariant value(const QString &key) const;
    std::optional<QString> stringForKey(const QString &key) const;
    /// The texts of an array; an element that is no text is left out. Nil when the value is no array.
    std::optional<QStringList> stringArrayForKey(const QString &key) const;
    /// False when absent.
    bool boolForKey(const QString &key) const;
    /// Without its fraction, and the nearest that 64 bits hold; 0 when absent.
    qint64 integerForKey(const QString &key) const;
    /// Nil when absent or not a finite number.
    std::optional<double> numberForKey(const QString &key) const;

    /// Stores the value in the file (nil removes it) and drops the process's own value of that key.
    void setValue(const QString &key, const QVariant &value);
    /// Values for this process that stand over the file's and are never written.
    void setOverrides(const QVariantMap &overrides);

private:
    bool isOverridden(const QString &key) const;

    mutable std::mutex m_mutex;
    std::unique_ptr<QSettings> m_settings;
    QVariantMap m_overrides;
};
