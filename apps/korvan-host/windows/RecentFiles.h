#pragma once

#include <QStringList>

class UserDefaults;

/// The documents that were opened or saved last, latest first, kept in the user's settings.
class RecentFiles
{
public:
    explicit RecentFiles(UserDefaults &defaults)
        : m_defaults(defaults)
    { }

    /// Only those that are still there.
    QStringList paths() const;
    void add(const QString &path);
    void clear();

private:
    UserDefaults &m_defaults;
};
