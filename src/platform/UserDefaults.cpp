#include "platform/UserDefaults.h"

#include <QSettings>

#include <cmath>
#include <limits>

namespace {

qint64 nearestInteger(double number)
{
    constexpr double beyond = 9223372036854775808.0; // the first that 64 bits cannot hold
    if (number >= beyond)
        return std::numeric_limits<qint64>::max();
    return number < -beyond ? std::numeric_limits<qint64>::min() : qint64(number);
}

} // namespace

UserDefaults::UserDefaults(const QString &filePath)
    : m_settings(std::make_unique<QSettings>(filePath, QSettings::IniFormat))
{ }

UserDefaults::UserDefaults()
    : m_settings(std::make_unique<QSettings>())
{ }

UserDefaults::~UserDefaults() = default;

QVariant UserDefaults::value(const QString &key) const
{
    const std::lock_guard lock(m_mutex);
    const auto override = m_overrides.constFind(key);
    return override != m_overrides.constEnd() ? *override : m_settings->value(key);
}

std::optional<QString> UserDefaults::stringForKey(const QString &key) const
{
    const auto stored = value(key);
    if (stored.typeId() != QMetaType::QString)
        return std::nullopt;
    return stored.toString();
}

std::optional<QStringList> UserDefaults::stringArrayForKey(const QString &key) const
{
    const auto stored = value(key);
    if (stored.typeId() == QMetaType::QStringList)
        return stored.toStringList();
    // The file's notation does not tell an array of one text from a text.
    if (stored.typeId() == QMetaType::QString && !isOverridden(key))
        return stored.toString().isEmpty() ? QStringList() : QStringList{stored.toString()};
    if (stored.typeId() != QMetaType::QVariantList)
        return std::nullopt;
    QStringList texts;
    const auto elements = stored.toList();
    for (const auto &element : elements) {
        if (element.typeId() == QMetaType::QString)
            texts.append(element.toString());
    }
    return texts;
}

bool UserDefaults::boolForKey(const QString &key) const
{
    const auto stored = value(key);
    if (stored.typeId() == QMetaType::QString) {
        const auto text = stored.toString().toLower();
        return text == u"true" || text == u"yes" || numberForKey(key).value_or(0) != 0;
    }
    return stored.toBool();
}

qint64 UserDefaults::integerForKey(const QString &key) const
{
    const auto stored = value(key);
    const bool mayBeLong = stored.typeId() == QMetaType::QString || stored.typeId() == QMetaType::LongLong;
    bool isInteger = false;
    const qint64 integer = mayBeLong ? stored.toLongLong(&isInteger) : 0;
    return isInteger ? integer : nearestInteger(numberForKey(key).value_or(0));
}

std::optional<double> UserDefaults::numberForKey(const QString &key) const
{
    const auto stored = value(key);
    if (!stored.isValid() || stored.typeId() == QMetaType::Bool)
        return std::nullopt;
    bool isNumber = false;
    const double number = stored.toDouble(&isNumber);
    return isNumber && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

void UserDefaults::setValue(const QString &key, const QVariant &value)
{
    const std::lock_guard lock(m_mutex);
    m_overrides.remove(key);
    if (value.isValid())
        m_settings->setValue(key, value);
    else
        m_settings->remove(key);
}

void UserDefaults::setOverrides(const QVariantMap &overrides)
{
    const std::lock_guard lock(m_mutex);
    m_overrides = overrides;
}

bool UserDefaults::isOverridden(const QString &key) const
{
    const std::lock_guard lock(m_mutex);
    return m_overrides.contains(key);
}
