#include "platform/monitoring/PathRoute.h"

#include "platform/FileURL.h"
#include "platform/FolderListing.h"

#include <QByteArrayList>

#include <climits>
#include <unistd.h>

namespace {

/// Empty for what is no link.
QByteArray linkText(const QByteArray &path)
{
    char text[PATH_MAX];
    const auto size = ::readlink(path.constData(), text, sizeof text);
    return size <= 0 ? QByteArray() : QByteArray(text, size);
}

/// Goes along a path, one component after the other.
class Walker
{
public:
    explicit Walker(const QByteArray &path) { prepend(path); }

    std::vector<RoutePoint> walk()
    {
        bool goesOn = true;
        while (goesOn && !m_pending.isEmpty())
            goesOn = goOn();
        if (goesOn && m_folder != "/")
            m_points.push_back({pathWithoutLastComponent(m_folder), lastPathComponent(m_folder)});
        return std::move(m_points);
    }

private:
    void prepend(const QByteArray &path)
    {
        auto components = path.split('/');
        components.removeAll(QByteArray());
        m_pending = components + m_pending;
    }

    /// False at what is no folder: the path leads no further.
    bool goOn()
    {
        const auto name = m_pending.takeFirst();
        if (name == ".")
            return true;
        if (name == "..") {
            m_folder = pathWithoutLastComponent(m_folder);
            return true;
        }
        const auto path = pathByAppending(m_folder, name);
        const auto kind = kindOfEntry(path);
        if (kind == FolderEntry::Kind::Link)
            return follow(name, linkText(path));
        if (kind != FolderEntry::Kind::Folder) {
            m_points.push_back({m_folder, name});
            return false;
        }
        m_folder = path;
        return true;
    }

    bool follow(const QByteArray &name, const QByteArray &text)
    {
        constexpr int mostLinks = 40; // as the system has it
        m_points.push_back({m_folder, name});
        if (++m_links > mostLinks)
            return false;
        if (text.startsWith('/'))
            m_folder = "/";
        prepend(text);
        return true;
    }

    /// The folder without links that the components up to now lead to.
    QByteArray m_folder = "/";
    QByteArrayList m_pending;
    std::vector<RoutePoint> m_points;
    int m_links = 0;
};

} // namespace

std::vector<RoutePoint> routeOf(const QByteArray &path)
{
    return Walker(path).walk();
}
